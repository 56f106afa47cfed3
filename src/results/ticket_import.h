#pragma once

#include <QIODevice>
#include <QString>
#include <QStringView>
#include <functional>

#include "domain/game.h"
#include "screen/ticket_options.h"

namespace dovrex {

// A ticket read from a line, balls in the order of the file.
struct ImportedTicket {
    IssueNumber issue = 0;  // from the line (layout 1), else 0
    Reds reds{};
    int blue = 0;
};

// Reads one line of a ticket file in the given layout (TicketImportOptions::Layout). False for a line
// that gives no valid ticket: shorter than 15 characters once trimmed, no 7-digit issue in layout 1,
// fewer than seven numbers, a red outside 1..33 or a blue outside 1..16. Order and repeats are not
// checked: the balls stay as the file has them.
bool import_ParseLine(QStringView line, int layout, ImportedTicket& ticket);

// Reads a ticket file line by line; lines end at CR LF, CR or LF, and `line` sees each without its
// end. A file with a UTF-16 mark is UTF-16 throughout. Otherwise every line is decoded on its own: as
// UTF-8 when its bytes are well-formed UTF-8 (a UTF-8 mark at the start is dropped), else as GB18030,
// the encoding of the Chinese tools, so that a file pieced together from both kinds reads whole.
// Only the line being read is held in memory.
void read_TicketLines(QIODevice& in, const std::function<void(QStringView)>& line);

// The issue box of frmFromFile at load: the issue after the latest draw, a new year's first issue
// taking today's year.
QString import_DefaultIssue();

// import_HaoMa: asks frmFromFile, reads and checks the whole file (each ticket as ticketFault
// does; the refused lines are counted and named), then asks whether to keep the tickets in the
// table and adds the file's tickets to 日志表. A file with no valid ticket, or one that would take
// the table beyond kTicketLimit, changes nothing. Returns the number added, 0 when nothing was.
int import_HaoMa(const QString& fileName);

namespace msg {
inline const QString kFromFileCaption = QStringLiteral("数 据 导 入");
inline const QString kFromFileHint = QStringLiteral("文件格式要求：文件内各数之前必须用空格或逗号分开。");
inline const QString kKeepTableTickets = QStringLiteral("表格中原有的数据要保留吗？");
inline const QString kImportRunning = QStringLiteral("操作进行中。。。");
inline const QString kImportNothingValid = QStringLiteral("文件中没有可以导入的号码，表格没有改动。");
inline const QString kImportTicketsOverLimit =
    QStringLiteral("导入后的号码将超过 １０００００ 注，超出了本程序的限制，没有导入，表格没有改动。");
inline QString importDone(int count) {
    return QStringLiteral("数据导入完成，共导入：") + to_QuanJiao(count) + QStringLiteral(" 注！");
}
}  // namespace msg

}  // namespace dovrex
