#include "results/print_layout.h"

#include <algorithm>
#include <cmath>

namespace dovrex {

int PrintLayout::pageCount(int tickets) const {
    const int perPage = ticketsPerPage();
    return tickets <= 0 ? 0 : (tickets + perPage - 1) / perPage;
}

int PrintLayout::ticketsOnPage(int page, int tickets) const {
    return std::clamp(tickets - firstTicket(page), 0, ticketsPerPage());
}

PrintSlot PrintLayout::slot(int index) const {
    const int perColumn = ticketsPerColumn();
    const int inColumn = index % perColumn;
    return {index / perColumn, blankLines ? inColumn + inColumn / 5 : inColumn};
}

PrintLayout layout_Print(const PrintArea& area, bool blankLines) {
    PrintLayout layout;
    layout.blankLines = blankLines;
    const double body = area.height - area.headerHeight - area.footerHeight;
    if (area.lineHeight > 0) layout.linesPerColumn = std::max(1, int(std::floor(body / area.lineHeight)));
    // A column is a line and a gap; the last column needs no gap behind it.
    const double column = area.lineWidth + area.columnGap;
    if (column > 0) layout.columns = std::max(1, int(std::floor((area.width + area.columnGap) / column)));
    return layout;
}

}  // namespace dovrex
