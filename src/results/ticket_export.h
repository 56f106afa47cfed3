#pragma once

#include <QString>
#include <QStringList>
#include <functional>

#include "domain/game.h"
#include "pipeline/random_pick.h"
#include "screen/ticket_options.h"

namespace dovrex {

// The file every export writes, in the program folder, overwritten each time.
inline const QString kDaoChuFileName = QStringLiteral("dovrexDaocu.txt");

// The program folder, or the store's own folder when the program runs on a bare store: where exports
// go when the player has no documents folder.
QString daoChu_Folder();

// The folder an export proposes and an import opens in: the folder of the last export (kept in the
// settings file, so across starts), else the player's documents folder, else daoChu_Folder().
QString export_Folder();
void set_ExportFolder(const QString& folder);

// One line of the export for a ticket, as written. The blanks behind 序号 and 期号 are part of the
// text that the red separator replaces, so 1,,,,,,,2008118,01,02,03,04,05,06+07 is the line for the
// separator "," with every switch on.
QString export_Line(const TicketExportOptions& options, int serial, IssueNumber issue, const Reds& reds,
                    int blue);

// Reads the tickets of `issue` in 序号 order and hands each one's line (export_Line) to `line`: the
// one reader of the export file and of the printed tickets.
void export_EachLine(IssueNumber issue, const TicketExportOptions& options,
                     const std::function<void(const QString&)>& line);

// The presets of the 导出格式 list, and the separators the two lists offer.
const QStringList& export_PresetItems();
const QStringList& export_RedSeparatorItems();
const QStringList& export_BlueSeparatorItems();
// Sets the separators of a preset by its text. False for the free preset (其他), whose separators stay
// as they are and which the dialog answers with msg::kSetSeparators.
bool export_ApplyPreset(const QString& item, TicketExportOptions& options);
// The text a separator list puts into its box: "空格" stands for one blank.
QString export_SeparatorText(const QString& item);

// The dialog's choices of the last export: the next one opens on them.
TicketExportOptions& export_LastOptions();

// export_HaoMa: asks frmToFile, then where to save (proposing `fileName` in export_Folder()), writes
// the tickets of `issue` there, logs the path, copies the text to the clipboard and opens the file in
// the user's editor. Returns the ticket count, or -1 when either dialog was cancelled or the file
// could not be written (which is said; an old file stays as it was).
int export_HaoMa(IssueNumber issue, const QString& fileName = kDaoChuFileName);

// Writes text as UTF-8 with the platform's line ends; false when the file cannot be written.
bool write_WenJian(const QString& path, const QString& text);
// The whole text of a file written by write_WenJian (empty when it cannot be read).
QString read_WenJian(const QString& path);

// cmmJXdaocu_Click: asks where to save as export_HaoMa does, writes the text there, copies it to the
// clipboard, says so with the path and opens the file in the user's editor. Nothing happens when no
// ticket is complete or the dialog is cancelled.
void jiXuan_Export(const JiXuanHao& hao);

namespace msg {
inline QString jiXuanExported(const QString& path) {
    return QStringLiteral("导出完成！已保存到：%1\r\n\r\n已复制到粘贴板,可通过Ctrl+V粘贴到需要的地方！")
        .arg(path);
}
inline const QString kSetSeparators = QStringLiteral("请在下面设置具体的分隔符！");
inline const QString kTextFileFilter = QStringLiteral("文本文件 (*.txt)");
inline const QString kNothingToExport = QStringLiteral("上面表格中还没有号码！");
inline QString exportLogged(const QString& path) {
    return QStringLiteral("号码导出完成，已保存到：\r\n") + path +
           QStringLiteral("\r\n\r\n已复制到粘贴板,可通过Ctrl+V粘贴到需要的地方！");
}
inline QString exportDone(int count, const QString& path) {
    return QStringLiteral(
               "导出完成,总共: %1 "
               "注。\r\n\r\n已保存到：%2\r\n\r\n已复制到粘贴板,可通过Ctrl+V粘贴到需要的地方！")
        .arg(count)
        .arg(path);
}
inline QString exportNotWritten(const QString& path) {
    return QStringLiteral("无法写入文件：\r\n") + path +
           QStringLiteral("\r\n\r\n号码没有导出，请换一个文件夹再试。");
}
}  // namespace msg

}  // namespace dovrex
