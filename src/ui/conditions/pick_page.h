#pragma once

#include <QWidget>
#include <array>

class QCheckBox;
class QPlainTextEdit;
class QPushButton;
class QTabBar;

namespace dovrex {

class PickButton;

// 选取号码, the first condition page: the 33 red and 16 blue numbers (cmm_C7, red n at n, blue n at
// 100+n), the drag/banker tabs of each colour, the clear buttons and the running count
// (Text_ChoseNumberTip). Every click goes to the pick logic, which writes its row at once; the page
// repaints from the store whenever the picks change (GuiScreen::picksChanged).
class PickPage : public QWidget {
    Q_OBJECT
  public:
    explicit PickPage(QWidget* parent = nullptr);

    // cmm_C7(index): 1..33 red, 101..116 blue; null for any other index.
    PickButton* button(int index) const;
    QTabBar* redTabs() const { return redTabs_; }
    QTabBar* blueTabs() const { return blueTabs_; }
    bool ballFaces() const { return ballFaces_; }

    // Paints the numbers from the pick rows, the marks of the probability analysis and the blue
    // buttons a banker leaves enabled.
    void refresh();
    // cmmSwitch: buttons or balls, the same state either way.
    void setBallFaces(bool balls);

  private:
    void click(int index);
    void moveFocus(PickButton* from, int key);

    std::array<PickButton*, 34> red_{};
    std::array<PickButton*, 17> blue_{};
    std::array<PickButton*, 3> legendSamples_{};
    QTabBar* redTabs_;
    QTabBar* blueTabs_;
    QPlainTextEdit* tip_;
    QPushButton* switch_;
    QCheckBox* space_;
    bool ballFaces_ = false;
};

}  // namespace dovrex
