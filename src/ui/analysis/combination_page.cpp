#include "ui/analysis/combination_page.h"
#include "ui/analysis/combination_omission_window.h"

#include <QAction>
#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QVBoxLayout>

#include "analysis/combination_omission.h"
#include "store/store.h"
#include "ui/analysis/other_page.h"
#include "ui/shell/form_main.h"
#include "ui/shell/window_parts.h"
#include "widgets/command_trap.h"
#include "widgets/cursor_model.h"
#include "widgets/jindu_panel.h"

namespace dovrex {

namespace {

// Averages with two decimals; the other figures are whole numbers.
class FigureDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QString displayText(const QVariant& value, const QLocale& locale) const override {
        const QString text = value.toString();
        bool ok = false;
        const double v = text.toDouble(&ok);
        if (ok && text.contains(u'.')) return QString::number(v, 'f', 2);
        return QStyledItemDelegate::displayText(value, locale);
    }
};

const QHash<QString, QString>& captions() {
    static const QHash<QString, QString> names{{QStringLiteral("Haoma"), QStringLiteral("号码组合")},
                                               {QStringLiteral("YilouQS"), QStringLiteral("当前遗漏")},
                                               {QStringLiteral("YilouAvg"), QStringLiteral("平均间隔")},
                                               {QStringLiteral("YilouPre"), QStringLiteral("上次遗漏")},
                                               {QStringLiteral("YilouLongest"), QStringLiteral("最大遗漏")},
                                               {QStringLiteral("YilouTotal"), QStringLiteral("开出次数")}};
    return names;
}

}  // namespace

CombinationOmissionWindow::CombinationOmissionWindow(QWidget* parent) : QWidget(parent, Qt::Window) {
    setObjectName(QStringLiteral("FormZhuheYLTJ"));
    setAttribute(Qt::WA_DeleteOnClose);
    grid_ = new QTableView(this);
    grid_->setObjectName(QStringLiteral("TDBGridZhuheYL"));
    auto* model = new CursorModel(grid_);
    grid_->setModel(model);
    grid_->setItemDelegate(new FigureDelegate(grid_));
    grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid_->verticalHeader()->setDefaultSectionSize(grid_->fontMetrics().height() + 6);
    grid_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(grid_);
    runCommand([&] {
        setWindowTitle(zhuHeYLTJ_Title());
        model->setCursor(openCombinationOmissionTable());
        QStringList names;
        for (int c = 0; c < model->columnCount(); ++c) {
            const QString field = model->headerData(c, Qt::Horizontal, Qt::UserRole).toString();
            names << captions().value(field, field);
        }
        model->setCaptions(names);
    });
    resize(620, 560);
}

void CombinationOmissionWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && !isActiveWindow() && isVisible()) close();
}

CombinationPage::CombinationPage(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("Frm_ZuHeYiLou"));
    size_ = new QComboBox(this);
    size_->setObjectName(QStringLiteral("ComboChosenumber"));
    size_->addItems({QStringLiteral("2码组合遗漏统计"), QStringLiteral("3码组合遗漏统计")});
    start_ = new QPushButton(QStringLiteral("开始统计"), this);
    start_->setObjectName(QStringLiteral("cmmZuHeYiLou"));
    auto* note =
        new QLabel(QStringLiteral("统计每一组红球号码（两个一组或三个一组）在历史开奖中一同开出的次数、"
                                  "当前遗漏、上次遗漏和最大遗漏；结果按当前遗漏从大到小排列。"),
                   this);
    note->setWordWrap(true);
    note->setStyleSheet(QStringLiteral("color: #555555;"));

    auto* bar = new QHBoxLayout;
    bar->addWidget(new QLabel(QStringLiteral("统计内容："), this));
    bar->addWidget(size_);
    bar->addWidget(start_);
    bar->addStretch(1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->addLayout(bar);
    layout->addWidget(note);
    layout->addStretch(1);

    panel_ = new JinDuPanel(state_, this);
    panel_->hide();
    connectCommand(start_, &QPushButton::clicked, this, [this] { run(size_->currentIndex() == 1 ? 3 : 2); });
}

void CombinationPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    panel_->move((width() - panel_->width()) / 2, (height() - panel_->height()) / 2);
}

int CombinationPage::run(int size) {
    int written = -1;
    runCommand([&] { written = runCombinationOmission(size, state_); });
    if (written >= 0) {
        if (window_) window_->close();
        window_ = new CombinationOmissionWindow(this);
        const QRect main = this->window()->geometry();
        window_->move(main.center() - QPoint(window_->width() / 2, window_->height() / 2));
        window_->show();
        window_->activateWindow();
    }
    return written;
}

void installCombinationPage(FormMain& window) {
    OtherPage* other = window.otherPage();
    if (!other) return;
    auto* page = new CombinationPage(other);
    other->addTool(page, QStringLiteral("组合遗漏"));
    QMenu* analysis = window.menu(QStringLiteral("分析(&A)"));
    for (int size : {2, 3}) {
        QAction* a = analysis->addAction(QStringLiteral("%1码组合遗漏统计...").arg(size));
        a->setObjectName(QStringLiteral("mnu_ZuHeYiLou%1").arg(size));
        connectCommand(a, &QAction::triggered, &window, [&window, other, page, size] {
            window.selectPage(TopPage::Other);
            other->setCurrentWidget(page);
            page->sizeCombo()->setCurrentIndex(size - 2);
            page->run(size);
        });
    }
}

}  // namespace dovrex
