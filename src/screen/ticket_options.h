#pragma once

#include <QString>
#include <array>

namespace dovrex {

// What frmToFile hands back: the four switches and the two separators of an export.
struct TicketExportOptions {
    enum Switch { kSerial = 0, kIssue = 1, kNumbers = 2, kBlankLines = 3 };
    std::array<bool, 4> daoChuXuanXiang{false, false, true, false};  // 序号, 期号, 号码, 分隔行
    QString hongJianGe = QStringLiteral(" ");                        // between the reds
    QString hongLanJianGe = QStringLiteral("+");                     // before the blue
};

// What frmFromFile hands back: the line layout and the issue the tickets get.
struct TicketImportOptions {
    enum Layout { kNumbersOnly = 0, kIssueAndNumbers = 1, kSerialAndNumbers = 2 };
    int daoRuGeShi = kNumbersOnly;
    QString daoRuQiHao;  // the text of the issue box; unused with kIssueAndNumbers
};

namespace msg {
inline const QString kNeedSevenDigitIssue =
    QStringLiteral("请在文本框中输入一个７位数的期号。(如：２００７００１)");
}  // namespace msg

// frmFromFile's refusal of its input, empty when it may close: where the tickets take the box's
// issue, the box must hold seven characters naming an issue that can exist. The dialog and the
// scripted screen both ask it, so a refused answer never reaches the import.
QString import_InputError(const TicketImportOptions& options);

}  // namespace dovrex
