#pragma once

#include <QObject>
#include <QString>
#include <QVariantMap>

namespace dovrex {

// The progress panel's state (myJinDuCTL): a bar with bounds, a text, the count done and the count
// to do, and a stop request. The logic drives it; the panel widget shows it and raises the stop.
class myJinDuCTL : public QObject {
    Q_OBJECT
  public:
    explicit myJinDuCTL(QObject* parent = nullptr) : QObject(parent) {}

    bool Enabled() const { return enabled_; }
    void setEnabled(bool on);
    int minJindu() const { return min_; }
    void setMinJindu(int v);
    int maxJindu() const { return max_; }
    void setMaxJindu(int v);
    QString tipTxt() const { return tip_; }
    void setTipTxt(const QString& text);
    int ValueJindu() const { return value_; }
    void setValueJindu(int v);
    bool StopEnabled() const { return stopEnabled_; }
    void setStopEnabled(bool on);
    short Tingzhi() const { return tingzhi_; }
    void setTingzhi(short v);

    // What the panel shows: the bar's accepted bounds, its value and the two count captions.
    int barMinimum() const { return barMin_; }
    int barMaximum() const { return barMax_; }
    int shownValue() const { return shown_; }
    QString labelJindu() const { return labelJindu_; }
    QString labelJinduAll() const { return labelAll_; }
    bool stopButtonEnabled() const { return stopButton_; }
    bool visible() const { return visible_; }

    // The owner shows the panel for a pass and hides it at the end; showing clears the stop request.
    void show(const QString& text, int minimum, int maximum);
    void hide();
    // Advances the value by one.
    void step() { setValueJindu(value_ + 1); }
    // The click of cmm_stop: raises Tingzhi and disables the button; a second click does nothing.
    void cmm_stop_Click();
    void Refresh() { emit changed(); }

    // The property bag, under the names "Enabled", "minJindu", "maxJindu", "tipTxt", "ValueJindu",
    // "StopEnabled", "Tingzhi".
    QVariantMap writeProperties() const;
    void readProperties(const QVariantMap& bag);

    static QString defaultTip() { return QStringLiteral("正在下载数据，请稍候。。。"); }

  signals:
    void changed();

  private:
    bool enabled_ = true;
    int min_ = 0, max_ = 100;
    int barMin_ = 0, barMax_ = 100;
    QString tip_ = defaultTip();
    int value_ = 0, shown_ = 0;
    bool stopEnabled_ = true;
    short tingzhi_ = 0;
    QString labelJindu_ = QStringLiteral("0");
    QString labelAll_ = QStringLiteral("100");
    bool stopButton_ = true;
    bool visible_ = false;
};

}  // namespace dovrex
