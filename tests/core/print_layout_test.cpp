#include <gtest/gtest.h>

#include "results/print_layout.h"

namespace dovrex {
namespace {

// A page of 1000 x 1400 with a 60 title band and a 40 foot band: 65 lines of 20; lines 200 wide
// with a gap of 30: 4 columns (4 x 200 + 3 x 30 = 890).
PrintArea area() {
    PrintArea a;
    a.width = 1000;
    a.height = 1400;
    a.headerHeight = 60;
    a.footerHeight = 40;
    a.lineHeight = 20;
    a.lineWidth = 200;
    a.columnGap = 30;
    return a;
}

bool operator==(PrintSlot a, PrintSlot b) {
    return a.column == b.column && a.line == b.line;
}

TEST(PrintLayout, TicketsFillColumnsDownThenAcrossAndThePagesCount) {
    const PrintLayout layout = layout_Print(area(), false);
    EXPECT_EQ(layout.linesPerColumn, 65);
    EXPECT_EQ(layout.columns, 4);
    ASSERT_EQ(layout.ticketsPerPage(), 260);
    // The tickets of 20 red drags and 2 blues: 298 full pages and 40 on the last.
    EXPECT_EQ(layout.pageCount(77520), 299);
    EXPECT_EQ(layout.firstTicket(299), 77480);
    EXPECT_EQ(layout.ticketsOnPage(299, 77520), 40);
    EXPECT_EQ(layout.ticketsOnPage(1, 77520), 260);
    EXPECT_EQ(layout.ticketsOnPage(300, 77520), 0);
    EXPECT_EQ(layout.pageCount(260), 1);
    EXPECT_EQ(layout.pageCount(261), 2);
    EXPECT_EQ(layout.pageCount(0), 0);
    EXPECT_TRUE(layout.slot(64) == (PrintSlot{0, 64}));
    EXPECT_TRUE(layout.slot(65) == (PrintSlot{1, 0}));
    EXPECT_TRUE(layout.slot(259) == (PrintSlot{3, 64}));

    // The last column needs no gap behind it.
    PrintArea tight = area();
    tight.width = 890;
    EXPECT_EQ(layout_Print(tight, false).columns, 4);
    tight.width = 889;
    EXPECT_EQ(layout_Print(tight, false).columns, 3);
    // A line wider than the page and a page shorter than its bands still take a ticket a page.
    tight.lineWidth = 2000;
    tight.height = 90;
    const PrintLayout least = layout_Print(tight, true);
    EXPECT_EQ(least.columns, 1);
    EXPECT_EQ(least.linesPerColumn, 1);
    EXPECT_EQ(least.pageCount(3), 3);
}

TEST(PrintLayout, BlankLineAfterEveryFifthTicketOfAColumn) {
    const PrintLayout layout = layout_Print(area(), true);
    // 65 lines: ten groups of five and their blanks, then five more.
    ASSERT_EQ(layout.ticketsPerColumn(), 55);
    EXPECT_TRUE(layout.slot(4) == (PrintSlot{0, 4}));
    EXPECT_TRUE(layout.slot(5) == (PrintSlot{0, 6}));
    EXPECT_TRUE(layout.slot(54) == (PrintSlot{0, 64}));
    EXPECT_TRUE(layout.slot(55) == (PrintSlot{1, 0}));
    EXPECT_EQ(layout.pageCount(77520), 353);  // 220 a page
}

}  // namespace
}  // namespace dovrex
