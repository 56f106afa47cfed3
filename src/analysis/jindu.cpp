#include "analysis/jindu.h"

#include <algorithm>

namespace dovrex {

void myJinDuCTL::setEnabled(bool on) {
    enabled_ = on;
    emit changed();
}

void myJinDuCTL::setMinJindu(int v) {
    min_ = v;
    if (min_ <= max_) barMin_ = min_;  // the bar only takes a valid pair
    emit changed();
}

void myJinDuCTL::setMaxJindu(int v) {
    max_ = v;
    if (min_ <= max_) barMax_ = max_;
    emit changed();
}

void myJinDuCTL::setTipTxt(const QString& text) {
    tip_ = text;
    emit changed();
}

void myJinDuCTL::setValueJindu(int v) {
    value_ = v;
    shown_ = v > max_ ? max_ : v < min_ ? min_ : v;
    const QString all = QString::number(max_);
    if (labelAll_ != all) labelAll_ = all;
    labelJindu_ = QString::number(shown_);
    emit changed();
}

void myJinDuCTL::setStopEnabled(bool on) {
    stopEnabled_ = on;
    emit changed();
}

void myJinDuCTL::setTingzhi(short v) {
    tingzhi_ = v;
    emit changed();
}

void myJinDuCTL::show(const QString& text, int minimum, int maximum) {
    tip_ = text;
    tingzhi_ = 0;
    stopButton_ = true;
    visible_ = true;
    setMinJindu(minimum);
    setMaxJindu(maximum);
    setMinJindu(minimum);  // either order: the pair is valid after both are set
    setValueJindu(0);
}

void myJinDuCTL::hide() {
    visible_ = false;
    emit changed();
}

void myJinDuCTL::cmm_stop_Click() {
    if (!stopButton_) return;
    tingzhi_ = 1;
    stopButton_ = false;
    emit changed();
}

QVariantMap myJinDuCTL::writeProperties() const {
    return {{QStringLiteral("Enabled"), enabled_},     {QStringLiteral("minJindu"), min_},
            {QStringLiteral("maxJindu"), max_},        {QStringLiteral("tipTxt"), tip_},
            {QStringLiteral("ValueJindu"), value_},    {QStringLiteral("StopEnabled"), stopEnabled_},
            {QStringLiteral("Tingzhi"), int(tingzhi_)}};
}

void myJinDuCTL::readProperties(const QVariantMap& bag) {
    enabled_ = bag.value(QStringLiteral("Enabled"), true).toBool();
    min_ = bag.value(QStringLiteral("minJindu"), 0).toInt();
    max_ = bag.value(QStringLiteral("maxJindu"), 100).toInt();
    barMin_ = std::min(min_, max_);
    barMax_ = std::max(min_, max_);
    tip_ = bag.value(QStringLiteral("tipTxt"), defaultTip()).toString();
    stopEnabled_ = bag.value(QStringLiteral("StopEnabled"), true).toBool();
    tingzhi_ = short(bag.value(QStringLiteral("Tingzhi"), 0).toInt());
    setValueJindu(bag.value(QStringLiteral("ValueJindu"), 0).toInt());
}

}  // namespace dovrex
