#pragma once

#include <QString>

namespace dovrex {

// What a page offers the ticket lines, in one unit (device pixels of the printer, say): the
// printable area, the bands the title and the page number take from it, the height of a line and
// the width of the widest ticket line, and the gap between two columns.
struct PrintArea {
    double width = 0;
    double height = 0;
    double headerHeight = 0;
    double footerHeight = 0;
    double lineHeight = 0;
    double lineWidth = 0;
    double columnGap = 0;
};

// Where a ticket stands on its page: its column and its line in that column (both from 0).
struct PrintSlot {
    int column = 0;
    int line = 0;
};

// How the tickets of a print run fall on pages: down the first column, then the next, as many
// columns as the width takes, as many lines as the height leaves under the title. With blank lines
// (the export's 分隔行) every fifth ticket of a column is followed by an empty line.
struct PrintLayout {
    int linesPerColumn = 1;
    int columns = 1;
    bool blankLines = false;

    // Tickets a column holds: its lines less the blank ones.
    int ticketsPerColumn() const { return blankLines ? linesPerColumn - linesPerColumn / 6 : linesPerColumn; }
    int ticketsPerPage() const { return ticketsPerColumn() * columns; }
    // Pages for `tickets` tickets; none for none.
    int pageCount(int tickets) const;
    // The first ticket of page `page` (from 1) and how many it holds, of `tickets`.
    int firstTicket(int page) const { return (page - 1) * ticketsPerPage(); }
    int ticketsOnPage(int page, int tickets) const;
    // Where the `index`-th ticket of a page (from 0) stands.
    PrintSlot slot(int index) const;
};

// The layout of an area: never less than one line and one column, so a line wider than the page
// is cut rather than lost.
PrintLayout layout_Print(const PrintArea& area, bool blankLines);

namespace msg {
inline QString printPageNumber(int page, int pages) {
    return QStringLiteral("第 %1 页 / 共 %2 页").arg(page).arg(pages);
}
}  // namespace msg

}  // namespace dovrex
