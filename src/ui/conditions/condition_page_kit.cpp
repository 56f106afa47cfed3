#include "ui/conditions/condition_page_kit.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QTableView>

#include "filters/condition_store.h"
#include "history/history_queries.h"
#include "screen/shared_state.h"
#include "store/store.h"
#include "widgets/cursor_model.h"

namespace dovrex {

QCheckBox* switchBox(const QString& caption, int switchNo, const QString& name, QWidget* parent) {
    auto* box = new QCheckBox(caption, parent);
    box->setObjectName(name);
    box->setProperty("Tag", switchNo);
    connectCommand(box, &QCheckBox::clicked, box,
                   [box](bool on) { set_ShiYongQingKuang(box->property("Tag").toInt(), on ? 1 : 0); });
    return box;
}

void loadSwitch(QCheckBox* box) {
    runCommand([&] { box->setChecked(get_ShiYongQingKuang(box->property("Tag").toInt()) == 1); });
}

QLabel* sectionTitle(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    return label;
}

QLabel* noteLabel(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setWordWrap(true);
    label->setStyleSheet(QStringLiteral("color: #555555;"));
    return label;
}

QTableView* makeCountGrid(QWidget* parent) {
    auto* grid = new QTableView(parent);
    grid->setObjectName(QStringLiteral("TDBGrid_jioubi"));
    grid->setModel(new CursorModel(grid));
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid->setSelectionMode(QAbstractItemView::SingleSelection);
    grid->setWordWrap(false);
    grid->verticalHeader()->hide();
    grid->verticalHeader()->setDefaultSectionSize(grid->fontMetrics().height() + 6);
    grid->horizontalHeader()->setHighlightSections(false);
    grid->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    grid->horizontalHeader()->setMinimumSectionSize(
        grid->fontMetrics().horizontalAdvance(QStringLiteral("高尾码")) + 8);
    return grid;
}

void fillCountGrid(QTableView* grid) {
    auto* model = qobject_cast<CursorModel*>(grid->model());
    if (!model) return;
    runCommand([&] {
        model->setCursor(open_CountColumns());
        model->setCaptions({QStringLiteral("期号"), QStringLiteral("奇数"), QStringLiteral("偶数"),
                            QStringLiteral("大数"), QStringLiteral("小数"), QStringLiteral("低尾码"),
                            QStringLiteral("高尾码"), QStringLiteral("区间1"), QStringLiteral("区间2"),
                            QStringLiteral("区间3"), QStringLiteral("区间4")});
        // The issue column keeps its seven digits whole.
        QHeaderView* header = grid->horizontalHeader();
        header->setSectionResizeMode(0, QHeaderView::Fixed);
        header->resizeSection(0, grid->fontMetrics().horizontalAdvance(QStringLiteral("20260960")) + 12);
    });
}

}  // namespace dovrex
