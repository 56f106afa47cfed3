#pragma once

#include <QDialog>
#include <QList>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace dovrex {

class FormMain;

// Frm_kuaisusizi: the ranges of many conditions as texts such as [1-5][7], one row per row of
// 快速设置, written all at once by 提交. The commands that belong to the main window (export,
// import, defaults, the other condition pages) are left there as a pending command and the window
// closes; the main window runs it when it comes back to the front.
class QuickSettingsWindow : public QDialog {
    Q_OBJECT
  public:
    explicit QuickSettingsWindow(FormMain* window);

    // Shows the one window of the program, made on first use.
    static QuickSettingsWindow* open(FormMain& window);

    // Rows shown on one page; the paging labels show the rest.
    static constexpr int kRowsPerPage = 12;

    int rowCount() const { return rows_.size(); }
    QCheckBox* useBox(int no) const;
    QLineEdit* rangeText(int no) const;
    int page() const { return page_; }
    void showPage(int page);

    // cmm_submit_Click. True when every text was accepted and written.
    bool submit();
    // Leaves a command for the main window and closes.
    void handOver(int pendingCommand);

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    struct Row {
        int no = 0;
        int menuId = 0;
        QCheckBox* use = nullptr;
        QLineEdit* text = nullptr;
    };
    void load();
    void refreshMainTab(int menuId);

    FormMain* window_;
    QList<Row> rows_;
    int page_ = 0;
    QLabel* next_;
    QLabel* previous_;
};

}  // namespace dovrex
