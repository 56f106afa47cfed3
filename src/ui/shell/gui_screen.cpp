#include "ui/shell/gui_screen.h"
#include "ui/users/first_run_dialog.h"
#include "ui/users/login_dialog.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGroupBox>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QScrollBar>
#include <QSpinBox>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableView>
#include <QTextEdit>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "screen/control_roles.h"
#include "screen/shared_state.h"
#include "store/store.h"
#include "ui/conditions/conditions_page.h"
#include "ui/shell/form_main.h"
#include "ui/tickets/from_file_dialog.h"
#include "ui/tickets/to_file_dialog.h"
#include "widgets/ball_art.h"
#include "widgets/ball_cell_delegate.h"
#include "widgets/command_trap.h"
#include "widgets/cursor_model.h"
#include "widgets/timed_tip.h"

namespace dovrex {

namespace {

const QString kBoxTitle = QStringLiteral("双色球 dovrex");

QColor colourOf(const QVariant& v) {
    if (v.canConvert<QColor>() && v.typeId() != QMetaType::Int && v.typeId() != QMetaType::LongLong)
        return v.value<QColor>();
    bool ok = false;
    const int rgb = v.toInt(&ok);
    return ok && rgb >= 0 ? QColor::fromRgb(QRgb(rgb)) : QColor();
}

bool setText(QWidget* w, const QString& text) {
    if (auto* label = qobject_cast<QLabel*>(w))
        label->setText(text);
    else if (auto* button = qobject_cast<QAbstractButton*>(w))
        button->setText(text);
    else if (auto* line = qobject_cast<QLineEdit*>(w))
        line->setText(text);
    else if (auto* plain = qobject_cast<QPlainTextEdit*>(w))
        plain->setPlainText(text);
    else if (auto* edit = qobject_cast<QTextEdit*>(w))
        edit->setPlainText(text);
    else if (auto* group = qobject_cast<QGroupBox*>(w))
        group->setTitle(text);
    else if (w->isWindow())
        w->setWindowTitle(text);
    else
        return false;
    return true;
}

bool setValue(QWidget* w, const QVariant& value) {
    // An option array: the box carrying the array's name checks its option "name(index)".
    if (auto* box = qobject_cast<QGroupBox*>(w)) {
        const QString option = box->objectName() + QStringLiteral("(%1)").arg(value.toInt());
        if (auto* button = box->findChild<QAbstractButton*>(option)) button->setChecked(true);
        return true;
    }
    if (auto* bar = qobject_cast<QProgressBar*>(w))
        bar->setValue(value.toInt());
    else if (auto* slider = qobject_cast<QAbstractSlider*>(w))
        slider->setValue(value.toInt());
    else if (auto* spin = qobject_cast<QSpinBox*>(w))
        spin->setValue(value.toInt());
    else if (auto* button = qobject_cast<QAbstractButton*>(w))
        button->setChecked(value.toBool());
    else
        return setText(w, value.toString());
    return true;
}

}  // namespace

GuiScreen::GuiScreen(QObject* parent) : QObject(parent) {}

GuiScreen::~GuiScreen() = default;

void GuiScreen::setWindow(QWidget* window) {
    window_ = window;
}

void GuiScreen::setStatusBar(QStatusBar* bar) {
    statusBar_ = bar;
    for (int i = 0; i < 3; ++i) {
        auto* label = new QLabel(bar);
        label->setObjectName(QStringLiteral("StatusBar_Panel%1").arg(i + 1));
        label->setTextFormat(Qt::PlainText);
        label->setContentsMargins(4, 0, 4, 0);
        panels_[i] = label;
    }
    // Panel 2 carries the download's messages and takes whatever width the other two leave.
    panels_[1]->setMinimumWidth(twipsToPixels(200));
    bar->addWidget(panels_[0], 0);
    bar->addWidget(panels_[1], 1);
    bar->addPermanentWidget(panels_[2], 0);
}

void GuiScreen::setProgressBar(QProgressBar* bar) {
    progress_ = bar;
}

void GuiScreen::registerRole(QWidget* widget) {
    if (widget && !widget->objectName().isEmpty()) roles_.insert(widget->objectName(), widget);
}

QWidget* GuiScreen::role(const QString& name) const {
    if (QWidget* w = roles_.value(name)) return w;
    if (!window_) return nullptr;
    if (window_->objectName() == name) return window_;
    if (QWidget* w = found_.value(name); w && w->objectName() == name && window_->isAncestorOf(w)) return w;
    QWidget* w = window_->findChild<QWidget*>(name);
    if (w) found_.insert(name, w);
    return w;
}

namespace {

void reportUnknownRole(const QString& name) {
#ifdef QT_DEBUG
    qFatal("The window has no control for the role %s", qUtf8Printable(name));
#else
    qWarning("The window has no control for the role %s", qUtf8Printable(name));
#endif
}

GuiScreen::UnknownRoleHandler unknownRoleHandler = reportUnknownRole;

}  // namespace

GuiScreen::UnknownRoleHandler GuiScreen::setUnknownRoleHandler(UnknownRoleHandler handler) {
    return std::exchange(unknownRoleHandler, handler ? handler : reportUnknownRole);
}

bool GuiScreen::reaches(const QString& name) const {
    return role(name) || (window_ && window_->findChild<QAction*>(name));
}

QWidget* GuiScreen::known(const QString& name) const {
    QWidget* w = role(name);
    // Before the window exists there is nothing to reach and nothing wrong.
    if (!w && window_ && !window_->findChild<QAction*>(name)) unknownRoleHandler(name);
    return w;
}

QString GuiScreen::statusText(int panel) const {
    if (panel < 1 || panel > 3 || !panels_[panel - 1]) return {};
    return panels_[panel - 1]->text();
}

QTableView* GuiScreen::grid(const QString& name) const {
    return qobject_cast<QTableView*>(known(name));
}

CursorModel* GuiScreen::gridModel(const QString& name) const {
    QTableView* view = grid(name);
    return view ? qobject_cast<CursorModel*>(view->model()) : nullptr;
}

void GuiScreen::releaseGrids() {
    if (!window_) return;
    const auto views = window_->findChildren<QTableView*>();
    for (QTableView* view : views)
        if (auto* model = qobject_cast<CursorModel*>(view->model())) model->setCursor(nullptr);
}

void GuiScreen::ui_Message(const QString& text, MessageKind kind, const QString& title) {
    const QMessageBox::Icon icon = kind == MessageKind::Error     ? QMessageBox::Critical
                                   : kind == MessageKind::Warning ? QMessageBox::Warning
                                                                  : QMessageBox::Information;
    QMessageBox box(icon, title.isEmpty() ? kBoxTitle : title, text, QMessageBox::Ok, window_);
    box.button(QMessageBox::Ok)->setText(QStringLiteral("确定"));
    box.exec();
}

bool GuiScreen::ui_Confirm(const QString& text, ConfirmButtons buttons, const QString& title) {
    const bool ok = buttons == ConfirmButtons::OkCancel;
    const QMessageBox::StandardButton go = ok ? QMessageBox::Ok : QMessageBox::Yes;
    const QMessageBox::StandardButton back = ok ? QMessageBox::Cancel : QMessageBox::No;
    // A titled question is a notice that asks (the old tickets of an issue): it wears the
    // information icon, as its title says.
    QMessageBox box(title.isEmpty() ? QMessageBox::Question : QMessageBox::Information,
                    title.isEmpty() ? kBoxTitle : title, text, go | back, window_);
    box.setDefaultButton(go);
    box.setEscapeButton(back);  // closing the box is no
    box.button(go)->setText(ok ? QStringLiteral("确定") : QStringLiteral("是(&Y)"));
    box.button(back)->setText(ok ? QStringLiteral("取消") : QStringLiteral("否(&N)"));
    return box.exec() == go;
}

QString GuiScreen::ui_AskText(const QString& prompt, const QString& title, const QString& defaultText) {
    QInputDialog dialog(window_);
    dialog.setWindowTitle(title);
    dialog.setLabelText(prompt);
    dialog.setTextValue(defaultText);
    dialog.setOkButtonText(QStringLiteral("确定"));
    dialog.setCancelButtonText(QStringLiteral("取消"));
    return dialog.exec() == QDialog::Accepted ? dialog.textValue() : QString();
}

QString GuiScreen::ui_AskChoice(const QString& prompt, const QString& title, const QStringList& items,
                                int current) {
    QInputDialog dialog(window_);
    dialog.setWindowTitle(title);
    dialog.setLabelText(prompt);
    dialog.setComboBoxItems(items);
    dialog.setComboBoxEditable(false);
    dialog.setTextValue(items.value(current));
    dialog.setOkButtonText(QStringLiteral("确定"));
    dialog.setCancelButtonText(QStringLiteral("取消"));
    return dialog.exec() == QDialog::Accepted ? dialog.textValue() : QString();
}

void GuiScreen::ui_Status(int panel, const QString& text) {
    if (panel < 1 || panel > 3 || !panels_[panel - 1]) return;
    panels_[panel - 1]->setText(text);
    panels_[panel - 1]->setToolTip(text.trimmed());
}

void GuiScreen::ui_Progress(int min, int max, int value, bool visible) {
    // The ticket page's bar while its Stop panel is up (a pass over the tickets), else the status
    // line's.
    QProgressBar* bar = nullptr;
    if (QWidget* frame = role(role::FrameStop); !frame || !frame->isHidden())
        bar = qobject_cast<QProgressBar*>(role(role::ProgressBar_TouZu_Busy));
    if (!bar) bar = progress_;
    if (!bar) return;
    bar->setRange(min, qMax(min, max));
    bar->setValue(qBound(min, value, qMax(min, max)));
    bar->setVisible(visible);
}

QString GuiScreen::ui_PickFile(const QString& filter, bool save, bool askOverwrite, const QString& proposed) {
    const QString start = !proposed.isEmpty() ? proposed : lastDir_.isEmpty() ? QDir::homePath() : lastDir_;
    const QFileDialog::Options options =
        askOverwrite ? QFileDialog::Options() : QFileDialog::DontConfirmOverwrite;
    const QString path =
        save ? QFileDialog::getSaveFileName(window_, QStringLiteral("保存文件"), start, filter, nullptr,
                                            options)
             : QFileDialog::getOpenFileName(window_, QStringLiteral("打开文件"), start, filter);
    if (!path.isEmpty()) lastDir_ = QFileInfo(path).absolutePath();
    return path;
}

void GuiScreen::ui_Grid(const QString& name, std::shared_ptr<Cursor> cursor) {
    QTableView* view = grid(name);
    if (!view) return;
    auto* model = qobject_cast<CursorModel*>(view->model());
    if (!model) {
        model = new CursorModel(view);
        view->setModel(model);
    }
    model->clearColumnColors();
    model->setCursor(std::move(cursor));
    // Drawn-number balls belong to the binding they were put on.
    for (int c = 0; c < model->columnCount(); ++c)
        if (auto* old = qobject_cast<BallCellDelegate*>(view->itemDelegateForColumn(c))) {
            view->setItemDelegateForColumn(c, nullptr);
            delete old;
        }
}

void GuiScreen::ui_Pump() {
    // The first yield of a command: the entries that start commands rest until it ends.
    command_entries::passRunning();
    // A close waits for the running pass, which stops at its next test of the flag.
    if (closePending()) shared().tingZhi = 1;
    if (pumpClock_.isValid() && pumpClock_.elapsed() < kPumpIntervalMs) return;
    ++pumping_;
    QCoreApplication::processEvents();
    --pumping_;
    pumpClock_.start();
}

namespace {

// Shows the newest part of a log that went from `before` to `after`: text put in front (the prize
// check's report) is shown from its start; text added behind, from the start of what was added,
// down to the end when it fits.
template <typename Edit>
void showNewest(Edit* edit, const QString& wholeText) {
    // Positions are the document's, where a line end is one character.
    const QString before = edit->toPlainText();
    edit->setPlainText(wholeText);
    const QString after = edit->toPlainText();
    int from = 0;
    int to = int(after.size());
    if (!before.isEmpty() && after.size() > before.size() && after.endsWith(before)) {
        to = int(after.size() - before.size());
    } else {
        while (from < before.size() && from < after.size() && before[from] == after[from]) ++from;
        // A line rewritten in place starts the newest part at its own start.
        if (from > 0) from = int(after.lastIndexOf(u'\n', from - 1) + 1);
    }
    QTextCursor cursor = edit->textCursor();
    cursor.setPosition(to);
    edit->setTextCursor(cursor);
    edit->ensureCursorVisible();
    cursor.setPosition(from);
    edit->setTextCursor(cursor);
    edit->ensureCursorVisible();
}

}  // namespace

void GuiScreen::ui_Log(const QString& wholeText) {
    QWidget* w = role(role::TextChaoZuoTip);
    if (auto* plain = qobject_cast<QPlainTextEdit*>(w))
        showNewest(plain, wholeText);
    else if (auto* edit = qobject_cast<QTextEdit*>(w))
        showNewest(edit, wholeText);
}

bool GuiScreen::setGridProperty(QTableView* view, const QString& property, const QVariant& value) {
    auto* model = qobject_cast<CursorModel*>(view->model());
    if (property == QLatin1String("row")) {
        if (!model || model->rowCount() == 0) return true;
        int row = value.toInt();
        if (row < 0 || row >= model->rowCount()) row = model->rowCount() - 1;
        const QModelIndex index = model->index(row, 0);
        view->setCurrentIndex(index);
        view->scrollTo(index, QAbstractItemView::PositionAtBottom);
        return true;
    }
    if (property == QLatin1String("columnColors")) {
        if (!model) return true;
        model->clearColumnColors();
        const QVariantMap map = value.toMap();
        for (auto it = map.cbegin(); it != map.cend(); ++it) {
            const QVariantList pair = it.value().toList();
            model->setColumnColors(it.key(), colourOf(pair.value(0)), colourOf(pair.value(1)));
        }
        return true;
    }
    return false;
}

// Menu entries are actions, not widgets: enabled, visible, text and checked reach them by name.
static bool setActionProperty(QWidget* window, const QString& name, const QString& property,
                              const QVariant& value) {
    QAction* action = window ? window->findChild<QAction*>(name) : nullptr;
    if (!action) return false;
    const QString p = property.toLower();
    if (p == QLatin1String("enabled"))
        action->setEnabled(value.toBool());
    else if (p == QLatin1String("visible"))
        action->setVisible(value.toBool());
    else if (p == QLatin1String("text") || p == QLatin1String("caption"))
        action->setText(value.toString());
    else if (p == QLatin1String("checked"))
        action->setChecked(value.toBool());
    else
        action->setProperty(property.toUtf8().constData(), value);
    return true;
}

void GuiScreen::ui_Set(const QString& roleName, const QString& property, const QVariant& value) {
    QWidget* w = known(roleName);
    if (!w) {
        setActionProperty(window_, roleName, property, value);
        return;
    }
    if (auto* view = qobject_cast<QTableView*>(w); view && setGridProperty(view, property, value)) return;
    const QString p = property.toLower();
    if (p == QLatin1String("text") || p == QLatin1String("caption")) {
        if (setText(w, value.toString())) return;
    } else if (p == QLatin1String("enabled")) {
        w->setEnabled(value.toBool());
        return;
    } else if (p == QLatin1String("visible")) {
        w->setVisible(value.toBool());
        return;
    } else if (p == QLatin1String("checked")) {
        if (auto* button = qobject_cast<QAbstractButton*>(w)) {
            button->setChecked(value.toBool());
            return;
        }
    } else if (p == QLatin1String("value")) {
        if (setValue(w, value)) return;
    } else if (p == QLatin1String("max") || p == QLatin1String("min")) {
        if (auto* bar = qobject_cast<QProgressBar*>(w)) {
            p == QLatin1String("max") ? bar->setMaximum(value.toInt()) : bar->setMinimum(value.toInt());
            return;
        }
    } else if (p == QLatin1String("tooltip")) {
        w->setToolTip(value.toString());
        return;
    } else if (p == QLatin1String("focus")) {
        if (value.toBool()) w->setFocus();
        return;
    }
    w->setProperty(property.toUtf8().constData(), value);
}

int GuiScreen::ui_ChooseUserMode() {
    FirstRunDialog dialog(window_);
    dialog.exec();
    return dialog.chosenMode();
}

bool GuiScreen::ui_Login() {
    LoginDialog dialog(window_);
    dialog.exec();
    return dialog.loggedIn();
}

void GuiScreen::ui_Clipboard(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
}

void GuiScreen::ui_OpenFile(const QString& path) {
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

void GuiScreen::ui_OpenUrl(const QString& url) {
    QDesktopServices::openUrl(QUrl(url));
}

void GuiScreen::ui_TimedTip(const QString& text, int seconds) {
    auto* tip = new TimedTip(text, seconds, window_);
    tip->show();
}

void GuiScreen::ui_RefreshPicks() {
    emit picksChanged();
}

void GuiScreen::ui_DressGrid(const QString& name, const QStringList& captions, const QList<int>& widths) {
    QTableView* view = grid(name);
    if (!view) return;
    if (auto* model = qobject_cast<CursorModel*>(view->model())) model->setCaptions(captions);
    QHeaderView* header = view->horizontalHeader();
    const QFontMetrics metrics(header->font());
    const int columns = view->model() ? view->model()->columnCount() : 0;
    for (int c = 0; c < columns; ++c) {
        const int twips = widths.value(c, -1);
        view->setColumnHidden(c, twips == 0);
        if (twips > 0) {
            view->setColumnWidth(c, twipsToPixels(twips));
        } else if (twips < 0) {
            // Wide enough for the caption and for what the first row holds.
            const QString caption = view->model()->headerData(c, Qt::Horizontal).toString();
            const QString first =
                view->model()->rowCount() > 0 ? view->model()->index(0, c).data().toString() : QString();
            view->setColumnWidth(c, std::max({metrics.horizontalAdvance(caption) + 18,
                                              view->fontMetrics().horizontalAdvance(first) + 18, 44}));
        }
    }
}

void GuiScreen::ui_ShowPage(const QString& topPage, int conditionTab) {
    auto* main = qobject_cast<FormMain*>(window_.data());
    if (!main) return;
    QTabWidget* tabs = main->tabStrip();
    for (int i = 0; i < tabs->count(); ++i)
        if (tabs->tabText(i) == topPage) tabs->setCurrentIndex(i);
    ConditionsPage* conditions = main->conditionsPage();
    if (!conditions || tabs->currentWidget() != conditions) return;
    if (conditionTab > 0 && conditionTab != conditions->currentTab())
        conditions->selectTab(conditionTab);
    else
        conditions->reloadTab();
}

bool GuiScreen::ui_ToFile(TicketExportOptions& options) {
    ToFileDialog dialog(options, window_);
    if (dialog.exec() != QDialog::Accepted) return false;
    options = dialog.options();
    return true;
}

bool GuiScreen::ui_FromFile(TicketImportOptions& options) {
    FromFileDialog dialog(options, window_);
    if (dialog.exec() != QDialog::Accepted) return false;
    options = dialog.options();
    return true;
}

void GuiScreen::ui_MarkDrawn(const QString& name, const QList<int>& reds, int blue) {
    QTableView* view = grid(name);
    auto* model = view ? qobject_cast<CursorModel*>(view->model()) : nullptr;
    if (!model || !model->cursor()) return;
    const auto& cursor = model->cursor();
    const QSet<int> redSet(reds.begin(), reds.end());
    bool any = false;
    for (int c = 0; c < model->columnCount(); ++c) {
        const QString field = cursor->fieldName(c);
        // 红球1..红球6 and 蓝球 only: 红球中 and 蓝球中 hold hit counts, never balls.
        const bool isRed = field.size() == 3 && field.startsWith(QStringLiteral("红球")) &&
                           field[2] >= u'1' && field[2] <= u'6';
        const bool isBlue = field == QStringLiteral("蓝球");
        if (!isRed && !isBlue) continue;
        if (auto* old = qobject_cast<BallCellDelegate*>(view->itemDelegateForColumn(c))) {
            view->setItemDelegateForColumn(c, nullptr);
            delete old;
        }
        if (reds.isEmpty()) continue;
        view->setItemDelegateForColumn(c, isRed ? new BallCellDelegate(redSet, kRedBall, view)
                                                : new BallCellDelegate({blue}, kBlueBall, view));
        any = true;
    }
    if (any && view->verticalHeader()->defaultSectionSize() < BallCellDelegate::kBallRowHeight)
        view->verticalHeader()->setDefaultSectionSize(BallCellDelegate::kBallRowHeight);
    view->viewport()->update();
}

}  // namespace dovrex
