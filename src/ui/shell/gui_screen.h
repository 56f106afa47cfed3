#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include "screen/screen.h"

class QLabel;
class QProgressBar;
class QStatusBar;
class QTableView;

namespace dovrex {

class CursorModel;

// The Screen of the desktop program: boxes, dialogs, the status line and the progress bar, and
// the controls of the window found by their role names (the objectName of each widget). Widgets
// outside the main window (secondary windows) are registered by hand.
class GuiScreen : public QObject, public Screen {
    Q_OBJECT
  public:
    // frmFirstrun: 1 single-user, 2 multi-user, 0 when the player leaves the program instead.
    virtual int ui_ChooseUserMode();
    // frmODBCLogon, modal: true once someone logged in, false after 退出系统.
    virtual bool ui_Login();

    explicit GuiScreen(QObject* parent = nullptr);
    ~GuiScreen() override;

    // The window that owns the boxes and whose children are looked up by role.
    void setWindow(QWidget* window);
    QWidget* window() const { return window_; }
    // Puts the three panels into the status bar: panel 2 takes the width left over.
    void setStatusBar(QStatusBar* bar);
    // The bar ui_Progress drives when no ProgressBar_TouZu_Busy role is on the window.
    void setProgressBar(QProgressBar* bar);
    // A widget reachable by its objectName, wherever it lives.
    void registerRole(QWidget* widget);
    QWidget* role(const QString& name) const;
    // True when a control or a menu entry of the window carries the role's name.
    bool reaches(const QString& name) const;
    // Called with a role the logic named and the window does not have. A release build logs it;
    // a debug build stops there, and the GUI tests turn it into a failure.
    using UnknownRoleHandler = void (*)(const QString& role);
    // Returns the handler it replaces; null puts back the default.
    static UnknownRoleHandler setUnknownRoleHandler(UnknownRoleHandler handler);

    QString statusText(int panel) const;
    // The model behind a grid, or null while it is unbound.
    CursorModel* gridModel(const QString& name) const;
    // Unbinds every grid (before the store closes).
    void releaseGrids();

    void ui_Message(const QString& text, MessageKind kind = MessageKind::Information,
                    const QString& title = {}) override;
    bool ui_Confirm(const QString& text, ConfirmButtons buttons = ConfirmButtons::YesNo,
                    const QString& title = {}) override;
    QString ui_AskText(const QString& prompt, const QString& title, const QString& defaultText) override;
    QString ui_AskChoice(const QString& prompt, const QString& title, const QStringList& items,
                         int current) override;
    void ui_Status(int panel, const QString& text) override;
    void ui_Progress(int min, int max, int value, bool visible) override;
    QString ui_PickFile(const QString& filter, bool save, bool askOverwrite = true,
                        const QString& start = {}) override;
    void ui_Grid(const QString& name, std::shared_ptr<Cursor> cursor) override;
    void ui_Pump() override;

    void ui_Log(const QString& wholeText) override;
    void ui_Set(const QString& role, const QString& property, const QVariant& value) override;
    void ui_Clipboard(const QString& text) override;
    void ui_OpenFile(const QString& path) override;
    void ui_OpenUrl(const QString& url) override;
    void ui_TimedTip(const QString& text, int seconds) override;
    void ui_DressGrid(const QString& name, const QStringList& captions, const QList<int>& widths) override;
    void ui_RefreshPicks() override;
    void ui_ShowPage(const QString& topPage, int conditionTab) override;
    bool ui_ToFile(TicketExportOptions& options) override;
    bool ui_FromFile(TicketImportOptions& options) override;
    void ui_MarkDrawn(const QString& grid, const QList<int>& reds, int blue) override;

    // The least time between two event runs of ui_Pump.
    static constexpr int kPumpIntervalMs = 30;
    // True while a long pass lets events run: whatever runs now runs inside that pass.
    bool pumping() const { return pumping_ > 0; }

  signals:
    // The picks changed in the store (or their marks): the pick page repaints.
    void picksChanged();

  private:
    QTableView* grid(const QString& name) const;
    // The role's control, or null after reporting it as unknown.
    QWidget* known(const QString& name) const;
    bool setGridProperty(QTableView* view, const QString& property, const QVariant& value);

    QPointer<QWidget> window_;
    QPointer<QStatusBar> statusBar_;
    QPointer<QLabel> panels_[3];
    QPointer<QProgressBar> progress_;
    QHash<QString, QPointer<QWidget>> roles_;
    // Widgets found by name in the window, so that a pass setting a label per row does not search
    // the whole window each time.
    mutable QHash<QString, QPointer<QWidget>> found_;
    QElapsedTimer pumpClock_;
    int pumping_ = 0;
    QString lastDir_;
};

// Twips of the old screens to pixels of this one (15 twips to a pixel at 96 dpi).
inline int twipsToPixels(int twips) {
    return (twips + 7) / 15;
}

}  // namespace dovrex
