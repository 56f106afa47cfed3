#pragma once

#include <QByteArray>
#include <QStringList>

class QAbstractButton;
class QProgressBar;
class QTableWidget;
class QWidget;

namespace dovrex {

// Parts of the windows that run a pass over the history and show its result (the back-test, the
// replay).

// A read-only table with these column captions, chosen by whole rows, without row numbers.
QTableWidget* makeResultTable(const QStringList& captions, QWidget* parent);

// While it lives, Start rests, Stop acts and the bar shows; the Stop flag (tingZhi) is down when
// the pass begins and again when it ends, however it ends.
class RunningPass {
  public:
    RunningPass(QAbstractButton* start, QAbstractButton* stop, QProgressBar* bar);
    ~RunningPass();
    RunningPass(const RunningPass&) = delete;
    RunningPass& operator=(const RunningPass&) = delete;
    // The pass's progress: moves the bar, lets the window's events run; true when Stop was pressed.
    bool step(int done, int total);

  private:
    QAbstractButton* start_;
    QAbstractButton* stop_;
    QProgressBar* bar_;
};

// Asks where to save a CSV file and writes `bytes` whole, telling the player where it went or why
// it did not; without a result to export it says so instead.
void exportCsvFile(const QByteArray& bytes, bool haveResult);

}  // namespace dovrex
