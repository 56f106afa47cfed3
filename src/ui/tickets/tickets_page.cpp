#include "ui/tickets/tickets_page.h"

#include <QAction>
#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>
#include <array>

#include "app/pipeline_commands.h"
#include "domain/game.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"
#include "store/store.h"
#include "ui/shell/form_main.h"
#include "ui/shell/gui_screen.h"
#include "ui/shell/window_parts.h"
#include "ui/tickets/ticket_printer.h"
#include "widgets/ball_art.h"
#include "widgets/command_trap.h"
#include "widgets/cursor_model.h"

namespace dovrex {

namespace {

// The access key and the shortcut of each of the eight commands in the 投注 menu.
struct MenuKeys {
    QChar key;
    QKeySequence shortcut;
};
const std::array<MenuKeys, kTouZhuCommands>& touZhuMenuKeys() {
    static const std::array<MenuKeys, kTouZhuCommands> keys{{
        {u'1', QKeySequence(Qt::CTRL | Qt::Key_1)},
        {u'2', QKeySequence(Qt::CTRL | Qt::Key_2)},
        {u'3', QKeySequence(Qt::CTRL | Qt::Key_3)},
        {u'J', QKeySequence(Qt::CTRL | Qt::Key_J)},
        {u'E', QKeySequence(Qt::CTRL | Qt::Key_E)},
        {u'I', QKeySequence(Qt::CTRL | Qt::Key_I)},
        {u'D', QKeySequence()},  // deleting every ticket is never one key away
        {u'K', QKeySequence(Qt::CTRL | Qt::Key_K)},
    }};
    return keys;
}

// "初始化..." with its key as "初始化(&1)...".
QString withAccessKey(const QString& text, QChar key) {
    QString plain = text;
    const bool dots = plain.endsWith(QStringLiteral("..."));
    if (dots) plain.chop(3);
    return plain + QStringLiteral("(&") + key + u')' + (dots ? QStringLiteral("...") : QString());
}

}  // namespace

TicketsPage::TicketsPage(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("Frm_Sub_TouZhu"));

    auto* title = new QLabel(QStringLiteral("投注号码"), this);
    QFont bold = title->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.15);
    title->setFont(bold);
    summary_ = new QLabel(this);
    summary_->setObjectName(QStringLiteral("LabelTouZhuInfo"));
    summary_->setStyleSheet(QStringLiteral("color: #555555;"));
    auto* head = new QHBoxLayout;
    head->setSpacing(8);
    head->addWidget(title);
    head->addWidget(summary_);
    head->addStretch(1);
    // Paper and PDF of the grid's issue, beside the heading they repeat on every page.
    auto* print = new QPushButton(QStringLiteral("打印"), this);
    print->setObjectName(QStringLiteral("cmm_DaYin"));
    print->setToolTip(msg::kPrintTip);
    auto* pdf = new QPushButton(QStringLiteral("导出PDF"), this);
    pdf->setObjectName(QStringLiteral("cmm_DaoChuPdf"));
    pdf->setToolTip(msg::kPdfTip);
    for (QPushButton* b : {print, pdf}) {
        b->setMinimumWidth(b->fontMetrics().horizontalAdvance(b->text()) + 24);
        head->addWidget(b);
    }
    connectCommand(print, &QPushButton::clicked, this, [this] { TicketPrinter::printOnPaper(window()); });
    connectCommand(pdf, &QPushButton::clicked, this, [] { TicketPrinter::exportPdf(); });

    grid_ = new QTableView(this);
    grid_->setObjectName(QStringLiteral("TDBGrid_RZ"));
    model_ = new CursorModel(grid_);
    grid_->setModel(model_);
    grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    grid_->setWordWrap(false);
    grid_->verticalHeader()->setDefaultSectionSize(grid_->fontMetrics().height() + 8);
    grid_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    grid_->verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid_->horizontalHeader()->setHighlightSections(false);
    connect(model_, &QAbstractItemModel::modelReset, this, &TicketsPage::updateSummary);

    // The Stop panel of a running pass.
    stopFrame_ = new QFrame(this);
    stopFrame_->setObjectName(QStringLiteral("FrameStop"));
    stopFrame_->setFrameShape(QFrame::StyledPanel);
    stop_ = new QPushButton(QStringLiteral("停止"), stopFrame_);
    stop_->setObjectName(QStringLiteral("cmm_stop"));
    stop_->setToolTip(QStringLiteral("中止正在进行的操作，已完成的部分保留"));
    stop_->setStyleSheet(
        QStringLiteral("QPushButton { color: #b22222; font-weight: bold; padding: 3px 16px; }"));
    auto* bar = new QProgressBar(stopFrame_);
    bar->setObjectName(QStringLiteral("ProgressBar_TouZu_Busy"));
    bar->setTextVisible(false);
    auto* value = new QLabel(QStringLiteral("0"), stopFrame_);
    value->setObjectName(QStringLiteral("LabelJindu"));
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    value->setMinimumWidth(value->fontMetrics().horizontalAdvance(QStringLiteral("0000000")));
    auto* total = new QLabel(QStringLiteral("0"), stopFrame_);
    total->setObjectName(QStringLiteral("LabelJinduAll"));
    auto* stopRow = new QHBoxLayout(stopFrame_);
    stopRow->setContentsMargins(6, 4, 6, 4);
    stopRow->addWidget(stop_);
    stopRow->addWidget(new QLabel(QStringLiteral("进度："), stopFrame_));
    stopRow->addWidget(bar, 1);
    stopRow->addWidget(value);
    stopRow->addWidget(new QLabel(QStringLiteral("/"), stopFrame_));
    stopRow->addWidget(total);
    stopFrame_->hide();
    // On mouse-down: the release may wait behind a long pass, the press lands at its next yield.
    connect(stop_, &QPushButton::pressed, this, [] { cmm_stop_MouseDown(); });

    // The eight commands.
    commandBar_ = new QWidget(this);
    commandBar_->setObjectName(QStringLiteral("Pic_subTouZhu"));
    auto* commandRow = new QGridLayout(commandBar_);
    commandRow->setContentsMargins(0, 0, 0, 0);
    commandRow->setHorizontalSpacing(6);
    commandRow->setVerticalSpacing(6);
    const auto& texts = touZhuCommandTexts();
    for (int i = 0; i < kTouZhuCommands; ++i) {
        // The steps show the keys of their menu entries, which work on every page.
        const QKeySequence keys = touZhuMenuKeys()[size_t(i)].shortcut;
        const QString caption = i < 3 ? QStringLiteral("%1 (%2)").arg(texts[size_t(i)].button,
                                                                      keys.toString(QKeySequence::NativeText))
                                      : texts[size_t(i)].button;
        auto* b = new QPushButton(caption, commandBar_);
        b->setObjectName(QStringLiteral("cmmTouZhu(%1)").arg(i));
        b->setToolTip(texts[size_t(i)].toolTip);
        b->setMinimumWidth(b->fontMetrics().horizontalAdvance(b->text()) + 24);
        commandRow->addWidget(b, 0, i);
        commands_[size_t(i)] = b;
        connectCommand(b, &QPushButton::clicked, this, [i] { cmmTouZhu_Click(i); });
    }
    // The three steps stand out.
    for (int i = 0; i < 3; ++i) {
        QFont f = commands_[size_t(i)]->font();
        f.setBold(true);
        commands_[size_t(i)]->setFont(f);
        commands_[size_t(i)]->setMinimumWidth(
            commands_[size_t(i)]->fontMetrics().horizontalAdvance(commands_[size_t(i)]->text()) + 24);
    }

    auto* left = new QVBoxLayout;
    left->addLayout(head);
    left->addWidget(grid_, 1);
    left->addWidget(stopFrame_);
    left->addWidget(commandBar_);

    // The operation log.
    auto* logTitle = new QLabel(QStringLiteral("操作提示"), this);
    logTitle->setFont(bold);
    log_ = new QPlainTextEdit(this);
    log_->setObjectName(QStringLiteral("TextChaoZuoTip"));
    log_->setReadOnly(true);
    log_->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    log_->setPlainText(shared().operationLog);
    side_ = new QVBoxLayout;
    side_->addWidget(logTitle);
    side_->addWidget(log_, 1);
    auto* sideBox = new QWidget(this);
    sideBox->setLayout(side_);
    side_->setContentsMargins(0, 0, 0, 0);
    sideBox->setFixedWidth(qMax(300, log_->fontMetrics().horizontalAdvance(QStringLiteral("选")) * 19));

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addLayout(left, 1);
    layout->addWidget(sideBox);
    updateSummary();
}

void TicketsPage::addPanel(QWidget* panel) {
    side_->insertWidget(0, panel);
}

void TicketsPage::updateSummary() {
    // Reds in red, the blue in blue, as on the balls.
    for (int i = 1; i <= 6; ++i) model_->setColumnColors(QStringLiteral("红球%1").arg(i), QColor(), kRedBall);
    model_->setColumnColors(QStringLiteral("蓝球"), QColor(), kBlueBall);
    const int rows = model_->rowCount();
    if (rows == 0) {
        summary_->setText(
            QStringLiteral("表格中还没有号码：先在“过滤条件 → 选取号码”里选号，再按“第1步：初始化”。"));
        return;
    }
    IssueNumber issue = 0;
    runCommand([&] { issue = get_BiaoGeQiHao(); });
    // What the tickets cost is what the player weighs first.
    summary_->setText(issue > 0 ? issueTicketsAndCost(issue, rows) : ticketsAndCost(rows));
}

void installTicketsPage(FormMain& window) {
    auto* page = new TicketsPage;
    window.setPage(TopPage::Tickets, page);

    // mnu_ShengCeng: the same eight commands from the menu, on the ticket page.
    QMenu* menu = window.menu(QStringLiteral("投注(&B)"));
    const auto& texts = touZhuCommandTexts();
    for (int i = 0; i < kTouZhuCommands; ++i) {
        if (i == kCmdSelect || i == kCmdExport || i == kCmdDelete) menu->addSeparator();
        QAction* a = menu->addAction(withAccessKey(texts[size_t(i)].menu, touZhuMenuKeys()[size_t(i)].key));
        a->setShortcut(touZhuMenuKeys()[size_t(i)].shortcut);
        a->setObjectName(QStringLiteral("mnu_ShengCeng(%1)").arg(i));
        a->setToolTip(texts[size_t(i)].toolTip);
        connectCommand(a, &QAction::triggered, &window, [i] { mnu_ShengCeng_Click(i); });
        if (i == kCmdImport) {
            QAction* print = menu->addAction(QStringLiteral("打印(&P)..."));
            print->setShortcut(QKeySequence::Print);
            print->setObjectName(QStringLiteral("mnu_DaYin"));
            print->setToolTip(msg::kPrintTip);
            connectCommand(print, &QAction::triggered, &window,
                           [&window] { TicketPrinter::printOnPaper(&window); });
            QAction* pdf = menu->addAction(QStringLiteral("导出PDF(&F)..."));
            pdf->setObjectName(QStringLiteral("mnu_DaoChuPdf"));
            pdf->setToolTip(msg::kPdfTip);
            connectCommand(pdf, &QAction::triggered, &window, [] { TicketPrinter::exportPdf(); });
        }
    }
}

}  // namespace dovrex
