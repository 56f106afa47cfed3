#include "ui/history_page.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTableView>
#include <QVBoxLayout>

#include "store/store.h"
#include "widgets/cursor_model.h"

namespace dovrex {

HistoryPage::HistoryPage(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("Frm_Sub_History"));

    auto* title = new QLabel(QStringLiteral("开奖记录"), this);
    QFont bold = title->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.15);
    title->setFont(bold);
    count_ = new QLabel(this);
    count_->setObjectName(QStringLiteral("LabelHistoryCount"));
    count_->setStyleSheet(QStringLiteral("color: #555555;"));

    entryRow_ = new QHBoxLayout;
    entryRow_->setSpacing(8);
    entryRow_->addWidget(title);
    entryRow_->addWidget(count_);

    showAll_ = new QRadioButton(QStringLiteral("全部记录"), this);
    showAll_->setObjectName(QStringLiteral("Option_historyShow(0)"));
    show100_ = new QRadioButton(QStringLiteral("最近100期"), this);
    show100_->setObjectName(QStringLiteral("Option_historyShow(1)"));
    modes_ = new QButtonGroup(this);
    modes_->addButton(showAll_, int(HistoryShowMode::All));
    modes_->addButton(show100_, int(HistoryShowMode::Newest100));
    showAll_->setChecked(true);
    connect(modes_, &QButtonGroup::idToggled, this, [this](int id, bool on) {
        if (on) setMode(HistoryShowMode(id));
    });

    auto* bar = new QHBoxLayout;
    bar->addLayout(entryRow_);
    bar->addStretch(1);
    bar->addWidget(new QLabel(QStringLiteral("显示："), this));
    bar->addWidget(showAll_);
    bar->addWidget(show100_);

    grid_ = new QTableView(this);
    grid_->setObjectName(kHistoryGrid);
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
    connect(model_, &QAbstractItemModel::modelReset, this, &HistoryPage::updateCount);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addLayout(bar);
    layout->addWidget(grid_, 1);
}

HistoryShowMode HistoryPage::mode() const {
    return show100_->isChecked() ? HistoryShowMode::Newest100 : HistoryShowMode::All;
}

void HistoryPage::showHistory() {
    try {
        const HistoryShowMode kept = read_HistoryShowMode();
        {
            const QSignalBlocker quiet(modes_);
            (kept == HistoryShowMode::All ? showAll_ : show100_)->setChecked(true);
        }
        show_LiShi(kept == HistoryShowMode::All);
        emit modeChanged(kept);
    } catch (const StoreError&) {
    }
}

void HistoryPage::setMode(HistoryShowMode mode) {
    {
        const QSignalBlocker quiet(modes_);
        (mode == HistoryShowMode::All ? showAll_ : show100_)->setChecked(true);
    }
    try {
        write_HistoryShowMode(mode);
        show_LiShi(mode == HistoryShowMode::All);
    } catch (const StoreError&) {
    }
    emit modeChanged(mode);
}

void HistoryPage::updateCount() {
    const int n = model_->rowCount();
    count_->setText(n > 0 ? QStringLiteral("共 %1 期").arg(n) : QStringLiteral("暂无记录"));
}

}  // namespace dovrex
