#include "widgets/cn_calendar.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>
#include <QVBoxLayout>

#include "calendar/almanac.h"
#include "calendar/calendar_text.h"
#include "calendar/nongli.h"
#include "domain/date_value.h"

namespace dovrex {

namespace {

constexpr int kRows = 6;  // 37 cells need six rows of seven

QToolButton* stepButton(const QString& arrow, const QString& tip, const QString& name, QWidget* parent) {
    auto* b = new QToolButton(parent);
    b->setText(arrow);
    b->setToolTip(tip);
    b->setObjectName(name);
    b->setAutoRaise(true);
    b->setFixedWidth(26);
    QFont f = b->font();
    f.setPointSizeF(f.pointSizeF() * 1.4);
    f.setBold(true);
    b->setFont(f);
    return b;
}

}  // namespace

CnCalendar::CnCalendar(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("CnCalendar"));
    QDate today = Clock::today();
    value_ = inCalendarRange(today) ? today : QDate(2000, 1, 1);

    combo1_ = new QComboBox(this);
    combo1_->setObjectName(QStringLiteral("Combo1"));
    for (int y = kCalendarFirst.year(); y <= kCalendarLast.year(); ++y)
        combo1_->addItem(QStringLiteral("%1年").arg(y, 4, 10, QLatin1Char('0')), y);
    combo2_ = new QComboBox(this);
    combo2_->setObjectName(QStringLiteral("Combo2"));
    for (int m = 1; m <= 12; ++m) combo2_->addItem(QStringLiteral("%1月").arg(m, 2, 10, QLatin1Char('0')), m);
    combo3_ = new QComboBox(this);
    combo3_->setObjectName(QStringLiteral("Combo3"));
    for (int h = 0; h < 24; ++h) combo3_->addItem(QStringLiteral("%1时").arg(h, 2, 10, QLatin1Char('0')), h);
    combo4_ = new QComboBox(this);
    combo4_->setObjectName(QStringLiteral("Combo4"));
    for (int m = 0; m < 60; ++m) combo4_->addItem(QStringLiteral("%1分").arg(m, 2, 10, QLatin1Char('0')), m);
    combo1_->setMaxVisibleItems(15);
    combo4_->setMaxVisibleItems(15);

    picture1_[0] =
        stepButton(QStringLiteral("«"), QStringLiteral("上一年"), QStringLiteral("Picture1_Year"), this);
    picture1_[1] =
        stepButton(QStringLiteral("‹"), QStringLiteral("上一月"), QStringLiteral("Picture1_Month"), this);
    picture2_[0] =
        stepButton(QStringLiteral("›"), QStringLiteral("下一月"), QStringLiteral("Picture2_Month"), this);
    picture2_[1] =
        stepButton(QStringLiteral("»"), QStringLiteral("下一年"), QStringLiteral("Picture2_Year"), this);
    const std::pair<QToolButton*, int> modes[] = {
        {picture1_[0], 2}, {picture1_[1], 3}, {picture2_[0], 4}, {picture2_[1], 1}};
    for (const auto& [button, mode] : modes) {
        connect(button, &QToolButton::pressed, this, [this, m = mode] { startRepeat(m); });
        connect(button, &QToolButton::released, this, &CnCalendar::stopRepeat);
    }
    timer1_.setInterval(100);
    connect(&timer1_, &QTimer::timeout, this, [this] {
        if (!step(mode_)) stopRepeat();
    });

    label1_ = new QLabel(this);
    label1_->setObjectName(QStringLiteral("Label1"));
    label2_ = new QLabel(this);
    label2_->setObjectName(QStringLiteral("Label2"));
    auto* label3 = new QLabel(QStringLiteral("月"), this);
    label3->setObjectName(QStringLiteral("Label3"));
    for (QLabel* l : {label1_, label2_, label3}) {
        QFont f = l->font();
        f.setPointSizeF(f.pointSizeF() * 1.3);
        f.setBold(true);
        l->setFont(f);
    }
    label4_ = new QLabel(QStringLiteral("出生时间："), this);
    label4_->setObjectName(QStringLiteral("Label4"));
    label5_ = new QLabel(this);
    label5_->setObjectName(QStringLiteral("Label5"));
    labelButtom_ = new QLabel(this);
    labelButtom_->setObjectName(QStringLiteral("LabelButtom"));

    grid_ = new CnCalendarGrid(*this);

    auto* head = new QHBoxLayout;
    head->setContentsMargins(6, 4, 6, 4);
    head->addWidget(combo1_);
    head->addSpacing(5);
    head->addWidget(combo2_);
    head->addStretch(1);
    head->addWidget(picture1_[0]);
    head->addWidget(picture1_[1]);
    head->addWidget(label1_);
    head->addWidget(label2_);
    head->addWidget(label3);
    head->addWidget(picture2_[0]);
    head->addWidget(picture2_[1]);
    head->addStretch(1);
    head->addWidget(label4_);
    head->addWidget(combo3_);
    head->addWidget(combo4_);
    auto* headFrame = new QWidget(this);
    headFrame->setObjectName(QStringLiteral("TitleBar"));
    headFrame->setLayout(head);
    headFrame->setAutoFillBackground(true);

    auto* bottom = new QHBoxLayout;
    bottom->setContentsMargins(8, 3, 8, 3);
    bottom->addWidget(labelButtom_, 1);
    bottom->addWidget(label5_);
    auto* bottomFrame = new QWidget(this);
    bottomFrame->setObjectName(QStringLiteral("BottomBar"));
    bottomFrame->setLayout(bottom);
    bottomFrame->setAutoFillBackground(true);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(headFrame);
    layout->addWidget(grid_, 1);
    layout->addWidget(bottomFrame);

    auto paintBars = [this, headFrame, bottomFrame] {
        QPalette p = headFrame->palette();
        p.setColor(QPalette::Window, titleBack_);
        headFrame->setPalette(p);
        p.setColor(QPalette::Window, bottomBack_);
        bottomFrame->setPalette(p);
    };
    paintBars();
    connect(this, &CnCalendar::changed, this, paintBars);

    connect(combo1_, &QComboBox::activated, this,
            [this](int) { setValue(moveToMonth(value_, combo1_->currentData().toInt(), value_.month())); });
    connect(combo2_, &QComboBox::activated, this,
            [this](int) { setValue(moveToMonth(value_, value_.year(), combo2_->currentData().toInt())); });
    connect(combo3_, &QComboBox::activated, this, [this](int) { refreshBottom(); });
    connect(combo4_, &QComboBox::activated, this, [this](int) { refreshBottom(); });

    showValue();
}

QDate CnCalendar::guarded(const QDate& date) const {
    return inCalendarRange(date) ? date : value_;
}

void CnCalendar::setValue(const QDate& date) {
    const QDate d = guarded(date);
    const bool moved = d != value_;
    value_ = d;
    showValue();
    if (moved) emit valueChanged(value_);
    emit changed();
}

QDateTime CnCalendar::valueDateTime() const {
    // Built as "yyyy/mm/dd hh:mm" from the date and the two combos.
    return naiveDateTime(value_, combo3_->currentData().toInt() * 3600 + combo4_->currentData().toInt() * 60);
}

void CnCalendar::setValueDateTime(const QDateTime& dateTime) {
    if (!inCalendarRange(dateTime.date())) return;
    combo3_->setCurrentIndex(dateTime.time().hour());
    combo4_->setCurrentIndex(dateTime.time().minute());
    setValue(dateTime.date());
}

void CnCalendar::setBig(bool big) {
    big_ = big;
    grid_->updateGeometry();
    emit changed();
    update();
    grid_->update();
}

void CnCalendar::setShowVerticalGrid(bool on) {
    showVerticalGrid_ = on;
    emit changed();
    grid_->update();
}

void CnCalendar::setShowHorizontalGrid(bool on) {
    showHorizontalGrid_ = on;
    emit changed();
    grid_->update();
}

void CnCalendar::setColors(const QColor& title, const QColor& week, const QColor& date, const QColor& bottom,
                           const QColor& gridLines, const QColor& select) {
    titleBack_ = title;
    weekBack_ = week;
    dateBack_ = date;
    bottomBack_ = bottom;
    gridLines_ = gridLines;
    select_ = select;
    emit changed();
    grid_->update();
}

void CnCalendar::setBirthTimeShown(bool shown) {
    label4_->setVisible(shown);
    combo3_->setVisible(shown);
    combo4_->setVisible(shown);
    refreshBottom();
}

QString CnCalendar::get_NongLiText(const QDate& date) const {
    return dovrex::get_NongLiText(guarded(date));
}

QString CnCalendar::get_NongLiMonthText(const QDate& date) const {
    return dovrex::get_NongLiMonthText(guarded(date));
}

QString CnCalendar::get_NongLiDayText(const QDate& date) const {
    return dovrex::get_NongLiDayText(guarded(date));
}

QString CnCalendar::get_XingZuo(const QDate& date) const {
    return dovrex::get_XingZuo(guarded(date));
}

QString CnCalendar::get_XingQi(const QDate& date, int style) const {
    return dovrex::get_XingQi(guarded(date), style);
}

QString CnCalendar::getJieQi1() const {
    return dovrex::getJieQi1(value_.year());
}

QString CnCalendar::getJieQistr(const QString& termName, int termIndex, bool allTerms) const {
    return dovrex::getJieQistr(value_.year(), termName, termIndex, allTerms);
}

bool CnCalendar::step(int mode) {
    const std::optional<QDate> next = stepCalendar(value_, mode);
    if (!next) return false;
    setValue(*next);
    return true;
}

void CnCalendar::startRepeat(int mode) {
    mode_ = mode;
    if (step(mode)) timer1_.start();
}

void CnCalendar::stopRepeat() {
    timer1_.stop();
}

QString CnCalendar::bottomText() const {
    const int lunarYear = solar2Lunar(value_).mid(1, 4).toInt();
    return get_GanZhiYear(lunarYear, false) + get_ShengXiaoOfYear(lunarYear) + QStringLiteral("年　") +
           dovrex::get_NongLiText(value_);
}

std::array<std::int16_t, 37> CnCalendar::cells() const {
    // The grid is shared by the module; lay out our month afresh before reading it.
    build_MonthGrid(value_.year(), value_.month());
    return RiLiGeZi;
}

int CnCalendar::cellOf(const QDate& date) const {
    if (date.year() != value_.year() || date.month() != value_.month()) return -1;
    const auto grid = cells();
    for (int i = 0; i < 37; ++i)
        if (grid[size_t(i)] == date.day()) return i;
    return -1;
}

void CnCalendar::showValue() {
    if (updating_) return;
    updating_ = true;
    combo1_->setCurrentIndex(value_.year() - kCalendarFirst.year());
    combo2_->setCurrentIndex(value_.month() - 1);
    label1_->setText(QStringLiteral("%1年").arg(value_.year()));
    label2_->setText(QStringLiteral("%1").arg(value_.month(), 2, 10, QLatin1Char('0')));
    refreshBottom();
    grid_->update();
    updating_ = false;
}

void CnCalendar::refreshBottom() {
    labelButtom_->setText(bottomText());
    QString when = value_.toString(QStringLiteral("yyyy年M月d日 ")) + dovrex::get_XingQi(value_) +
                   QStringLiteral(" ") + dovrex::get_XingZuo(value_);
    if (!combo3_->isHidden())
        when += QStringLiteral("  ") + valueDateTime().toString(QStringLiteral("HH:mm"));
    label5_->setText(when);
}

// ---- the grid ----

CnCalendarGrid::CnCalendarGrid(CnCalendar& owner) : QWidget(&owner), owner_(owner) {
    setObjectName(QStringLiteral("RiLiGeZi"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setCursor(Qt::PointingHandCursor);
}

int CnCalendarGrid::headHeight() const {
    return fontMetrics().height() + 8;
}

QSize CnCalendarGrid::sizeHint() const {
    const int cellW = owner_.big() ? 78 : 62, cellH = owner_.big() ? 50 : 42;
    return {cellW * 7 + 2, headHeight() + cellH * kRows + 2};
}

QSize CnCalendarGrid::minimumSizeHint() const {
    return {7 * 48 + 2, headHeight() + kRows * 34 + 2};
}

QRect CnCalendarGrid::cellRect(int cell) const {
    const double w = (width() - 2) / 7.0, h = (height() - headHeight() - 2) / double(kRows);
    const int col = cell % 7, row = cell / 7;
    const int left = 1 + int(col * w), top = headHeight() + 1 + int(row * h);
    return QRect(QPoint(left, top), QPoint(1 + int((col + 1) * w) - 1, headHeight() + int((row + 1) * h)));
}

int CnCalendarGrid::cellAt(const QPoint& pos) const {
    if (pos.y() < headHeight() || pos.x() < 1 || pos.x() >= width() - 1) return -1;
    const double w = (width() - 2) / 7.0, h = (height() - headHeight() - 2) / double(kRows);
    const int col = int((pos.x() - 1) / w), row = int((pos.y() - headHeight() - 1) / h);
    if (col < 0 || col > 6 || row < 0 || row >= kRows) return -1;
    const int cell = row * 7 + col;
    return cell < 37 ? cell : -1;
}

void CnCalendarGrid::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing, false);
    p.fillRect(rect(), owner_.dateBack_);
    p.fillRect(QRect(0, 0, width(), headHeight()), owner_.weekBack_);

    static const char* const kWeek[7] = {"日", "一", "二", "三", "四", "五", "六"};
    const double w = (width() - 2) / 7.0;
    for (int c = 0; c < 7; ++c) {
        p.setPen(c == 0 || c == 6 ? QColor(0xC0, 0x30, 0x30) : QColor(0x30, 0x30, 0x30));
        p.drawText(QRect(1 + int(c * w), 0, int(w), headHeight()), Qt::AlignCenter,
                   QString::fromUtf8(kWeek[c]));
    }

    const QDate value = owner_.value();
    const int year = value.year(), month = value.month();
    if (owner_.showVerticalGrid_ || owner_.showHorizontalGrid_) {
        p.setPen(owner_.gridLines_);
        const int top = headHeight(), bottom = height() - 1;
        if (owner_.showVerticalGrid_)
            for (int c = 0; c <= 7; ++c)
                p.drawLine(int(c * w) + (c == 7 ? 0 : 1), top, int(c * w) + (c == 7 ? 0 : 1), bottom);
        if (owner_.showHorizontalGrid_)
            for (int r = 0; r <= kRows; ++r) {
                const int y = r == kRows ? bottom : cellRect(r * 7).top() - 1;
                p.drawLine(0, y, width() - 1, y);
            }
    }

    const auto cells = owner_.cells();
    QFont dayFont = font(), lunarFont = font();
    dayFont.setPointSizeF(font().pointSizeF() * (owner_.big() ? 1.55 : 1.3));
    dayFont.setBold(true);
    lunarFont.setPointSizeF(font().pointSizeF() * (owner_.big() ? 0.95 : 0.85));
    for (int i = 0; i < 37; ++i) {
        const int day = cells[size_t(i)];
        if (day == 0) continue;
        const QDate date(year, month, day);
        const QRect r = cellRect(i).adjusted(1, 1, -1, -1);
        if (day == value.day()) p.fillRect(r, owner_.select_);
        const int col = i % 7;
        const bool weekend = col == 0 || col == 6;
        p.setFont(dayFont);
        p.setPen(weekend ? QColor(0xC0, 0x20, 0x20) : QColor(0x20, 0x20, 0x20));
        p.drawText(r.adjusted(0, 2, 0, -r.height() / 2 + 2), Qt::AlignHCenter | Qt::AlignBottom,
                   QString::number(day));
        p.setFont(lunarFont);
        p.setPen(isRiLiSpecialDay(date) ? QColor(0x1A, 0x6E, 0x1A) : QColor(0x70, 0x70, 0x70));
        p.drawText(r.adjusted(0, r.height() / 2 + 1, 0, 0), Qt::AlignHCenter | Qt::AlignTop,
                   calendarCellText(date));
    }
}

void CnCalendarGrid::mousePressEvent(QMouseEvent* event) {
    const int cell = cellAt(event->position().toPoint());
    if (cell < 0) return;
    const int day = owner_.cells()[size_t(cell)];
    if (day == 0) return;
    owner_.setValue(QDate(owner_.value().year(), owner_.value().month(), day));
}

}  // namespace dovrex
