#pragma once

#include <QWidget>
#include <array>

#include "app/pipeline_commands.h"

class QFrame;
class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QTableView;
class QVBoxLayout;

namespace dovrex {

class CursorModel;

// 投注号码, the top page of the tickets: the grid of 日志表 (TDBGrid_RZ), the eight pipeline
// commands (cmmTouZhu in Pic_subTouZhu), the Stop panel of a running pass (FrameStop: cmm_stop,
// ProgressBar_TouZu_Busy, LabelJindu, LabelJinduAll) and the operation log (TextChaoZuoTip). The
// logic reaches all of them by these role names.
class TicketsPage : public QWidget {
    Q_OBJECT
  public:
    explicit TicketsPage(QWidget* parent = nullptr);

    QTableView* grid() const { return grid_; }
    CursorModel* model() const { return model_; }
    QPushButton* command(int index) const { return commands_.at(size_t(index)); }
    QWidget* commandBar() const { return commandBar_; }
    QPushButton* stopButton() const { return stop_; }
    QFrame* stopFrame() const { return stopFrame_; }
    QPlainTextEdit* log() const { return log_; }
    // Puts a panel of settings (e.g. the shrink settings, FrameSuosuiSezi) above the log.
    void addPanel(QWidget* panel);

  private:
    void updateSummary();

    QTableView* grid_;
    CursorModel* model_;
    QLabel* summary_;
    QWidget* commandBar_;
    std::array<QPushButton*, kTouZhuCommands> commands_{};
    QFrame* stopFrame_;
    QPushButton* stop_;
    QPlainTextEdit* log_;
    QVBoxLayout* side_;
};

}  // namespace dovrex
