#include "results/ticket_export.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "screen/prepared.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"
#include "store/ini_file.h"

namespace dovrex {

namespace {

// The old Trim: blanks only, tabs stay.
QString trimBlanks(const QString& s) {
    qsizetype from = 0, to = s.size();
    while (from < to && s[from] == u' ') ++from;
    while (to > from && s[to - 1] == u' ') --to;
    return s.mid(from, to - from);
}

// Format(n, "00"), a sign in front of the digits.
QString asTwoDigits(int n) {
    return n < 0 ? QStringLiteral("-") + twoDigits(-n) : twoDigits(n);
}

}  // namespace

QString daoChu_Folder() {
    if (!shared().paths.programDir.isEmpty()) return shared().paths.programDir;
    if (shared().g_Store) return QFileInfo(shared().g_Store->path()).absolutePath();
    return QDir::currentPath();
}

namespace {
// Where the last export's folder is kept: the settings file of the program folder; a bare store has
// none, and its session remembers the folder on its own.
const QString kExportSection = QStringLiteral("Export");
const QString kFolderKey = QStringLiteral("LastFolder");
constexpr int kPathMax = 4096;

QString lastExportFolder() {
    const AppPaths& paths = shared().paths;
    if (paths.programDir.isEmpty()) return shared().lastExportFolder;
    CIniFile ini;
    ini.SpecifyIni(paths.settingsFile());
    return ini.ReadString(kExportSection, kFolderKey, QString(), kPathMax);
}
}  // namespace

QString export_Folder() {
    for (const QString& folder : {lastExportFolder(), shared().paths.documentsDir})
        if (!folder.isEmpty() && QFileInfo(folder).isDir()) return folder;
    return daoChu_Folder();
}

void set_ExportFolder(const QString& folder) {
    const AppPaths& paths = shared().paths;
    if (paths.programDir.isEmpty()) {
        shared().lastExportFolder = folder;
        return;
    }
    // A settings file that cannot be written costs the next export its proposal, nothing more.
    CIniFile ini;
    ini.SpecifyIni(paths.settingsFile());
    ini.WriteString(kExportSection, kFolderKey, folder);
}

namespace {
// The file an export goes to: asked, proposed in the export folder; empty when cancelled.
QString askExportPath(const QString& fileName) {
    return screen().ui_PickFile(msg::kTextFileFilter, true, true, QDir(export_Folder()).filePath(fileName));
}

// A written export handed to the player: the clipboard gets what the file holds (the text itself if
// it reads back empty), then the message, then the file opens.
void handOverExport(const QString& path, const QString& text, const QString& message) {
    Screen& ui = screen();
    const QString fromFile = read_WenJian(path);
    ui.ui_Clipboard(fromFile.isEmpty() ? text : fromFile);
    ui.ui_Message(message);
    ui.ui_OpenFile(path);
}
}  // namespace

QString export_Line(const TicketExportOptions& options, int serial, IssueNumber issue, const Reds& reds,
                    int blue) {
    const auto& on = options.daoChuXuanXiang;
    QString line;
    if (on[TicketExportOptions::kSerial]) {
        const QString s = QString::number(serial);
        line = s + QString(qMax<qsizetype>(0, 8 - s.size()), u' ');
    }
    if (on[TicketExportOptions::kIssue]) line += QString::number(issue) + u' ';
    if (on[TicketExportOptions::kNumbers]) {
        for (int i = 1; i <= kRedsPerTicket; ++i) line += asTwoDigits(reds[size_t(i)]) + u' ';
        line = trimBlanks(line).replace(u' ', options.hongJianGe);
        line = trimBlanks(line) + options.hongLanJianGe + asTwoDigits(blue) + u' ';
    }
    return trimBlanks(line);
}

const QStringList& export_PresetItems() {
    static const QStringList items{QStringLiteral("淘宝彩票网格式"), QStringLiteral("财付通彩票网格式"),
                                   QStringLiteral("其他格式......")};
    return items;
}

const QStringList& export_RedSeparatorItems() {
    static const QStringList items{QStringLiteral(","), QStringLiteral("，"),   QStringLiteral("+"),
                                   QStringLiteral("-"), QStringLiteral("空格"), QStringLiteral("|"),
                                   QStringLiteral(";"), QStringLiteral("；"),   QStringLiteral(":"),
                                   QStringLiteral("：")};
    return items;
}

const QStringList& export_BlueSeparatorItems() {
    static const QStringList items{QStringLiteral(";"),    QStringLiteral("|"), QStringLiteral("+"),
                                   QStringLiteral("空格"), QStringLiteral(":"), QStringLiteral("："),
                                   QStringLiteral("-"),    QStringLiteral(","), QStringLiteral("，"),
                                   QStringLiteral("；")};
    return items;
}

bool export_ApplyPreset(const QString& item, TicketExportOptions& options) {
    if (item.contains(QStringLiteral("淘宝"))) {
        options.hongJianGe = QStringLiteral(" ");
        options.hongLanJianGe = QStringLiteral("+");
    } else if (item.contains(QStringLiteral("财付通"))) {
        options.hongJianGe = QStringLiteral(",");
        options.hongLanJianGe = QStringLiteral("|");
    } else if (item.contains(QStringLiteral("其他"))) {
        return false;
    }
    return true;
}

QString export_SeparatorText(const QString& item) {
    return item == QStringLiteral("空格") ? QStringLiteral(" ") : item;
}

TicketExportOptions& export_LastOptions() {
    return shared().exportOptions;
}

bool write_WenJian(const QString& path, const QString& text) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text)) return false;
    file.write(text.toUtf8());
    return file.commit();
}

QString read_WenJian(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) return {};
    return QString::fromUtf8(file.readAll());
}

void export_EachLine(IssueNumber issue, const TicketExportOptions& options,
                     const std::function<void(const QString&)>& line) {
    Prepared rows(
        QStringLiteral("select 序号,期号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球 from 日志表 "
                       "where 期号=? order by 序号 asc"));
    rows.bind(1, issue);
    while (rows.next()) {
        Reds reds{};
        for (int i = 1; i <= kRedsPerTicket; ++i) reds[size_t(i)] = rows.intColumn(1 + i);
        line(export_Line(options, rows.intColumn(0), rows.intColumn(1), reds, rows.intColumn(8)));
    }
}

int export_HaoMa(IssueNumber issue, const QString& fileName) {
    Screen& ui = screen();
    TicketExportOptions options = export_LastOptions();
    if (!ui.ui_ToFile(options)) return -1;
    export_LastOptions() = options;
    const QString path = askExportPath(fileName);
    if (path.isEmpty()) return -1;

    const int total =
        store().scalar(QStringLiteral("select count(*) from 日志表 where 期号=?"), {issue}).toInt();
    QString text;
    bool written = false;
    int count = 0;
    {
        RunPanel panel(total);
        const bool blankLines = options.daoChuXuanXiang[TicketExportOptions::kBlankLines];
        text.reserve(total * 24);
        export_EachLine(issue, options, [&](const QString& line) {
            text += line;
            text += u'\n';
            ++count;
            panel.step(count);
            if (blankLines && count % 5 == 0) text += u'\n';
            ui.ui_Pump();
        });
        panel.show(count);
        written = write_WenJian(path, text);  // a file that cannot be written keeps its old text
    }
    if (!written) {
        ui.ui_Message(msg::exportNotWritten(path), MessageKind::Warning);
        log_Append(msg::exportNotWritten(path));
        return -1;
    }
    set_ExportFolder(QFileInfo(path).absolutePath());
    log_Append(msg::exportLogged(path));
    if (count >= 1) handOverExport(path, text, msg::exportDone(count, path));
    return count;
}

void jiXuan_Export(const JiXuanHao& hao) {
    const QString text = jiXuan_Text(hao);
    if (text.isEmpty()) return;
    const QString path = askExportPath(kDaoChuFileName);
    if (path.isEmpty()) return;
    if (!write_WenJian(path, text)) {
        screen().ui_Message(msg::exportNotWritten(path), MessageKind::Warning);
        return;
    }
    set_ExportFolder(QFileInfo(path).absolutePath());
    handOverExport(path, text, msg::jiXuanExported(path));
}

}  // namespace dovrex
