#include "ui/calendar/bazi_window.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "calendar/almanac.h"
#include "calendar/nongli.h"
#include "domain/date_value.h"
#include "widgets/cn_calendar.h"
#include "widgets/command_trap.h"

namespace dovrex {

QString baziHelpText() {
    return QStringLiteral(
        "小知识：\r\n\r\n"
        "生辰八字，是用天干地支记一个人出生的年、月、日、时：年、月、日、时各有一个天干和一个地支，"
        "排成四柱，共八个字，所以叫“四柱八字”。\r\n\r\n"
        "排八字时，年柱和月柱并不在农历正月初一或每月初一交换，而是以十二个“节”为界：年柱从立春"
        "开始算新的一年，月柱从每月的“节”开始算新的一月——\r\n\r\n"
        "寅月——从立春到惊蛰\r\n卯月——从惊蛰到清明\r\n辰月——从清明到立夏\r\n巳月——从立夏到芒种\r\n"
        "午月——从芒种到小暑\r\n未月——从小暑到立秋\r\n申月——从立秋到白露\r\n酉月——从白露到寒露\r\n"
        "戌月——从寒露到立冬\r\n亥月——从立冬到大雪\r\n子月——从大雪到小寒\r\n丑月——从小寒到立春\r\n\r\n"
        "日柱以夜里23点为界，23点以后出生的按第二天算。一天分十二个时辰，每个时辰两个小时——\r\n\r\n"
        "子时（23：00—12：59）\r\n丑时（01：00－02：59）\r\n寅时（03：00－04：59）\r\n"
        "卯时（05：00－06：59）\r\n辰时（07：00－08：59）\r\n巳时（09：00－10：59）\r\n"
        "午时（11：00－12：59）\r\n未时（13：00－14：59）\r\n申时（15：00－16：59）\r\n"
        "酉时（17：00－18：59）\r\n戌时（19：00－20：59）\r\n亥时（21：00－22：59）\r\n\r\n"
        "每一柱的天干地支都带有金、木、水、火、土五行，软件把四柱的五行强弱相加，再按今年的干支给"
        "1到33每个号码排定五行，据此得出一注号码。出生时间请尽量准确到分钟：生在节气交接前后的，"
        "年柱、月柱会因几分钟而不同。");
}

BaziWindow::BaziWindow(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmBaziXuanhao"));
    setWindowTitle(QStringLiteral("*根据生辰八字选一组号码"));

    cnCalendar1_ = new CnCalendar(this);
    cnCalendar1_->setObjectName(QStringLiteral("CnCalendar1"));
    cnCalendar1_->setBig(true);
    cnCalendar1_->setBirthTimeShown(true);

    text1_ = new QPlainTextEdit(this);
    text1_->setObjectName(QStringLiteral("Text1"));
    text1_->setVisible(false);
    QFont mono = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    mono.setFamilies({QStringLiteral("Noto Sans Mono CJK SC"), mono.family()});
    mono.setPointSize(std::max(10, font().pointSize()));
    text1_->setFont(mono);
    text1_->setPlainText(QString(baziHelpText()).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));

    textShow_ = new QPlainTextEdit(this);
    textShow_->setObjectName(QStringLiteral("TextShow"));
    textShow_->setReadOnly(true);
    textShow_->setVisible(false);

    static const char* const kCaptions[6] = {"关  闭", "选  号", "返  回", "节  气", "小知识", "八 字"};
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    for (int i = 0; i < 6; ++i) {
        auto* b = new QPushButton(QString::fromUtf8(kCaptions[i]), this);
        b->setObjectName(QStringLiteral("cmmBazixuanhao_%1").arg(i));
        b->setAutoDefault(false);
        b->setMinimumWidth(80);
        connectCommand(b, &QPushButton::clicked, this, [this, i] { cmmBazixuanhao_Click(i); });
        buttons_[size_t(i)] = b;
    }
    buttons_[3]->setToolTip(QStringLiteral("查询当前年份24节气具体时间"));
    buttons_[2]->setEnabled(false);
    buttons_[1]->setDefault(true);  // Enter: the pick of the chart
    // Reading order: the picks first, the way back and out last.
    for (int i : {1, 5, 3, 4, 2, 0}) row->addWidget(buttons_[size_t(i)]);
    row->addStretch(1);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(cnCalendar1_, 1);
    layout->addWidget(textShow_, 1);
    layout->addWidget(text1_);
    layout->addLayout(row);
    resize(640, 480);
}

bool BaziWindow::resultShown() const {
    return !textShow_->isHidden();
}

void BaziWindow::show_Result() {
    const bool showText = textShow_->isHidden();
    textShow_->setVisible(showText);
    cnCalendar1_->setVisible(!showText);
    buttons_[2]->setEnabled(showText);
}

void BaziWindow::setResult(const QString& text, int extraPoints) {
    QFont f = text1_->font();
    f.setPointSize(f.pointSize() + extraPoints);
    textShow_->setFont(f);
    result_ = text;
    textShow_->setPlainText(QString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
}

QString BaziWindow::make_BaziReport() {
    const QDateTime birth = cnCalendar1_->valueDateTime();
    // The almanac's terms of the birth year, all 24 whatever the shape of the year's table.
    const QString terms = getJieQistr(birth.date().year(), QStringLiteral("小寒"), -1, true);
    return dovrex::make_BaziReport(birth, Clock::today(), terms, state_);
}

QString BaziWindow::make_BaziHaoMa() const {
    return dovrex::make_BaziHaoMa(state_);
}

// Every button but 返回 shows its result whether or not one is shown already; only the switch
// from the calendar to the result is skipped when the result is up.
void BaziWindow::cmmBazixuanhao_Click(int index) {
    const QString crlf = QStringLiteral("\r\n");
    switch (index) {
        case 0:
            close();
            return;
        case 1: {
            make_BaziReport();
            setResult(QStringLiteral("根据生辰八字：") + crlf + state_.baZiZi + crlf + crlf +
                          QStringLiteral("在今年得出一注号码——") + crlf + crlf + make_BaziHaoMa(),
                      8);
            if (!resultShown()) show_Result();
            return;
        }
        case 2:
            show_Result();
            return;
        case 3:
            setResult(
                crlf + cnCalendar1_->getJieQi1() + crlf +
                    QStringLiteral("注，准确的节气时间对八字排盘很重要，软件中节气据天文算法精确到秒！"),
                0);
            if (!resultShown()) show_Result();
            return;
        case 4:
            setResult(baziHelpText(), 0);
            if (!resultShown()) show_Result();
            return;
        case 5:
            setResult(make_BaziReport(), 0);
            if (!resultShown()) show_Result();
            return;
        default:
            return;
    }
}

}  // namespace dovrex
