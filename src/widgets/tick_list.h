#pragma once

#include <QListWidget>

namespace dovrex {

// A list whose lines carry ticks: a click anywhere on a line flips its tick (space does too), and
// `ticked` reports the line. Filling the list with setLines/setTicked reports nothing.
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
    // Width that shows the longest line without clipping, with the tick and a scroll bar.
    int idealWidth() const;

  signals:
    void ticked(int row, bool on);

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

  private:
    bool filling_ = false;
};

}  // namespace dovrex
