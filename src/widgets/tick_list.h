#pragma once

#include <QListWidget>

namespace dovrex {

// A list whose lines carry ticks: a click anywhere on a line flips its tick (space does too), a
// shift-click gives every line from the last clicked one to this one that line's tick, and a drag
// gives the lines it sweeps the tick of the line it started on. `ticked` reports the lines a gesture
// changed, once per gesture step. Filling the list with setLines/setTicked reports nothing.
class TickList : public QListWidget {
    Q_OBJECT
  public:
    explicit TickList(QWidget* parent = nullptr);

    // Lines with their data (kept in Qt::UserRole), all unticked.
    void setLines(const QStringList& texts, const QList<int>& data = {});
    void setTicked(int row, bool on);
    bool isTicked(int row) const;
    int tickedCount() const;
    int lineData(int row) const;
    // Gives the lines first..last (either order) the tick `on` and reports the ones that changed,
    // as a gesture of the player does.
    void tickRun(int first, int last, bool on);
    // Width that shows the longest line without clipping, with the tick and a scroll bar.
    int idealWidth() const;

  signals:
    void ticked(const QList<int>& rows, bool on);

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

  private:
    bool filling_ = false;
    int anchor_ = -1;       // the line of the last plain click: where a shift-click's run starts
    int dragFrom_ = -1;     // the line a drag started on, -1 with no button down
    int dragReached_ = -1;  // the farthest line the drag has swept to
};

}  // namespace dovrex
