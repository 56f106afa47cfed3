#include "ui/history/fenbu_grid.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include "analysis/history_tables.h"
#include "pipeline/pick_state.h"
#include "screen/shared_state.h"
#include "store/store.h"
#include "widgets/ball_art.h"
#include "widgets/command_trap.h"
#include "widgets/cursor_model.h"

namespace dovrex {

namespace {

const QColor kPickMark(0xE8, 0x8A, 0x10);

// Number column k01..k49 of a field name, 0 for any other.
int numberColumn(const QString& field) {
    if (field.size() != 3 || field[0] != u'k') return 0;
    bool ok = false;
    const int k = field.mid(1).toInt(&ok);
    return ok && k >= 1 && k <= kRedCount + kBlueCount ? k : 0;
}

class FenBuDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const QString field =
            index.model()->headerData(index.column(), Qt::Horizontal, Qt::UserRole).toString();
        const int k = numberColumn(field);
        const QString text = index.data().toString();
        if (k == 0 || text.isEmpty()) {
            QStyledItemDelegate::paint(painter, option, index);
            return;
        }
        if (option.state & QStyle::State_Selected) painter->fillRect(option.rect, option.palette.highlight());
        const qreal d = qMin(option.rect.width(), option.rect.height()) - 3;
        const QRectF ball(option.rect.center().x() - d / 2 + 0.5, option.rect.center().y() - d / 2 + 0.5, d,
                          d);
        if (text == QLatin1String("*") || text == QLatin1String("+")) {
            // The pick row: a drag is a ring, a banker a filled mark.
            painter->save();
            painter->setRenderHint(QPainter::Antialiasing);
            const bool banker = text == QLatin1String("+");
            painter->setPen(QPen(kPickMark, 2));
            painter->setBrush(banker ? QBrush(kPickMark) : QBrush(Qt::white));
            painter->drawEllipse(ball.adjusted(1, 1, -1, -1));
            QFont f = painter->font();
            f.setPixelSize(qMax(6, int(d * 0.5)));
            f.setBold(true);
            painter->setFont(f);
            painter->setPen(banker ? Qt::white : kPickMark);
            painter->drawText(ball, Qt::AlignCenter, banker ? QStringLiteral("胆") : QStringLiteral("拖"));
            painter->restore();
            return;
        }
        const int n = text.toInt();
        paintBall(*painter, ball, k <= kRedCount ? kRedBall : kBlueBall, twoDigits(n));
    }
};

}  // namespace

FenBuGrid::FenBuGrid(QWidget* parent) : QTableView(parent) {
    setObjectName(QStringLiteral("TDBGrid_FenBu"));
    // A press on the pick row writes the picks: it rests while a pass runs.
    command_entries::declare(this);
    auto* model = new CursorModel(this);
    setModel(model);
    setItemDelegate(new FenBuDelegate(this));
    setEditTriggers(NoEditTriggers);
    setSelectionMode(NoSelection);
    setWordWrap(false);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(22);
    verticalHeader()->hide();
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumSectionSize(10);
    connect(model, &QAbstractItemModel::modelReset, this, &FenBuGrid::dress);
}

CursorModel* FenBuGrid::cursorModel() const {
    return qobject_cast<CursorModel*>(model());
}

int FenBuGrid::fill(int fromIssue, int toIssue) {
    const int draws = fill_HaoMaFenBu(fromIssue, toIssue);
    dress();
    scrollToBottom();
    return draws;
}

void FenBuGrid::dress() {
    CursorModel* m = cursorModel();
    if (!m) return;
    QStringList captions;
    for (int c = 0; c < m->columnCount(); ++c) {
        const QString field = m->headerData(c, Qt::Horizontal, Qt::UserRole).toString();
        const int k = numberColumn(field);
        if (k == 0) {
            captions << field;
            setColumnWidth(c, 66);
        } else {
            captions << twoDigits(k <= kRedCount ? k : k - kRedCount);
            setColumnWidth(c, 23);
        }
    }
    m->setCaptions(captions);
}

bool FenBuGrid::pressCell(int row, int column, bool leftButton) {
    CursorModel* m = cursorModel();
    if (!m || row < 0 || row >= m->rowCount() || row != m->rowCount() - 1) return false;
    const int k = numberColumn(m->headerData(column, Qt::Horizontal, Qt::UserRole).toString());
    if (k == 0) return false;
    int issueColumn = -1;
    for (int c = 0; c < m->columnCount(); ++c)
        if (m->headerData(c, Qt::Horizontal, Qt::UserRole).toString() == QStringLiteral("期号"))
            issueColumn = c;
    if (issueColumn < 0) return false;
    const IssueNumber issue = m->index(row, issueColumn).data().toInt();
    bool changed = false;
    runCommand([&] {
        changed = tdbGrid_FenBu_MouseDown(issue, k, leftButton);
        if (changed) {
            const int scroll = verticalScrollBar()->value();
            const int hscroll = horizontalScrollBar()->value();
            m->setCursor(open_HaoMaFenBu());
            verticalScrollBar()->setValue(scroll);
            horizontalScrollBar()->setValue(hscroll);
            emit picksChanged();
        }
    });
    return changed;
}

void FenBuGrid::mousePressEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    if (index.isValid() && (event->button() == Qt::LeftButton || event->button() == Qt::RightButton) &&
        pressCell(index.row(), index.column(), event->button() == Qt::LeftButton)) {
        event->accept();
        return;
    }
    QTableView::mousePressEvent(event);
}

void FenBuGrid::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();  // the right button picks a banker; no menu
}

}  // namespace dovrex
