#pragma once

#include <QMainWindow>

class QAction;
class QMenu;
class QProgressBar;
class QTabWidget;

namespace dovrex {

class AppFlow;
class ConditionsPage;
class OtherPage;
class GuiScreen;
class HistoryPage;

// The five top pages, in the order of their tabs.
enum class TopPage { Conditions = 0, Other = 1, History = 2, Tickets = 3, Web = 4 };

// Form_main: the program's one main window. Each top page is a widget of its own that can be
// swapped in with setPage; the window keeps the menus, the status line and the exit.
class FormMain : public QMainWindow {
    Q_OBJECT
  public:
    FormMain(AppFlow& flow, GuiScreen& screen, QWidget* parent = nullptr);

    QTabWidget* tabStrip() const { return tabs_; }
    QWidget* page(TopPage which) const;
    // Puts a page in place of the one there (which is deleted).
    void setPage(TopPage which, QWidget* page);
    void selectPage(TopPage which);
    HistoryPage* historyPage() const;
    ConditionsPage* conditionsPage() const;
    OtherPage* otherPage() const;
    // The menu of that title (e.g. "工具(&T)"), made before 帮助 when it does not exist yet.
    QMenu* menu(const QString& title);
    AppFlow& flow() const { return flow_; }
    GuiScreen& guiScreen() const { return screen_; }

    // Sized for the screen it is on, centred.
    void fitToScreen();
    // True once the exit sequence has run.
    bool hasExited() const { return exited_; }

  signals:
    // The exit sequence has run; the program may end.
    void exited(bool saved);

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void buildPages();
    void buildMenus();
    void installParts();
    void showAbout();

    AppFlow& flow_;
    GuiScreen& screen_;
    QTabWidget* tabs_;
    QProgressBar* progress_;
    QAction* showAllAction_ = nullptr;
    QAction* show100Action_ = nullptr;
    bool exited_ = false;
    // The player has confirmed the exit; it waited for a running command.
    bool exitApproved_ = false;
};

inline const QString kProgramTitle = QStringLiteral("双色球 dovrex");

}  // namespace dovrex
