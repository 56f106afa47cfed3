// 打印 and 导出PDF on the 投注号码 page: the PDF holds the grid's issue on the pages its layout
// counts, and a Stop leaves no file behind.

#include <QFile>
#include <QPrinter>
#include <QRegularExpression>

#include "gui/answering_screen.h"
#include "gui/seeded_program.h"
#include "results/ticket_export.h"
#include "screen/run_panel.h"
#include "screen/ticket_page.h"
#include "support/test_support.h"
#include "ui/tickets/ticket_printer.h"

namespace dovrex {
namespace {

constexpr IssueNumber kIssue = 2026097;
constexpr int kTickets = 77520;

class TicketPrintTest : public StartedProgramTest<AnsweringScreen> {
  protected:
    // 77,520 tickets of the issue, and a few of the one before that stay off the paper.
    static void fillTickets() {
        test::addTickets(kIssue, kTickets);
        test::addTicket(kIssue - 1, makeReds(1, 2, 3, 4, 5, 6), 7);
        test::addTicket(kIssue - 1, makeReds(1, 2, 3, 4, 5, 7), 7);
        load_TouZhuBiao(kIssue);
    }
    QPushButton* pdfButton() const {
        return ticketsPage_->findChild<QPushButton*>(QStringLiteral("cmm_DaoChuPdf"));
    }
    // The page objects of a PDF (the page tree's own /Pages aside).
    static int pdfPages(const QString& path) {
        static const QRegularExpression page(QStringLiteral("/Type\\s*/Page(?!s)"));
        return int(QString::fromLatin1(test::fileBytes(path)).count(page));
    }
};

TEST_F(TicketPrintTest, PdfHoldsTheGridsIssueOnThePagesItsLayoutCounts) {
    window_->selectPage(TopPage::Tickets);
    ASSERT_NE(pdfButton(), nullptr);
    const QString path = tmp_.filePath(QStringLiteral("号码.pdf"));
    screen_->file = path;
    QTest::mouseClick(pdfButton(), Qt::LeftButton);
    ASSERT_EQ(screen_->shown, QStringList{msg::kNoTickets});
    EXPECT_FALSE(QFile::exists(path));

    fillTickets();
    screen_->shown.clear();
    screen_->file = tmp_.filePath(QStringLiteral("号码"));  // the suffix is added
    shared().tingZhi = 1;                                   // a Stop of an earlier pass ends that pass only
    QTest::mouseClick(pdfButton(), Qt::LeftButton);

    // The pages the exporter's layout gives for this paper, drawn once each.
    QStringList lines;
    export_EachLine(kIssue, export_LastOptions(), [&](const QString& line) { lines << line; });
    ASSERT_EQ(lines.size(), kTickets);
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    TicketPrinter::setUpPage(printer, QString());
    const TicketPrinter paper(printer, QString(), lines, false);
    const int pages = paper.pageCount();
    // A4 at 10 points takes several columns of the plain layout "01 02 03 04 05 06+07".
    EXPECT_GE(paper.layout().columns, 4);
    EXPECT_GE(paper.layout().linesPerColumn, 40);
    EXPECT_EQ(pdfPages(path), pages);
    EXPECT_EQ(screen_->shown, QStringList{msg::pdfDone(pages, kTickets, path)});
    EXPECT_FALSE(QFile::exists(path + QStringLiteral(".part")));
    EXPECT_TRUE(shared().operationLog.endsWith(msg::pdfDone(pages, kTickets, path)));
}

TEST_F(TicketPrintTest, StopLeavesTheFileThatWasThere) {
    fillTickets();
    window_->selectPage(TopPage::Tickets);
    const QString path = tmp_.filePath(QStringLiteral("old.pdf"));
    ASSERT_TRUE(test::writeFile(path, "old"));
    screen_->file = path;
    // Pressed once a few thousand tickets are drawn, however fast the machine is.
    const auto pressed = pressStopAt(5000);
    QTest::mouseClick(pdfButton(), Qt::LeftButton);
    QTest::mouseRelease(ticketsPage_->stopButton(), Qt::LeftButton);
    ASSERT_TRUE(*pressed);
    EXPECT_EQ(screen_->shown, QStringList{msg::kPdfStopped});
    EXPECT_EQ(test::fileBytes(path), QByteArray("old"));
    EXPECT_FALSE(QFile::exists(path + QStringLiteral(".part")));
    EXPECT_EQ(shared().tingZhi, 0);
    EXPECT_FALSE(ticketsPage_->stopFrame()->isVisible());
    EXPECT_TRUE(ticketsPage_->commandBar()->isEnabled());
}

}  // namespace
}  // namespace dovrex
