#include "ui/tickets/ticket_printer.h"

#include <QFile>
#include <QFileInfo>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QSet>
#include <algorithm>
#include <filesystem>
#include <system_error>

#include "results/ticket_export.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"

namespace dovrex {

namespace {

constexpr double kLinePoints = 10;
constexpr double kTitlePoints = 12;
constexpr double kFootPoints = 9;
// The smallest size a line is shrunk to when it is wider than the paper.
constexpr double kSmallestLinePoints = 5;

// A font with the Chinese glyphs the title and the separators (，；：) need. The ticket lines take
// the monospaced one, so that serials padded with blanks stay in line.
QFont printFont(double points, bool monospaced) {
    const QStringList sans{QStringLiteral("Noto Sans CJK SC"), QStringLiteral("WenQuanYi Micro Hei")};
    const QStringList mono{QStringLiteral("Noto Sans Mono CJK SC"),
                           QStringLiteral("WenQuanYi Micro Hei Mono")};
    QFont font;
    font.setFamilies(monospaced ? mono + sans : sans + mono);
    font.setStyleHint(monospaced ? QFont::Monospace : QFont::SansSerif);
    font.setPointSizeF(points);
    return font;
}

// The grid's issue and its tickets in the export's layout. Issue 0, after saying so, when the grid
// shows no tickets.
struct GridTickets {
    IssueNumber issue = 0;
    QStringList lines;
    bool blankLines = false;
    QString title() const { return issueTicketsAndCost(issue, int(lines.size())); }
};

GridTickets gridTickets() {
    GridTickets tickets;
    tickets.issue = get_BiaoGeQiHao();
    if (tickets.issue < 1) {
        screen().ui_Message(msg::kNoTickets);
        return tickets;
    }
    const TicketExportOptions& options = export_LastOptions();
    tickets.blankLines = options.daoChuXuanXiang[TicketExportOptions::kBlankLines];
    export_EachLine(tickets.issue, options, [&](const QString& line) { tickets.lines << line; });
    return tickets;
}

// A Stop ends one run: the flag is down when the run starts and again when it ends, however it ends.
struct StopFlagLowered {
    StopFlagLowered() { shared().tingZhi = 0; }
    ~StopFlagLowered() { shared().tingZhi = 0; }
};

// Removes a file when it goes out of scope, unless it was handed on.
struct RemovedUnlessKept {
    QString path;
    ~RemovedUnlessKept() {
        if (!path.isEmpty()) QFile::remove(path);
    }
};

}  // namespace

TicketPrinter::TicketPrinter(QPrinter& printer, QString title, QStringList lines, bool blankLines)
    : printer_(printer),
      title_(std::move(title)),
      lines_(std::move(lines)),
      titleFont_(printFont(kTitlePoints, false)),
      footFont_(printFont(kFootPoints, false)),
      blankLines_(blankLines) {
    titleFont_.setBold(true);
    // The lines of a run differ in their digits only, and digits share one width in these fonts:
    // each shape (its digits read as 0) is measured once instead of every line.
    QSet<QString> shapes;
    for (QString line : lines_) {
        for (QChar& c : line)
            if (c.isDigit()) c = u'0';
        shapes.insert(line);
    }
    shapes_ = shapes.values();
    measure();
}

void TicketPrinter::measure() {
    const QRectF page = printer_.pageRect(QPrinter::DevicePixel);
    area_.width = page.width();
    area_.height = page.height();

    lineFont_ = printFont(kLinePoints, true);
    auto widest = [&] {
        const QFontMetricsF metrics(lineFont_, &printer_);
        double w = 0;
        for (const QString& shape : shapes_) w = std::max(w, metrics.horizontalAdvance(shape));
        return w;
    };
    double lineWidth = widest();
    // A layout with many separators may not fit the paper at the usual size: the font shrinks to fit.
    if (lineWidth > area_.width && lineWidth > 0) {
        lineFont_.setPointSizeF(std::max(kSmallestLinePoints, kLinePoints * area_.width / lineWidth * 0.98));
        lineWidth = widest();
    }
    const QFontMetricsF line(lineFont_, &printer_);
    const QFontMetricsF title(titleFont_, &printer_);
    const QFontMetricsF foot(footFont_, &printer_);
    area_.lineWidth = lineWidth;
    area_.lineHeight = line.lineSpacing();
    area_.columnGap = line.horizontalAdvance(QStringLiteral("000"));
    area_.headerHeight = title.lineSpacing() + line.lineSpacing();
    area_.footerHeight = foot.lineSpacing() + line.lineSpacing() * 0.5;
    layout_ = layout_Print(area_, blankLines_);
}

TicketPrinter::Result TicketPrinter::print(int fromPage, int toPage) {
    const int tickets = int(lines_.size());
    const int pages = pageCount();
    fromPage = std::clamp(fromPage, 1, std::max(1, pages));
    toPage = std::clamp(toPage, fromPage, std::max(1, pages));
    pagesDrawn_ = 0;
    QPainter painter;
    if (!painter.begin(&printer_)) return Result::Failed;

    int total = 0;
    for (int page = fromPage; page <= toPage; ++page) total += layout_.ticketsOnPage(page, tickets);
    const StopFlagLowered stop;
    RunPanel panel(total);
    Screen& ui = screen();
    const QFontMetricsF title(titleFont_, &printer_);
    const QFontMetricsF line(lineFont_, &printer_);
    const QFontMetricsF foot(footFont_, &printer_);
    // The columns share the width evenly: the page reads as a table rather than a list pushed left.
    const double pitch = area_.width / layout_.columns;
    const double ruleY = title.lineSpacing() + line.lineSpacing() * 0.3;
    QPen rule(Qt::darkGray);
    rule.setWidthF(printer_.resolution() / 144.0);  // half a point
    int done = 0;
    for (int page = fromPage; page <= toPage; ++page) {
        if (page > fromPage) printer_.newPage();
        ++pagesDrawn_;
        painter.setPen(Qt::black);
        painter.setFont(titleFont_);
        painter.drawText(QPointF(0, title.ascent()), title_);
        painter.setFont(footFont_);
        const QString number = msg::printPageNumber(page, pages);
        painter.drawText(
            QPointF((area_.width - foot.horizontalAdvance(number)) / 2, area_.height - foot.descent()),
            number);
        painter.setPen(rule);
        painter.drawLine(QPointF(0, ruleY), QPointF(area_.width, ruleY));

        painter.setPen(Qt::black);
        painter.setFont(lineFont_);
        const int first = layout_.firstTicket(page);
        const int count = layout_.ticketsOnPage(page, tickets);
        for (int i = 0; i < count; ++i) {
            const PrintSlot slot = layout_.slot(i);
            painter.drawText(QPointF(slot.column * pitch,
                                     area_.headerHeight + slot.line * area_.lineHeight + line.ascent()),
                             lines_[first + i]);
            panel.step(++done);
            ui.ui_Pump();
            if (shared().tingZhi) {
                printer_.abort();
                return Result::Stopped;
            }
        }
    }
    panel.show(done);
    return painter.end() ? Result::Done : Result::Failed;
}

void TicketPrinter::setUpPage(QPrinter& printer, const QString& title) {
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setPageOrientation(QPageLayout::Portrait);
    printer.setPageMargins(QMarginsF(12, 12, 12, 12), QPageLayout::Millimeter);
    printer.setDocName(title);
    printer.setCreator(QStringLiteral("dovrex"));
}

void TicketPrinter::exportPdf() {
    const GridTickets tickets = gridTickets();
    if (tickets.issue < 1) return;
    Screen& ui = screen();
    QString path = ui.ui_PickFile(msg::kPdfFilter, true);
    if (path.isEmpty()) return;
    if (QFileInfo(path).suffix().isEmpty()) path += QStringLiteral(".pdf");

    // Drawn beside the chosen name and put in its place only when whole.
    RemovedUnlessKept part{path + QStringLiteral(".part")};
    Result result;
    int pages = 0;
    {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(part.path);
        setUpPage(printer, tickets.title());
        TicketPrinter paper(printer, tickets.title(), tickets.lines, tickets.blankLines);
        result = paper.print(1, paper.pageCount());
        pages = paper.pagesDrawn();
    }
    if (result == Result::Stopped) {
        ui.ui_Message(msg::kPdfStopped);
        return;
    }
    std::error_code error;
    if (result == Result::Done)
        std::filesystem::rename(QFile::encodeName(part.path).toStdString(),
                                QFile::encodeName(path).toStdString(), error);
    if (result != Result::Done || error) {
        ui.ui_Message(msg::pdfFailed(path), MessageKind::Warning);
        return;
    }
    part.path.clear();
    const QString done = msg::pdfDone(pages, int(tickets.lines.size()), path);
    log_Append(done);
    ui.ui_Message(done);
}

void TicketPrinter::printOnPaper(QWidget* parent) {
    const GridTickets tickets = gridTickets();
    if (tickets.issue < 1) return;
    Screen& ui = screen();
    QPrinter printer(QPrinter::HighResolution);
    setUpPage(printer, tickets.title());
    TicketPrinter paper(printer, tickets.title(), tickets.lines, tickets.blankLines);

    QPrintDialog dialog(&printer, parent);
    dialog.setWindowTitle(QStringLiteral("打印投注号码"));
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, true);
    dialog.setMinMax(1, paper.pageCount());
    if (dialog.exec() != QDialog::Accepted) return;
    // The player may have chosen other paper.
    paper.measure();
    int from = 1, to = paper.pageCount();
    if (printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0) {
        from = printer.fromPage();
        to = std::max(from, printer.toPage());
    }
    switch (paper.print(from, to)) {
        case Result::Stopped:
            ui.ui_Message(msg::kPrintStopped);
            break;
        case Result::Failed:
            ui.ui_Message(msg::kPrintFailed, MessageKind::Warning);
            break;
        case Result::Done:
            log_Append(msg::printDone(paper.pagesDrawn()));
            break;
    }
}

}  // namespace dovrex
