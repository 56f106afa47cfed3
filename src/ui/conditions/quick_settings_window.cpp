#include "ui/conditions/quick_settings_window.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "app/app_activate.h"
#include "filters/condition_pages.h"
#include "filters/condition_store.h"
#include "screen/shared_state.h"
#include "ui/conditions/condition_page_kit.h"
#include "ui/conditions/conditions_page.h"
#include "ui/shell/form_main.h"
#include "ui/shell/window_parts.h"
#include "widgets/command_trap.h"

namespace dovrex {

namespace {

QPointer<QuickSettingsWindow> theWindow;

// cmmQitatj(0..11): the conditions that have no range text, each on its own page of the main window.
const char16_t* const kOtherPages[12] = {u"连号",       u"头数形式",   u"尾数形式", u"间距七",
                                         u"间距九",     u"间距十一",   u"间距十二", u"历史数据过滤",
                                         u"自定义分组", u"奖金对照表", u"缩水设置", u"号码定位"};

QLabel* pagingLabel(const QString& text, QWidget* parent) {
    auto* label = new QLabel(QStringLiteral("<a href=\"page\">%1</a>").arg(text.toHtmlEscaped()), parent);
    label->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    return label;
}

}  // namespace

QuickSettingsWindow::QuickSettingsWindow(FormMain* window) : QDialog(window), window_(window) {
    setObjectName(QStringLiteral("Frm_kuaisusizi"));
    setWindowTitle(QStringLiteral("快速设置过滤条件"));
    setAttribute(Qt::WA_DeleteOnClose, false);

    auto* rowsBox = new QGroupBox(QStringLiteral("取值范围（如：[1-5][7] 表示 1 至 5 以及 7）"), this);
    auto* grid = new QGridLayout(rowsBox);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(4);
    runCommand([&] {
        for (const KuaiSuRow& stored : list_KuaiSuRows()) {
            Row row;
            row.no = stored.no;
            row.menuId = stored.menuId;
            const QString name = stored.name;
            row.use = new QCheckBox(name, rowsBox);
            row.use->setObjectName(QStringLiteral("Check_sfsy(%1)").arg(row.no));
            row.use->setProperty("Tag", stored.conditionNo);
            row.text = new QLineEdit(rowsBox);
            row.text->setObjectName(QStringLiteral("Text_quzifanwei(%1)").arg(row.no));
            row.text->setMinimumWidth(fontMetrics().horizontalAdvance(QLatin1Char('0')) * 40);
            row.text->setToolTip(
                QStringLiteral("“%1”允许的取值，如 [1-5][7]，直接在文本框里修改然后提交就可以了。")
                    .arg(name));
            const int menuId = row.menuId;
            QCheckBox* box = row.use;
            connectCommand(box, &QCheckBox::clicked, this, [this, box, menuId](bool on) {
                runCommand([&] { set_ShiYongQingKuang(box->property("Tag").toInt(), on ? 1 : 0); });
                refreshMainTab(menuId);
            });
            const int r = rows_.size() % kRowsPerPage;
            grid->addWidget(row.use, r, 0);
            grid->addWidget(row.text, r, 1);
            rows_ << row;
        }
    });
    grid->setColumnStretch(1, 1);

    previous_ = pagingLabel(QStringLiteral("<上一页"), this);
    previous_->setObjectName(QStringLiteral("Label_ShangYiYe"));
    next_ = pagingLabel(QStringLiteral("下一页>"), this);
    next_->setObjectName(QStringLiteral("Label_XiaYiYe"));
    connectCommand(previous_, &QLabel::linkActivated, this, [this] { showPage(page_ - 1); });
    connectCommand(next_, &QLabel::linkActivated, this, [this] { showPage(page_ + 1); });
    auto* paging = new QHBoxLayout;
    paging->addWidget(previous_);
    paging->addStretch(1);
    paging->addWidget(next_);

    auto* submit = new QPushButton(QStringLiteral("提交"), this);
    submit->setObjectName(QStringLiteral("cmm_submit"));
    submit->setDefault(true);
    connectCommand(submit, &QPushButton::clicked, this, [this] { this->submit(); });
    auto* defaults = new QPushButton(QStringLiteral("还原为默认值"), this);
    defaults->setObjectName(QStringLiteral("cmm_huanyuan"));
    connectCommand(defaults, &QPushButton::clicked, this, [this] { handOver(kPendingDefaults); });
    auto* exportButton = new QPushButton(QStringLiteral("导出过滤条件..."), this);
    exportButton->setObjectName(QStringLiteral("cmm_daocu"));
    connectCommand(exportButton, &QPushButton::clicked, this, [this] { handOver(kPendingExport); });
    auto* importButton = new QPushButton(QStringLiteral("导入过滤条件..."), this);
    importButton->setObjectName(QStringLiteral("cmm_daoru"));
    connectCommand(importButton, &QPushButton::clicked, this, [this] { handOver(kPendingImport); });
    auto* closeButton = new QPushButton(QStringLiteral("关闭"), this);
    connect(closeButton, &QPushButton::clicked, this, &QWidget::close);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(submit);
    buttons->addWidget(defaults);
    buttons->addStretch(1);
    buttons->addWidget(exportButton);
    buttons->addWidget(importButton);
    buttons->addWidget(closeButton);

    auto* others = new QGroupBox(QStringLiteral("其它过滤条件请到相应的页面设置"), this);
    auto* othersGrid = new QGridLayout(others);
    for (int i = 0; i < 12; ++i) {
        auto* b = new QPushButton(QString::fromUtf16(kOtherPages[i]), others);
        b->setObjectName(QStringLiteral("cmmQitatj(%1)").arg(i));
        connectCommand(b, &QPushButton::clicked, this, [this, i] { handOver(4 + i); });
        othersGrid->addWidget(b, i / 6, i % 6);
    }

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(rowsBox);
    layout->addLayout(paging);
    layout->addLayout(buttons);
    layout->addWidget(others);
    showPage(0);
}

QuickSettingsWindow* QuickSettingsWindow::open(FormMain& window) {
    if (!theWindow) theWindow = new QuickSettingsWindow(&window);
    theWindow->load();
    theWindow->show();
    theWindow->raise();
    theWindow->activateWindow();
    return theWindow;
}

QCheckBox* QuickSettingsWindow::useBox(int no) const {
    for (const Row& row : rows_)
        if (row.no == no) return row.use;
    return nullptr;
}

QLineEdit* QuickSettingsWindow::rangeText(int no) const {
    for (const Row& row : rows_)
        if (row.no == no) return row.text;
    return nullptr;
}

void QuickSettingsWindow::showPage(int page) {
    const int pages = qMax(1, (int(rows_.size()) + kRowsPerPage - 1) / kRowsPerPage);
    page_ = qBound(0, page, pages - 1);
    for (int i = 0; i < rows_.size(); ++i) {
        const bool shown = i / kRowsPerPage == page_;
        rows_[i].use->setVisible(shown);
        rows_[i].text->setVisible(shown);
    }
    previous_->setVisible(page_ > 0);
    next_->setVisible(page_ < pages - 1);
}

void QuickSettingsWindow::load() {
    runCommand([&] {
        for (Row& row : rows_) {
            row.use->setChecked(get_ShiYongQingKuang(row.use->property("Tag").toInt()) == 1);
            row.text->setText(text_KuaiSuFanWei(row.no));
        }
    });
}

bool QuickSettingsWindow::submit() {
    QHash<int, QString> texts;
    for (const Row& row : rows_) texts.insert(row.no, row.text->text());
    bool done = false;
    runCommand([&] { done = apply_KuaiSu(texts); });
    if (done) {
        load();
        if (window_)
            if (ConditionsPage* pages = window_->conditionsPage()) pages->reloadTab();
    }
    return done;
}

void QuickSettingsWindow::handOver(int pendingCommand) {
    shared().g_PendingCommand = pendingCommand;
    close();
}

void QuickSettingsWindow::closeEvent(QCloseEvent* event) {
    QDialog::closeEvent(event);
    if (!window_ || shared().g_PendingCommand == kPendingNone) return;
    window_->activateWindow();
    // Where no activation comes (no window manager), the command still runs once.
    QTimer::singleShot(0, window_, [] { runCommand(app_Activate); });
}

void QuickSettingsWindow::refreshMainTab(int menuId) {
    if (window_)
        if (ConditionsPage* pages = window_->conditionsPage()) pages->reloadTab(menuId);
}

namespace {

// app_Activate each time the main window comes to the front, once the activation is over.
class ActivationWatcher : public QObject {
  public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::WindowActivate)
            QTimer::singleShot(0, watched, [] { runCommand(app_Activate); });
        return false;
    }
};

}  // namespace

void installQuickSettings(FormMain& window) {
    window.installEventFilter(new ActivationWatcher(&window));
    QMenu* tools = window.menu(QStringLiteral("工具(&T)"));
    QAction* entry = tools->addAction(QStringLiteral("快速设置过滤条件..."));
    entry->setObjectName(QStringLiteral("mnu_KuaiSuSheZhi"));
    connectCommand(entry, &QAction::triggered, &window, [&window] { QuickSettingsWindow::open(window); });
}

}  // namespace dovrex
