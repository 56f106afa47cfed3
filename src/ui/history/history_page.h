#pragma once

#include <QWidget>
#include <array>

#include "history/history_display.h"

class QButtonGroup;
class QDateEdit;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QStackedWidget;
class QTableView;

namespace dovrex {

class CursorModel;
class FenBuGrid;
class SearchRow;

// What the 历史数据 page shows under its bars (Option_TorD): the draws, the number distribution,
// the custom groups table or the analysis groups table.
enum class HistoryView { Draws = 0, Distribution = 1, Custom = 2, Analysis = 3 };

// The 历史数据 page: the draw entry row, the commands on the history (add, download, delete,
// search, lookup), the display mode and the four views of the history.
class HistoryPage : public QWidget {
    Q_OBJECT
  public:
    explicit HistoryPage(QWidget* parent = nullptr);

    QTableView* grid() const { return grid_; }
    CursorModel* model() const { return model_; }
    // The row of the entry boxes.
    QHBoxLayout* entryRow() const { return entryRow_; }
    QLineEdit* entryBox(int index) const { return boxes_[size_t(index)]; }
    QDateEdit* datePicker() const { return date_; }
    SearchRow* searchRow() const { return search_; }
    FenBuGrid* fenBuGrid() const { return fenBu_; }

    // Puts the mode kept in the store on the options and fills the view.
    void showHistory();
    // Option_historyShow_Click: keeps the choice in the store and redraws.
    void setMode(HistoryShowMode mode);
    HistoryShowMode mode() const;
    // Option_TorD: fills and shows one of the views.
    void setView(HistoryView view);
    HistoryView view() const { return view_; }
    // Refills whichever view is shown.
    void refreshView();

    // The entry boxes at the next issue and the next draw day after the latest draw.
    void resetEntry();

    // The commands of the page's buttons.
    void addDraw();         // 添加记录
    void downloadDraws();   // 下载更新
    void updateFromFile();  // 从文件更新
    void deleteDraw();      // 删除记录
    void beginSearch();     // 搜索: shows the search row
    void runSearch();       // 开始搜索
    void clearSearch();     // 清除条件
    void lookupDraw();      // 查询开奖
    // mnu_InputKaiJian: tells how to enter a draw and puts the focus in the entry row.
    void promptEntry();

  signals:
    void modeChanged(HistoryShowMode mode);
    // The draws changed (entry, deletion, download): pages of the latest draw should redraw.
    void historyChanged();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QWidget* buildEntryRow();
    QWidget* buildViewBar();
    void updateCount();
    // The prize table of the draw in grid row `row` under the grid.
    void showPrizes(int row);
    // The range of draws the report views cover: all draws, or the newest hundred.
    std::pair<int, int> reportRange() const;

    QTableView* grid_;
    QLabel* prizes_ = nullptr;
    CursorModel* model_;
    QHBoxLayout* entryRow_;
    std::array<QLineEdit*, 8> boxes_{};
    QDateEdit* date_;
    QPushButton* add_;
    QPushButton* download_;
    QPushButton* delete_;
    QPushButton* search_Button_;
    QPushButton* lookup_;
    QPushButton* groups_;
    QLabel* count_;
    QRadioButton* showAll_;
    QRadioButton* show100_;
    QButtonGroup* modes_;
    QButtonGroup* views_;
    QStackedWidget* stack_;
    SearchRow* search_;
    FenBuGrid* fenBu_;
    QTableView* groupGrid_;
    HistoryView view_ = HistoryView::Draws;
};

}  // namespace dovrex
