#include "ui/history/history_page.h"

#include <QButtonGroup>
#include <QDateEdit>
#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include "analysis/history_tables.h"
#include "app/app_flow.h"
#include "domain/date_value.h"
#include "filters/history_range.h"
#include "history/draw_download.h"
#include "history/draw_records.h"
#include "history/history_queries.h"
#include "screen/control_roles.h"
#include "screen/shared_state.h"
#include "store/store.h"
#include "ui/history/analysis_groups_dialog.h"
#include "ui/history/fenbu_grid.h"
#include "widgets/command_trap.h"
#include "widgets/cursor_model.h"
#include "widgets/search_row.h"

namespace dovrex {

namespace {

QTableView* makeGrid(const QString& name, QWidget* parent) {
    auto* grid = new QTableView(parent);
    grid->setObjectName(name);
    grid->setModel(new CursorModel(grid));
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid->setSelectionMode(QAbstractItemView::SingleSelection);
    grid->setWordWrap(false);
    grid->verticalHeader()->setDefaultSectionSize(grid->fontMetrics().height() + 8);
    grid->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    grid->verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid->horizontalHeader()->setHighlightSections(false);
    return grid;
}

QPushButton* makeButton(const QString& name, const QString& text, QWidget* parent) {
    auto* b = new QPushButton(text, parent);
    b->setObjectName(name);
    b->setAutoDefault(false);
    return b;
}

}  // namespace

HistoryPage::HistoryPage(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("Frm_Sub_History"));

    grid_ = makeGrid(role::TDBGridHistory, this);
    model_ = qobject_cast<CursorModel*>(grid_->model());
    connect(model_, &QAbstractItemModel::modelReset, this, &HistoryPage::updateCount);

    search_ = new SearchRow(grid_, this);
    search_->hide();
    connectCommand(search_, &SearchRow::searchRequested, this, [this] { runSearch(); });

    fenBu_ = new FenBuGrid(this);
    groupGrid_ = makeGrid(QStringLiteral("TDBGrid_zdy"), this);
    groupGrid_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);

    auto* drawsView = new QWidget(this);
    auto* drawsLayout = new QVBoxLayout(drawsView);
    drawsLayout->setContentsMargins(0, 0, 0, 0);
    drawsLayout->setSpacing(0);
    drawsLayout->addWidget(search_);
    drawsLayout->addWidget(grid_, 1);
    // The prize table of the draw the cursor stands on.
    prizes_ = new QLabel(drawsView);
    prizes_->setObjectName(QStringLiteral("Label_JiangJin"));
    prizes_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    prizes_->setContentsMargins(4, 4, 4, 0);
    drawsLayout->addWidget(prizes_);
    connect(grid_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) { showPrizes(current.row()); });

    stack_ = new QStackedWidget(this);
    stack_->addWidget(drawsView);
    stack_->addWidget(fenBu_);
    stack_->addWidget(groupGrid_);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 6, 8, 6);
    layout->setSpacing(6);
    layout->addWidget(buildEntryRow());
    layout->addWidget(buildViewBar());
    layout->addWidget(stack_, 1);
}

QWidget* HistoryPage::buildEntryRow() {
    auto* row = new QWidget(this);
    entryRow_ = new QHBoxLayout(row);
    entryRow_->setContentsMargins(0, 0, 0, 0);
    entryRow_->setSpacing(4);

    static const QRegularExpression digits(QStringLiteral("\\d*"));
    const int ballWidth = fontMetrics().horizontalAdvance(QStringLiteral("000")) + 12;
    for (int i = 0; i < 8; ++i) {
        auto* box = new QLineEdit(row);
        box->setObjectName(QStringLiteral("TextHistory(%1)").arg(i));
        box->setValidator(new QRegularExpressionValidator(digits, box));
        box->setMaxLength(i == 0 ? 7 : 2);
        box->setAlignment(Qt::AlignCenter);
        box->setFixedWidth(i == 0 ? fontMetrics().horizontalAdvance(QStringLiteral("00000000")) + 12
                                  : ballWidth);
        if (i >= 1 && i <= 6) box->setStyleSheet(QStringLiteral("color: #D71B1B; font-weight: bold;"));
        if (i == 7) box->setStyleSheet(QStringLiteral("color: #1D5FD0; font-weight: bold;"));
        box->installEventFilter(this);
        boxes_[size_t(i)] = box;
    }
    auto label = [row](const QString& text) { return new QLabel(text, row); };
    entryRow_->addWidget(label(QStringLiteral("期号")));
    entryRow_->addWidget(boxes_[0]);
    entryRow_->addSpacing(6);
    entryRow_->addWidget(label(QStringLiteral("红球")));
    for (int i = 1; i <= 6; ++i) entryRow_->addWidget(boxes_[size_t(i)]);
    entryRow_->addSpacing(6);
    entryRow_->addWidget(label(QStringLiteral("蓝球")));
    entryRow_->addWidget(boxes_[7]);
    entryRow_->addSpacing(6);
    entryRow_->addWidget(label(QStringLiteral("开奖日期")));
    date_ = new QDateEdit(row);
    date_->setObjectName(QStringLiteral("DTPicker_KJ"));
    date_->setDisplayFormat(QStringLiteral("yyyy/MM/dd"));
    date_->setCalendarPopup(true);
    date_->setDate(Clock::today());
    date_->setMinimumWidth(date_->sizeHint().width());  // the whole date, whatever the window's width
    entryRow_->addWidget(date_);

    add_ = makeButton(QStringLiteral("cmmUpdateHistory(0)"), QStringLiteral("添加记录"), row);
    download_ = makeButton(QStringLiteral("cmmUpdateHistory(1)"), QStringLiteral("下载更新"), row);
    delete_ = makeButton(QStringLiteral("cmm_scls"), QStringLiteral("删除记录"), row);
    search_Button_ = makeButton(QStringLiteral("CmmSousuo"), QStringLiteral("搜索"), row);
    lookup_ = makeButton(QStringLiteral("cmm_kuaisusezi"), QStringLiteral("查询开奖"), row);
    add_->setToolTip(QStringLiteral("把输入的开奖号码存入历史记录（同一期号的记录将被覆盖）"));
    download_->setToolTip(QStringLiteral("从网上下载最新的开奖数据"));
    lookup_->setToolTip(QStringLiteral("在网站上查看某一期的开奖详情"));
    connectCommand(add_, &QPushButton::clicked, this, [this] { addDraw(); });
    connectCommand(download_, &QPushButton::clicked, this, [this] { downloadDraws(); });
    connectCommand(delete_, &QPushButton::clicked, this, [this] { deleteDraw(); });
    connectCommand(search_Button_, &QPushButton::clicked, this, [this] { beginSearch(); });
    connectCommand(lookup_, &QPushButton::clicked, this, [this] { lookupDraw(); });
    entryRow_->addSpacing(4);
    entryRow_->addWidget(add_);
    entryRow_->addStretch(1);
    entryRow_->addWidget(download_);
    entryRow_->addWidget(delete_);
    // 搜索 and 查询开奖 look at draws rather than enter them: they sit in the view bar, so that the
    // entry row fits a 1024-pixel screen whole.
    return row;
}

QWidget* HistoryPage::buildViewBar() {
    auto* bar = new QWidget(this);
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);

    views_ = new QButtonGroup(this);
    const QStringList viewNames{QStringLiteral("开奖记录"), QStringLiteral("号码分布"),
                                QStringLiteral("自定义表"), QStringLiteral("分析表")};
    for (int i = 0; i < viewNames.size(); ++i) {
        auto* option = new QRadioButton(viewNames[i], bar);
        option->setObjectName(QStringLiteral("Option_TorD(%1)").arg(i));
        views_->addButton(option, i);
        row->addWidget(option);
    }
    views_->button(0)->setChecked(true);
    connectCommand(views_, &QButtonGroup::idToggled, this, [this](int id, bool on) {
        if (on) setView(HistoryView(id));
    });

    groups_ = makeButton(QStringLiteral("cmmFenXiZu"), QStringLiteral("分组设置..."), bar);
    groups_->setToolTip(QStringLiteral("设置分析表的20个号码组"));
    groups_->hide();
    connectCommand(groups_, &QPushButton::clicked, this, [this] {
        AnalysisGroupsDialog dialog(this);
        dialog.exec();
        if (view_ == HistoryView::Analysis) refreshView();
    });
    row->addWidget(groups_);

    auto* clear = makeButton(QStringLiteral("cmdClearFilter"), QStringLiteral("清除条件"), bar);
    auto* begin = makeButton(QStringLiteral("filterBegin"), QStringLiteral("开始搜索"), bar);
    clear->hide();
    begin->hide();
    connectCommand(clear, &QPushButton::clicked, this, [this] { clearSearch(); });
    connectCommand(begin, &QPushButton::clicked, this, [this] { runSearch(); });
    row->addWidget(search_Button_);
    row->addWidget(begin);
    row->addWidget(clear);
    row->addWidget(lookup_);

    row->addStretch(1);
    auto* tuBiao = new QProgressBar(bar);
    tuBiao->setObjectName(QStringLiteral("ProgressBar_TuBiao"));
    tuBiao->setMaximumWidth(160);
    tuBiao->setMaximumHeight(14);
    tuBiao->setTextVisible(false);
    tuBiao->hide();
    row->addWidget(tuBiao);

    count_ = new QLabel(bar);
    count_->setObjectName(QStringLiteral("LabelHistoryCount"));
    count_->setStyleSheet(QStringLiteral("color: #555555;"));
    row->addWidget(count_);
    row->addSpacing(12);

    showAll_ = new QRadioButton(QStringLiteral("全部记录"), bar);
    showAll_->setObjectName(QStringLiteral("Option_historyShow(0)"));
    show100_ = new QRadioButton(QStringLiteral("最近100期"), bar);
    show100_->setObjectName(QStringLiteral("Option_historyShow(1)"));
    modes_ = new QButtonGroup(this);
    modes_->addButton(showAll_, int(HistoryShowMode::All));
    modes_->addButton(show100_, int(HistoryShowMode::Newest100));
    showAll_->setChecked(true);
    connectCommand(modes_, &QButtonGroup::idToggled, this, [this](int id, bool on) {
        if (on) setMode(HistoryShowMode(id));
    });
    row->addWidget(new QLabel(QStringLiteral("显示："), bar));
    row->addWidget(showAll_);
    row->addWidget(show100_);
    return bar;
}

bool HistoryPage::eventFilter(QObject* watched, QEvent* event) {
    auto* box = qobject_cast<QLineEdit*>(watched);
    if (!box) return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::FocusIn) {
        QTimer::singleShot(0, box, &QLineEdit::selectAll);
    } else if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            // Enter moves along the row; on the blue it adds the draw.
            const auto at = std::find(boxes_.begin(), boxes_.end(), box);
            if (at == boxes_.end() - 1)
                addDraw();
            else if (at != boxes_.end())
                (*(at + 1))->setFocus();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

HistoryShowMode HistoryPage::mode() const {
    return show100_->isChecked() ? HistoryShowMode::Newest100 : HistoryShowMode::All;
}

void HistoryPage::resetEntry() {
    runCommand([&] {
        const QDate day = toQDate(next_KaiJiangRi(shared().g_DrawDays, latest_KaiJiangRi()));
        date_->setDate(day);
        boxes_[0]->setText(QString::number(next_QiHao(day)));
    });
}

void HistoryPage::showHistory() {
    runCommand([&] {
        const HistoryShowMode kept = read_HistoryShowMode();
        {
            const QSignalBlocker quiet(modes_);
            (kept == HistoryShowMode::All ? showAll_ : show100_)->setChecked(true);
        }
        resetEntry();
        refreshView();
        emit modeChanged(kept);
    });
}

void HistoryPage::setMode(HistoryShowMode mode) {
    {
        const QSignalBlocker quiet(modes_);
        (mode == HistoryShowMode::All ? showAll_ : show100_)->setChecked(true);
    }
    runCommand([&] {
        write_HistoryShowMode(mode);
        refreshView();
    });
    emit modeChanged(mode);
}

std::pair<int, int> HistoryPage::reportRange() const {
    const IssueNumber latest = latest_QiHao();
    if (mode() == HistoryShowMode::All) return {earliest_QiHao(), latest};
    return {top_QiHao(latest, 100), latest};
}

void HistoryPage::setView(HistoryView view) {
    view_ = view;
    {
        const QSignalBlocker quiet(views_);
        views_->button(int(view))->setChecked(true);
    }
    groups_->setVisible(view == HistoryView::Analysis);
    stack_->setCurrentIndex(view == HistoryView::Draws ? 0 : view == HistoryView::Distribution ? 1 : 2);
    refreshView();
}

void HistoryPage::refreshView() {
    auto* tuBiao = findChild<QProgressBar*>(QStringLiteral("ProgressBar_TuBiao"));
    runCommand([&] {
        if (view_ == HistoryView::Draws) {
            show_LiShi(mode() == HistoryShowMode::All);
            return;
        }
        const auto [from, to] = reportRange();
        tuBiao->show();
        if (view_ == HistoryView::Distribution) {
            fenBu_->fill(from, to);
            fenBu_->show();  // the fill hides the grid while it works
        } else if (view_ == HistoryView::Custom) {
            fill_ZiDingYiBiao(from, to);
        } else {
            fill_FenXiBiao(from, to);
        }
        if (view_ != HistoryView::Distribution) {
            // A group's caption lists its members: wide groups are cut to a readable column.
            const QFontMetrics fm(groupGrid_->horizontalHeader()->font());
            const int columns = groupGrid_->model()->columnCount();
            groupGrid_->setColumnWidth(0, fm.horizontalAdvance(QStringLiteral("00000000")) + 16);
            for (int c = 1; c < columns; ++c) {
                const QString caption = groupGrid_->model()->headerData(c, Qt::Horizontal).toString();
                groupGrid_->setColumnWidth(c, qBound(90, fm.horizontalAdvance(caption) + 16, 170));
            }
            groupGrid_->scrollToBottom();
        }
    });
    tuBiao->hide();
    updateCount();
}

void HistoryPage::updateCount() {
    const int n = model_->rowCount();
    count_->setText(n > 0 ? QStringLiteral("共 %1 期").arg(n) : QStringLiteral("暂无记录"));
}

void HistoryPage::addDraw() {
    DrawInput input;
    for (int i = 0; i < 8; ++i) input.boxes[size_t(i)] = boxes_[size_t(i)]->text();
    input.date = date_->date();
    bool stored = false;
    runCommand([&] {
        const IssueNumber newest = latest_QiHao();
        stored = storeEnteredDraw(input);
        follow_NewestDraw(newest);
    });
    if (stored) {
        for (int i = 0; i < 8; ++i) boxes_[size_t(i)]->setText(input.boxes[size_t(i)]);
        date_->setDate(input.date);
        if (view_ != HistoryView::Draws) refreshView();
        updateCount();
        emit historyChanged();
    } else {
        // A bad entry stays as typed, for the user to correct; the first wrong box takes the focus.
        boxes_[1]->setFocus();
    }
    history_Status();
}

void HistoryPage::downloadDraws() {
    setView(HistoryView::Draws);
    // The grids stay as they are until the draws are in.
    stack_->setUpdatesEnabled(false);
    DownloadResult result = DownloadResult::Error;
    const bool ran = runCommand([&] {
        const IssueNumber newest = latest_QiHao();
        result = downloadNewDraws();
        follow_NewestDraw(newest);
    });
    stack_->setUpdatesEnabled(true);
    // A store error ends the download quietly in the logic (the draws before it stay stored); the
    // player still hears of it.
    if (ran && result == DownloadResult::Error)
        dovrex::screen().ui_Message(msg::kCommandFailed, MessageKind::Error);
    if (result == DownloadResult::Updated) resetEntry();
    setView(HistoryView::Distribution);
    emit historyChanged();
    history_Status();
}

void HistoryPage::updateFromFile() {
    setView(HistoryView::Draws);
    DownloadResult result = DownloadResult::Error;
    const bool ran = runCommand([&] {
        const IssueNumber newest = latest_QiHao();
        result = update_FromFile();
        follow_NewestDraw(newest);
    });
    if (ran && result == DownloadResult::Error)
        dovrex::screen().ui_Message(msg::kCommandFailed, MessageKind::Error);
    if (result == DownloadResult::Updated) resetEntry();
    emit historyChanged();
    history_Status();
}

void HistoryPage::deleteDraw() {
    DeleteResult result = DeleteResult::Cancelled;
    runCommand([&] { result = cmm_scls(view_ == HistoryView::Draws); });
    if (result == DeleteResult::Deleted) {
        if (view_ != HistoryView::Draws) refreshView();
        updateCount();
        emit historyChanged();
    }
    history_Status();
}

void HistoryPage::beginSearch() {
    setView(HistoryView::Draws);
    dovrex::screen().ui_Message(msg::kSearchHint);
    search_->show();
    for (const char* name : {"filterBegin", "cmdClearFilter"})
        if (auto* b = findChild<QPushButton*>(QLatin1String(name))) b->show();
    if (QLineEdit* first = search_->input(0)) first->setFocus();
}

void HistoryPage::runSearch() {
    QList<SearchTerm> terms;
    for (const auto& [field, text] : search_->terms()) terms << SearchTerm{field, text};
    runCommand([&] {
        const SearchResult result = filterBegin(terms);
        if (result.clearRow) search_->clear();
    });
    updateCount();
}

void HistoryPage::clearSearch() {
    search_->clear();
}

void HistoryPage::lookupDraw() {
    runCommand([&] { cmm_kuaisusezi(); });
}

void HistoryPage::promptEntry() {
    dovrex::screen().ui_Message(msg::kEnterDrawHint);
    boxes_[1]->setFocus();
}

void HistoryPage::showPrizes(int row) {
    prizes_->clear();
    if (row < 0 || !model_ || !model_->cursor()) return;
    const int issueColumn = model_->cursor()->fieldIndex(QStringLiteral("期号"));
    if (issueColumn < 0) return;
    const int issue = model_->cursor()->valueAt(row, issueColumn).toInt();
    if (issue > 0) runCommand([&] { prizes_->setText(prizeTableText(issue)); });
}

}  // namespace dovrex
