#pragma once

#include <QFrame>
#include <array>

class QCheckBox;
class QLabel;
class QRadioButton;
class QSlider;
class QSpinBox;

namespace dovrex {

// The shrink settings: the type (Option_ShuoSuiLeiXing 保三型..保七型, 过滤条件 3900), the smart
// optimisation (Check_auto, switch 45) and the number weights (SliderQuanZong 1..33 in a scrolled
// panel, the presets cmmQZfenpei). Each change is written at once. With `withButtons` it is the
// frame FrameSuosuiSezi that the third step opens, with its two buttons cmmSS(0) and cmmSS(1).
class ShrinkSettings : public QFrame {
    Q_OBJECT
  public:
    explicit ShrinkSettings(bool withButtons, QWidget* parent = nullptr);

    // Reads the type, the switch and the weights again.
    void reload();
    QSlider* slider(int n) const { return sliders_[size_t(n)]; }

  protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void loadWeights();

    std::array<QRadioButton*, 8> options_{};
    QCheckBox* auto_ = nullptr;
    QCheckBox* optimised_ = nullptr;
    QSpinBox* budget_ = nullptr;
    std::array<QSlider*, 34> sliders_{};
    std::array<QLabel*, 34> values_{};
    bool loading_ = false;
    bool frame_ = false;
    bool placed_ = false;  // the floating frame is centred over the window the first time only
};

}  // namespace dovrex
