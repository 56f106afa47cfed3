#pragma once

#include <QFont>
#include <QString>
#include <QStringList>

#include "results/print_layout.h"

class QPrinter;
class QWidget;

namespace dovrex {

// Puts the tickets of an issue on paper or into a PDF: on every page a title with the issue, the
// count and the cost, the tickets in the export's line layout in as many columns as the page width
// takes, and "第 N 页 / 共 M 页" at the foot. Lines are drawn in a font with the Chinese glyphs (Noto
// Sans Mono CJK, else WenQuanYi, else whatever the system falls back to).
class TicketPrinter {
  public:
    enum class Result { Done, Stopped, Failed };

    // `title` heads every page; `lines` are the tickets as the export writes them.
    TicketPrinter(QPrinter& printer, QString title, QStringList lines, bool blankLines);

    // Measures the printer's page as it is set now: again after a dialog changed the paper.
    void measure();
    const PrintLayout& layout() const { return layout_; }
    int pageCount() const { return layout_.pageCount(int(lines_.size())); }

    // Draws pages from..to (from 1) with the Stop panel up, letting the window's events run; a
    // Stop ends the run after the line being drawn. Failed when the printer cannot be opened.
    Result print(int fromPage, int toPage);
    // Pages begun by the last print.
    int pagesDrawn() const { return pagesDrawn_; }

    // The paper both commands start from: A4 with margins a home printer reaches, `title` the
    // document's name. The print dialog may change the paper.
    static void setUpPage(QPrinter& printer, const QString& title);

    // 导出PDF: the tickets of the grid's issue to a PDF file the player names. The file appears
    // whole or not at all: a Stop or a fault leaves whatever was there before.
    static void exportPdf();
    // 打印: the same pages through the print dialog, where the player picks the printer, the paper
    // and a range of pages.
    static void printOnPaper(QWidget* parent);

  private:
    QPrinter& printer_;
    QString title_;
    QStringList lines_;
    QStringList shapes_;
    QFont lineFont_;
    QFont titleFont_;
    QFont footFont_;
    PrintArea area_;
    PrintLayout layout_;
    bool blankLines_;
    int pagesDrawn_ = 0;
};

namespace msg {
inline const QString kPrintTip = QStringLiteral("打印表格中这一期的号码，每行的格式与“导出”所选的相同");
inline const QString kPdfTip =
    QStringLiteral("把表格中这一期的号码存为 PDF 文件，每行的格式与“导出”所选的相同");
inline const QString kPdfFilter = QStringLiteral("PDF 文件 (*.pdf)");
inline const QString kPdfStopped = QStringLiteral("已停止，PDF 文件没有保存。");
inline const QString kPrintStopped = QStringLiteral("打印已停止。已经送往打印机的页面，请在打印机上取消。");
inline QString pdfDone(int pages, int tickets, const QString& path) {
    return QStringLiteral("PDF 导出完成：共 %1 页，%2 注。\r\n\r\n文件：%3")
        .arg(pages)
        .arg(tickets)
        .arg(path);
}
inline QString pdfFailed(const QString& path) {
    return QStringLiteral("无法写入文件：%1\r\n\r\n请换一个文件夹或文件名再试。").arg(path);
}
inline QString printDone(int pages) {
    return QStringLiteral("已送往打印机：共 %1 页。").arg(pages);
}
inline const QString kPrintFailed = QStringLiteral("无法打开打印机，没有打印。");
}  // namespace msg

}  // namespace dovrex
