#include <gtest/gtest.h>

#include "results/print_layout.h"

namespace dovrex {
namespace {

// A page of 1000 x 1400 with a 60 title band and a 40 foot band: 65 lines of 20; lines 200 wide
// with a gap of 30: 4 columns (4 x 200 + 3 x 30 = 890).
// {width, height, header band, foot band, line height, line width, column gap}
const PrintArea kArea{1000, 1400, 60, 40, 20, 200, 30};

// Where each of `tickets` stands, as {column, line}.
using Slots = std::vector<std::pair<int, int>>;
Slots slotsOf(const PrintLayout& layout, std::initializer_list<int> tickets) {
    Slots out;
    for (int t : tickets) out.emplace_back(layout.slot(t).column, layout.slot(t).line);
    return out;
}

TEST(PrintLayout, TicketsFillColumnsDownThenAcrossAndThePagesCount) {
    const PrintLayout layout = layout_Print(kArea, false);
    EXPECT_EQ(std::pair(layout.linesPerColumn, layout.columns), std::pair(65, 4));
    ASSERT_EQ(layout.ticketsPerPage(), 260);
    // The tickets of 20 red drags and 2 blues: 298 full pages and 40 on the last.
    for (const auto& [tickets, pages] : {std::pair{77520, 299}, {260, 1}, {261, 2}, {0, 0}})
        EXPECT_EQ(layout.pageCount(tickets), pages) << tickets;
    EXPECT_EQ(layout.firstTicket(299), 77480);
    for (const auto& [page, tickets] : {std::pair{299, 40}, {1, 260}, {300, 0}})
        EXPECT_EQ(layout.ticketsOnPage(page, 77520), tickets) << page;
    EXPECT_EQ(slotsOf(layout, {64, 65, 259}), (Slots{{0, 64}, {1, 0}, {3, 64}}));

    // The last column needs no gap behind it.
    PrintArea tight = kArea;
    tight.width = 890;
    EXPECT_EQ(layout_Print(tight, false).columns, 4);
    tight.width = 889;
    EXPECT_EQ(layout_Print(tight, false).columns, 3);
    // A line wider than the page and a page shorter than its bands still take a ticket a page.
    tight.lineWidth = 2000;
    tight.height = 90;
    const PrintLayout least = layout_Print(tight, true);
    EXPECT_EQ(std::tuple(least.columns, least.linesPerColumn, least.pageCount(3)), std::tuple(1, 1, 3));
}

TEST(PrintLayout, BlankLineAfterEveryFifthTicketOfAColumn) {
    const PrintLayout layout = layout_Print(kArea, true);
    // 65 lines: ten groups of five and their blanks, then five more.
    ASSERT_EQ(layout.ticketsPerColumn(), 55);
    EXPECT_EQ(slotsOf(layout, {4, 5, 54, 55}), (Slots{{0, 4}, {0, 6}, {0, 64}, {1, 0}}));
    EXPECT_EQ(layout.pageCount(77520), 353);  // 220 a page
}

}  // namespace
}  // namespace dovrex
