#pragma once

#include <QColor>
#include <QSet>
#include <QStyledItemDelegate>

namespace dovrex {

// A grid cell whose number is one of a set shows that number as a ball; other cells stay as they are.
// The prize check puts one on each red column and on the blue column of the ticket grid.
class BallCellDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    BallCellDelegate(const QSet<int>& numbers, const QColor& colour, QObject* parent = nullptr);
    const QSet<int>& numbers() const { return numbers_; }
    bool isBall(const QModelIndex& index) const;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    // The least row height that shows the balls whole.
    static constexpr int kBallRowHeight = 26;

  private:
    QSet<int> numbers_;
    QColor colour_;
};

}  // namespace dovrex
