#include "ui/history/analysis_groups_dialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "analysis/history_tables.h"
#include "store/store.h"
#include "widgets/command_trap.h"

namespace dovrex {

AnalysisGroupsDialog::AnalysisGroupsDialog(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmOptions"));
    setWindowTitle(QStringLiteral("分析表号码分组"));
    table_ = new QTableWidget(kRedCount, 20, this);
    table_->setObjectName(QStringLiteral("GridFenXiZu"));
    QStringList groups, numbers;
    for (int g = 1; g <= 20; ++g) groups << QStringLiteral("组%1").arg(g);
    for (int n = 1; n <= kRedCount; ++n) numbers << twoDigits(n);
    table_->setHorizontalHeaderLabels(groups);
    table_->setVerticalHeaderLabels(numbers);
    table_->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table_->horizontalHeader()->setDefaultSectionSize(40);
    table_->verticalHeader()->setDefaultSectionSize(20);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setSelectionMode(QAbstractItemView::NoSelection);

    loading_ = true;
    FenXiZu member{};
    runCommand([&] { member = readAnalysisGroups(); });
    for (int n = 1; n <= kRedCount; ++n)
        for (int g = 1; g <= 20; ++g) {
            auto* item = new QTableWidgetItem;
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
            item->setCheckState(member[size_t(n)][size_t(g)] ? Qt::Checked : Qt::Unchecked);
            table_->setItem(n - 1, g - 1, item);
        }
    loading_ = false;
    connectCommand(table_, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* item) {
        if (loading_) return;
        runCommand([&] {
            writeAnalysisGroups(item->row() + 1, item->column() + 1, item->checkState() == Qt::Checked);
        });
    });

    auto* note =
        new QLabel(QStringLiteral("勾选每个号码所属的组；分析表按这些组把每期的红球分类显示。"), this);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->button(QDialogButtonBox::Close)->setText(QStringLiteral("关闭"));
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(note);
    layout->addWidget(table_, 1);
    layout->addWidget(buttons);
    resize(40 * 20 + 70, 600);
}

}  // namespace dovrex
