#include "ui/analysis/omission_page.h"
#include "ui/analysis/omission_chart.h"

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QToolTip>
#include <QVBoxLayout>

#include "analysis/probability.h"
#include "screen/shared_state.h"
#include "store/store.h"
#include "ui/analysis/other_page.h"
#include "ui/history/history_page.h"
#include "ui/shell/form_main.h"
#include "ui/shell/window_parts.h"
#include "widgets/ball_art.h"
#include "widgets/command_trap.h"

namespace dovrex {

namespace {

constexpr double kTwips = 15.0;

QRectF toPixels(const QRectF& twips) {
    return {twips.x() / kTwips, twips.y() / kTwips, twips.width() / kTwips, twips.height() / kTwips};
}

QLabel* legend(const QString& name, const QColor& colour, const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setStyleSheet(
        QStringLiteral("QLabel { background: %1; color: white; padding: 2px 6px; border-radius: 3px; }")
            .arg(colour.name()));
    return label;
}

}  // namespace

const QColor OmissionChart::kMaxColour(0xB8, 0xC4, 0xD6);
const QColor OmissionChart::kAvgColour(0x6E, 0x84, 0xA8);
const QColor OmissionChart::kBelowColour(0x3A, 0x9A, 0x5B);
const QColor OmissionChart::kOverdueColour(0xE0, 0x5A, 0x1E);

OmissionChart::OmissionChart(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frm_YLFXmain"));
    setMouseTracking(true);
    setMinimumHeight(200);
    setAutoFillBackground(true);
    QPalette p = palette();
    p.setColor(QPalette::Window, Qt::white);
    setPalette(p);
}

void OmissionChart::setFigures(const OmissionTable& table, bool blue, int itemIndex, const QString& issue) {
    table_ = table;
    blue_ = blue;
    itemIndex_ = itemIndex;
    issue_ = issue;
    update();
}

QRectF OmissionChart::groupRect(int n) const {
    return omission_GroupRect(width() * kTwips, height() * kTwips, n, count());
}

OmissionGroupLayout OmissionChart::groupLayout(int n) const {
    const QRectF g = groupRect(n);
    return draw_OmissionGroup(g.width(), g.height(), table_[size_t(n)], qMin(g.width(), 22.0 * kTwips));
}

int OmissionChart::groupAt(const QPoint& pos) const {
    const QPointF twips(pos.x() * kTwips, pos.y() * kTwips);
    for (int n = 1; n <= count(); ++n)
        if (groupRect(n).contains(twips)) return n;
    return 0;
}

QString OmissionChart::tipAt(const QPoint& pos) const {
    const int n = groupAt(pos);
    if (n == 0) return {};
    const OmissionRecord& r = table_[size_t(n)];
    const QRectF g = groupRect(n);
    const QPointF local(pos.x() * kTwips - g.x(), pos.y() * kTwips - g.y());
    const OmissionGroupLayout l = groupLayout(n);
    if (l.curBar.contains(local) || l.ball.contains(local)) return omission_CurTip(issue_, r);
    if (l.avgBar.contains(local)) return omission_AvgTip(r);
    if (l.maxBar.contains(local)) return omission_MaxTip(r);
    return omission_GroupTip(itemIndex_, n, issue_, r);
}

QString OmissionChart::clickText(int n) const {
    if (n < 1 || n > count()) return {};
    return omission_ClickText(itemIndex_, n, issue_, table_[size_t(n)]);
}

void OmissionChart::paintEvent(QPaintEvent*) {
    if (count() < 1) return;
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    QFont small = font();
    small.setPixelSize(10);
    QFont caption = font();
    caption.setPixelSize(12);
    caption.setBold(true);
    for (int n = 1; n <= count(); ++n) {
        const QRectF g = groupRect(n);
        const OmissionGroupLayout l = groupLayout(n);
        const OmissionRecord& r = table_[size_t(n)];
        p.save();
        p.translate(g.x() / kTwips, g.y() / kTwips);
        p.fillRect(toPixels(l.maxBar), kMaxColour);
        p.fillRect(toPixels(l.avgBar), kAvgColour);
        p.fillRect(toPixels(l.curBar), l.overdue ? kOverdueColour : kBelowColour);
        p.fillRect(toPixels(l.rule), QColor(0x55, 0x55, 0x55));
        paintBall(p, toPixels(l.ball), blue_ ? kBlueBall : kRedBall, twoDigits(n));
        p.setFont(small);
        p.setPen(QColor(0x33, 0x33, 0x33));
        const QRectF ball = toPixels(l.ball);
        p.drawText(QRectF(ball.x() - 8, ball.y() - 14, ball.width() + 16, 13), Qt::AlignCenter,
                   QString::number(r.curGap));
        p.setFont(caption);
        p.setPen(blue_ ? kBlueBall : kRedBall);
        p.drawText(toPixels(l.caption), Qt::AlignHCenter | Qt::AlignTop, twoDigits(n));
        p.restore();
    }
}

void OmissionChart::mousePressEvent(QMouseEvent* event) {
    const int n = groupAt(event->position().toPoint());
    if (n > 0 && event->button() == Qt::LeftButton) dovrex::screen().ui_Message(clickText(n));
}

bool OmissionChart::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        auto* help = static_cast<QHelpEvent*>(event);
        const QString tip = tipAt(help->pos());
        if (tip.isEmpty())
            QToolTip::hideText();
        else
            QToolTip::showText(help->globalPos(), tip, this);
        return true;
    }
    return QWidget::event(event);
}

OmissionPage::OmissionPage(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("pic_Tuobiao"));
    item_ = new QComboBox(this);
    item_->setObjectName(QStringLiteral("Combo_ItemOfYLFX"));
    item_->addItems({kOmissionRedItem, kOmissionBlueItem});
    issue_ = new QComboBox(this);
    issue_->setObjectName(QStringLiteral("Combo_QSofYLFX"));
    issue_->setEditable(true);
    issue_->setInsertPolicy(QComboBox::NoInsert);
    issue_->setMinimumContentsLength(8);
    analyse_ = new QPushButton(QStringLiteral("号码开出概率分析"), this);
    analyse_->setObjectName(QStringLiteral("cmd_FX"));
    analyse_->setToolTip(QStringLiteral("按历史开奖记录分析某一期开出机率很低的号码，并在选号按钮上标出"));
    chart_ = new OmissionChart(this);

    auto* bar = new QHBoxLayout;
    bar->setSpacing(8);
    bar->addWidget(item_);
    bar->addWidget(new QLabel(QStringLiteral("截止期号："), this));
    bar->addWidget(issue_);
    bar->addSpacing(16);
    auto* tuli = new QLabel(QStringLiteral("图例："), this);
    tuli->setObjectName(QStringLiteral("Label_Tuli"));
    bar->addWidget(tuli);
    bar->addWidget(legend(QStringLiteral("Label_TuLi_Max"), OmissionChart::kMaxColour,
                          QStringLiteral("历史最大遗漏"), this));
    bar->addWidget(legend(QStringLiteral("Label_TuLi_Avg"), OmissionChart::kAvgColour,
                          QStringLiteral("历史平均遗漏"), this));
    bar->addWidget(legend(QStringLiteral("Label_TuLi_value(0)"), OmissionChart::kBelowColour,
                          QStringLiteral("当前遗漏 ≤ 平均"), this));
    bar->addWidget(legend(QStringLiteral("Label_TuLi_value(1)"), OmissionChart::kOverdueColour,
                          QStringLiteral("当前遗漏 > 平均"), this));
    bar->addStretch(1);
    bar->addWidget(analyse_);

    auto* note =
        new QLabel(QStringLiteral("点击号码可查看详细的遗漏数据；球上方的数字是当前遗漏期数。"), this);
    note->setStyleSheet(QStringLiteral("color: #666666;"));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addLayout(bar);
    layout->addWidget(chart_, 1);
    layout->addWidget(note);

    connectCommand(item_, &QComboBox::currentIndexChanged, this, [this] { refresh(); });
    connectCommand(issue_, &QComboBox::activated, this, [this] { refresh(); });
    connectCommand(issue_->lineEdit(), &QLineEdit::returnPressed, this, [this] { refresh(); });
    connectCommand(analyse_, &QPushButton::clicked, this, [] { cmd_FX_Click(); });
}

void OmissionPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (dirty_) QMetaObject::invokeMethod(this, &OmissionPage::refresh, Qt::QueuedConnection);
}

void OmissionPage::historyChanged() {
    issue_->setEditText(QString());
    dirty_ = true;
    if (isVisible()) refresh();
}

void OmissionPage::refresh() {
    if (running_) return;
    running_ = true;
    dirty_ = false;
    for (QWidget* w :
         {static_cast<QWidget*>(item_), static_cast<QWidget*>(issue_), static_cast<QWidget*>(analyse_)})
        w->setEnabled(false);
    runCommand([&] {
        if (issue_->currentText().trimmed().isEmpty()) {
            const IssueChoice choice = fill_QiShuCombo();
            const QSignalBlocker quiet(issue_);
            issue_->clear();
            issue_->addItems(choice.items);
            issue_->setEditText(choice.text);
        }
        const QString text = issue_->currentText().trimmed();
        const auto issue = IssueNumber(roundHalfEven(leadingNumber(text)));
        const bool blue = item_->currentText() == kOmissionBlueItem;
        const OmissionTable table = blue ? calc_BlueOmission(issue) : calc_RedOmission(issue);
        chart_->setFigures(table, blue, item_->currentIndex(), text);
    });
    for (QWidget* w :
         {static_cast<QWidget*>(item_), static_cast<QWidget*>(issue_), static_cast<QWidget*>(analyse_)})
        w->setEnabled(true);
    running_ = false;
}

void installOmissionPage(FormMain& window) {
    OtherPage* other = window.otherPage();
    if (!other) return;
    auto* page = new OmissionPage(other);
    other->addTool(page, QStringLiteral("遗漏统计"));
    if (HistoryPage* history = window.historyPage())
        QObject::connect(history, &HistoryPage::historyChanged, page, &OmissionPage::historyChanged);

    QMenu* analysis = window.menu(QStringLiteral("分析(&A)"));
    QAction* show = analysis->addAction(QStringLiteral("号码遗漏统计(&O)"));
    show->setObjectName(QStringLiteral("mnu_YiLouTongJi"));
    connectCommand(show, &QAction::triggered, &window, [&window, other, page] {
        window.selectPage(TopPage::Other);
        other->setCurrentWidget(page);
    });
    QAction* fx = analysis->addAction(QStringLiteral("号码开出概率分析(&P)..."));
    fx->setObjectName(QStringLiteral("mnu_GaiLvFenXi"));
    connectCommand(fx, &QAction::triggered, &window, [fx] {
        fx->setEnabled(false);
        cmd_FX_Click();
        fx->setEnabled(true);
    });
}

}  // namespace dovrex
