#include <sys/stat.h>
#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QStringEncoder>

#include "core/pipeline_fixture.h"
#include "results/ticket_export.h"
#include "results/ticket_import.h"
#include "screen/chosen_file.h"
#include "support/table_rows.h"

namespace dovrex::test {
namespace {

constexpr IssueNumber kIssue = 2008118;
const Reds kReds = makeReds(1, 2, 3, 4, 5, 6);

TicketExportOptions exportOptions(const char* switches, const QString& red, const QString& blue) {
    TicketExportOptions o;
    for (int i = 0; i < 4; ++i) o.daoChuXuanXiang[size_t(i)] = switches[i] == '1';
    o.hongJianGe = red;
    o.hongLanJianGe = blue;
    return o;
}

TEST(ExportLine, LayoutsOfEachSwitchAndSeparator) {
    struct Case {
        const char* switches;
        const char16_t *red, *blue;
        int serial, ball;
        const char16_t* line;
    };
    const Case cases[] = {
        {"0010", u" ", u"+", 1, 7, u"01 02 03 04 05 06+07"},
        {"0010", u",", u"|", 1, 7, u"01,02,03,04,05,06|07"},
        // The red separator replaces the blanks behind 序号 and 期号 too.
        {"1111", u",", u"+", 1, 7, u"1,,,,,,,2008118,01,02,03,04,05,06+07"},
        {"0010", u" ", u" ", 1, 7, u"01 02 03 04 05 06 07"},
        // Without 号码 the blanks stay and the line is trimmed.
        {"1100", u",", u"+", 12, 7, u"12      2008118"},
        {"0000", u" ", u" ", 12, 7, u""},
        {"1010", u"，", u"；", 123456789, 16, u"12345678901，02，03，04，05，06；16"},  // no room for a blank
    };
    for (const Case& c : cases)
        EXPECT_EQ(
            export_Line(exportOptions(c.switches, QString::fromUtf16(c.red), QString::fromUtf16(c.blue)),
                        c.serial, kIssue, kReds, c.ball),
            QString::fromUtf16(c.line))
            << c.switches;
    // The free preset leaves the separators as typed; the list's "空格" stands for a blank.
    TicketExportOptions o = exportOptions("0010", QStringLiteral("#"), QStringLiteral("y"));
    EXPECT_FALSE(export_ApplyPreset(export_PresetItems()[2], o));
    EXPECT_EQ(o.hongJianGe, QStringLiteral("#"));
    EXPECT_EQ(export_SeparatorText(QStringLiteral("空格")), QStringLiteral(" "));
}

struct Parsed {
    bool ok;
    ImportedTicket t;
};
Parsed parse(const QString& line, int layout) {
    Parsed p{};
    p.ok = import_ParseLine(line, layout, p.t);
    return p;
}
// The reds of a line the layout reads, none when it does not.
Reds redsRead(const QString& line, int layout = 0) {
    const Parsed p = parse(line, layout);
    return p.ok ? p.t.reds : Reds{};
}

// Lines shaped as the export writes them are read back in ExportThenImportGivesTheSameTickets.
TEST(ImportLine, ExamplesOfEachLayoutRangesLengthsAndSeparators) {
    EXPECT_EQ(parse(QStringLiteral("01 02 03 04 05 06+07"), 0).t.issue, 0);
    EXPECT_FALSE(parse(QStringLiteral("200811 01 02 03 04 05 06 07"), 1).ok);  // no 7-digit run
    EXPECT_FALSE(parse(QStringLiteral("0000000 01 02 03 04 05 06 07"), 1).ok);
    // The serial field is dropped whatever the separators behind it.
    EXPECT_EQ(redsRead(QStringLiteral("77520   01-02-03-04-05-06-07"), 2), kReds);
    // The export with every switch and "," keeps its issue behind a comma: no layout reads it.
    for (int layout = 0; layout <= 2; ++layout)
        EXPECT_FALSE(parse(QStringLiteral("1,,,,,,,2008118,01,02,03,04,05,06+07"), layout).ok) << layout;
    // Thirteen characters of valid numbers are too short; blanks around do not count. Letters
    // between numbers are skipped up to the next digit; a missing seventh number rejects. Tabs are
    // no separators; a number far out of range reads as its value.
    const std::pair<const char16_t*, bool> cases[] = {
        {u"01 02 03 04 05 34+07", false},       {u"01 02 03 04 05 06+17", false},
        {u"00 02 03 04 05 06+16", false},       {u"33 32 31 30 29 28+16", true},
        {u"   1 2 3 4 5 6 7   ", false},        {u"1 2 3 4 5 6 7  9 9", true},
        {u"01 01 01 01 01 01 01", true},        {u"01,a02,b03,c04,d05,e06,f07", true},
        {u"01 02 03 04 05 06 blue", false},     {u"红球 01 02 03 04 05 06 07", false},
        {u"01\t02\t03\t04\t05\t06\t07", false}, {u"99999999999999999999999 02 03 04 05 06 07", false},
    };
    for (const auto& [line, ok] : cases)
        EXPECT_EQ(parse(QString::fromUtf16(line), 0).ok, ok) << QString::fromUtf16(line).toStdString();
    // Full-width comma, ideographic space, minus and plus are separators; order and repeats stay.
    EXPECT_EQ(redsRead(QStringLiteral("06，05　04-03+02 01 16")), makeReds(6, 5, 4, 3, 2, 1));
    // An exponent reads as its value.
    EXPECT_EQ(redsRead(QStringLiteral("1e1,02,03,04,05,06,07")), makeReds(10, 2, 3, 4, 5, 6));
}

QStringList readLines(const QByteArray& bytes) {
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QStringList lines;
    read_TicketLines(buffer, [&](QStringView line) { lines << line.toString(); });
    return lines;
}

TEST(ImportText, EncodingsAreToldApartLineByLine) {
    const QStringList lines{QStringLiteral("红球，01，02，03"), QStringLiteral("第2注：04 05"),
                            QStringLiteral("蓝球")};
    QStringEncoder gb("GB18030");
    ASSERT_TRUE(gb.isValid());
    // One encoding throughout, with and without a mark, with each kind of line end.
    EXPECT_EQ(readLines(lines.join(QStringLiteral("\r\n")).toUtf8()), lines);
    EXPECT_EQ(readLines("\xEF\xBB\xBF" + lines.join(u'\n').toUtf8() + '\n'), lines);
    EXPECT_EQ(readLines(gb.encode(lines.join(u'\r'))), lines);
    for (auto utf16 : {QStringConverter::Utf16LE, QStringConverter::Utf16BE}) {
        QStringEncoder encoder(utf16, QStringConverter::Flag::WriteBom);
        EXPECT_EQ(readLines(encoder.encode(lines.join(QStringLiteral("\r\n")))), lines);
    }
    // A file pieced together from two tools: every line is read in its own encoding.
    const QByteArray mixed = lines[0].toUtf8() + "\r\n" + gb.encode(lines[1]) + "\n" + lines[2].toUtf8();
    EXPECT_EQ(readLines(mixed), lines);
    EXPECT_TRUE(readLines(QByteArray()).isEmpty());
}

class TicketFilesTest : public PipelineTest {
  protected:
    TicketFilesTest() { shared().paths = paths(); }

    // Seven tickets of varied numbers, reds in no particular order.
    static void addSample(IssueNumber issue = kIssue) {
        for (int i = 0; i < 7; ++i)
            addTicket(issue, makeReds(33 - i, 1 + i, 10 + i, 20, 5 + 2 * i + 2 * (i == 5), 31 - 3 * i),
                      1 + (i * 5) % 16);  // six different reds in each
    }
    QString exportPath() const { return QDir(paths().programDir).filePath(kDaoChuFileName); }
    // 序号|期号|reds|blue of the rows from ID `from` on.
    static QStringList rowsFrom(int from) {
        return queryLines(
            store(),
            QStringLiteral("select 序号,期号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球 from 日志表 "
                           "where ID>=? order by ID"),
            {from});
    }
};

TEST_F(TicketFilesTest, ExportWritesFileAndClipboardUnlessCancelledOrEmpty) {
    tempFile(QStringLiteral("program/") + kDaoChuFileName, "old");
    addSample();
    ui().answerToFile(std::nullopt);
    EXPECT_EQ(export_HaoMa(kIssue), -1);
    EXPECT_EQ(fileBytes(exportPath()), QByteArray("old"));
    load_TouZhuBiao(kIssue);
    ui().answerToFile(exportOptions("0011", QStringLiteral(" "), QStringLiteral("+")));
    EXPECT_EQ(export_HaoMa(get_BiaoGeQiHao()), 7);
    const QString text = QString::fromUtf8(fileBytes(exportPath()));
    EXPECT_EQ(text, QStringLiteral("33 01 10 20 05 31+01\n32 02 11 20 07 28+06\n31 03 12 20 09 25+11\n"
                                   "30 04 13 20 11 22+16\n29 05 14 20 13 19+05\n\n"
                                   "28 06 15 20 17 16+10\n27 07 16 20 17 13+15\n"));
    EXPECT_TRUE(ui().lines().contains(QStringLiteral("CLIPBOARD ") + ScriptedScreen::oneLine(text)));
    EXPECT_TRUE(ui().messages().contains(ScriptedScreen::oneLine(msg::exportDone(7, exportPath()))));
    EXPECT_TRUE(ui().lines().contains(QStringLiteral("OPENFILE ") + exportPath()));
    EXPECT_TRUE(shared().operationLog.endsWith(msg::exportLogged(exportPath())));
    // The next export opens on these choices.
    EXPECT_TRUE(export_LastOptions().daoChuXuanXiang[3]);
    // No ticket of that issue: an empty file, nothing copied; the command says so.
    ui().clear();
    store_Execute(QStringLiteral("DELETE FROM 日志表"));
    cmmTouZhu_Click(kCmdExport);
    EXPECT_TRUE(fileBytes(exportPath()).isEmpty());
    EXPECT_TRUE(ui().linesStartingWith(QStringLiteral("CLIPBOARD")).isEmpty());
    EXPECT_EQ(ui().messages(), QStringList{msg::kNothingToExport});
}

// Every switch set and separator pair whose lines a layout reads back gives the same tickets.
TEST_F(TicketFilesTest, ExportThenImportGivesTheSameTickets) {
    struct Case {
        const char* switches;
        QString red, blue;
        int layout;
    };
    const QString blank = QStringLiteral(" ");
    const std::vector<Case> cases{
        {"0010", blank, QStringLiteral("+"), 0},  // 淘宝
        {"0011", blank, blank, 0},
        {"0010", QStringLiteral(","), QStringLiteral(","), 0},
        {"0010", QStringLiteral("，"), QStringLiteral("-"), 0},
        {"0010", QStringLiteral("-"), QStringLiteral("+"), 0},
        {"0110", blank, QStringLiteral("+"), 1},
        {"1110", blank, blank, 1},
        {"0110", blank, QStringLiteral("，"), 1},
        {"1010", blank, QStringLiteral("+"), 2},
        {"1011", QStringLiteral(","), QStringLiteral("+"), 2},
        {"1010", QStringLiteral("，"), QStringLiteral("，"), 2},
    };
    addSample(kIssue);
    const QStringList before = rowsFrom(0);
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.switches) + " layout " + std::to_string(c.layout) + " " +
                     c.red.toStdString());
        ui().answerToFile(exportOptions(c.switches, c.red, c.blue));
        ASSERT_EQ(export_HaoMa(kIssue), 7);
        ui().answerFromFile(TicketImportOptions{c.layout, QString::number(kIssue)});
        ui().answerConfirm(false);  // drop what the table holds
        EXPECT_EQ(import_HaoMa(exportPath()), 7);
        EXPECT_EQ(rowsFrom(0), before);
    }
    // 财付通's "|" is no separator on the way in.
    ui().answerToFile(exportOptions("0010", QStringLiteral(","), QStringLiteral("|")));
    export_HaoMa(kIssue);
    ui().answerConfirm(false);
    EXPECT_EQ(import_HaoMa(exportPath()), 0);
}

TEST_F(TicketFilesTest, ImportKeepsOrDeletesAndCountsOn) {
    addSample(kIssue);
    addSample(kIssue + 1);
    const QString file = tempFile(QStringLiteral("t.txt"),
                                  "01 02 03 04 05 06+07\r\nbad line\r\n\r\n"
                                  "2008120 01 02 03 04 05 06 08\n09 08 07 06 05 04 03");
    TicketImportOptions in{TicketImportOptions::kNumbersOnly, QStringLiteral("2008200")};
    ui().answerFromFile(in);
    ui().answerConfirm(true);
    EXPECT_EQ(import_HaoMa(file), 2);  // the line with an issue reads 2008120 as a red
    EXPECT_EQ(tickets().size(), 16u);
    EXPECT_EQ(rowsFrom(15), words("15|2008200|1|2|3|4|5|6|7 16|2008200|9|8|7|6|5|4|3"));
    EXPECT_TRUE(ui().lines().contains(QStringLiteral("CONFIRM 表格中原有的数据要保留吗？ -> yes")));
    EXPECT_EQ(shared().biaoJiQingLing, 0);
    // No deletes every issue; layout 1 takes each line's issue and skips lines without one.
    in.daoRuGeShi = TicketImportOptions::kIssueAndNumbers;
    ui().answerFromFile(in);
    ui().answerConfirm(false);
    EXPECT_EQ(import_HaoMa(file), 1);
    EXPECT_EQ(rowsFrom(0), words("1|2008120|1|2|3|4|5|6|8"));
}

TEST_F(TicketFilesTest, ImportDialogRefusalsAndCancel) {
    const QString file = tempFile(QStringLiteral("t.txt"), "01 02 03 04 05 06+07\n");
    ui().answerFromFile(TicketImportOptions{TicketImportOptions::kNumbersOnly, QStringLiteral("200811")});
    ui().answerFromFile(TicketImportOptions{TicketImportOptions::kNumbersOnly, QStringLiteral("2008118")});
    EXPECT_EQ(import_HaoMa(file), 1);
    EXPECT_EQ(ui().messages(), QStringList{msg::kNeedSevenDigitIssue});
    ui().answerFromFile(std::nullopt);
    EXPECT_EQ(import_HaoMa(file), 0);
    EXPECT_EQ(rowsFrom(0), words("1|2008118|1|2|3|4|5|6|7"));
    // The dialog opens on the issue after the latest draw.
    addDraw(2008118, QStringLiteral("2008/10/09"), kReds);
    EXPECT_EQ(import_DefaultIssue(), QStringLiteral("2008119"));
}

TEST_F(TicketFilesTest, BadFilesImportNothingWrong) {
    QByteArray binary;
    for (unsigned i = 0; i < 300000; ++i) binary += char((i * 7919u + i / 13) % 256);
    // The literals keep their NUL bytes: a plain char pointer would end the file there.
    const QByteArray files[] = {
        QByteArray(),
        binary,
        QByteArray(4 << 20, '1'),                           // one huge line of digits
        QByteArray(3 << 20, ' ') + "01 02 03 04 05 06 07",  // huge, but one good ticket
        "01 02 03 04 05 06 07\r" + QByteArray(1 << 20, ',') + "\r08 09 10 11 12 13 14\r",
        QByteArrayLiteral("\xFF\xFE\x00\xD8 01 02 03 04 05 06 07"),  // UTF-16 with a lone surrogate
        QByteArrayLiteral("01 02 03 04 05 06 0\x00"
                          "7\n34 02 03 04 05 06 07\n01 02 03 04 05 06 17\n-1 02 03 04 05 06 07")};
    int total = 0;
    for (size_t i = 0; i < std::size(files); ++i) {
        SCOPED_TRACE(i);
        const QString file = tempFile(QStringLiteral("bad%1.txt").arg(i), files[i]);
        ui().answerFromFile(TicketImportOptions{int(i % 3), QStringLiteral("2008118")});
        total += import_HaoMa(file);
    }
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 日志表")), total);
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 日志表 where 红球1<1 or 红球1>33 or 红球2<1 or "
                                       "红球2>33 or 红球3<1 or 红球3>33 or 红球4<1 or 红球4>33 or 红球5<1 or "
                                       "红球5>33 or 红球6<1 or 红球6>33 or 蓝球<1 or 蓝球>16")),
              0);
    // A file that is not there imports nothing; a pipe or a folder is refused at once, never waited
    // on, and the table is not asked about.
    ui().answerFromFile(TicketImportOptions{0, QStringLiteral("2008118")});
    EXPECT_EQ(import_HaoMa(tempPath(QStringLiteral("missing.txt"))), 0);
    const QString pipe = tempPath(QStringLiteral("pipe.txt"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (const QString& path : {pipe, tempPath(QString())}) {
        ui().clear();
        ui().answerFromFile(TicketImportOptions{0, QStringLiteral("2008118")});
        EXPECT_EQ(import_HaoMa(path), 0);
        EXPECT_EQ(ui().messages(), QStringList{msg::kNotARegularFile});
        EXPECT_TRUE(ui().linesStartingWith(QStringLiteral("CONFIRM")).isEmpty());
    }
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 日志表")), total);
}

TEST_F(TicketFilesTest, ImportReadsChineseToolsFiles) {
    QStringEncoder gb("GB18030");
    const QString text = QStringLiteral(
        "第1注：01，02，03，04，05，06＋07\r\n"
        "　　08　09　10　11　12　13　14\r\n"
        "１２ 全角数字不读 ３ ４ ５ ６ ７\r\n"
        "21，22，23，24，25，26，15　备注\r\n");
    const QString file = tempFile(QStringLiteral("gb.txt"), gb.encode(text));
    // The full-width plus is no separator, so the first line lacks its blue; in layout 2 the leading
    // ideographic spaces become the dropped first field of the second line.
    ui().answerFromFile(TicketImportOptions{2, QStringLiteral("2008118")});
    EXPECT_EQ(import_HaoMa(file), 1);
    ui().answerFromFile(TicketImportOptions{0, QStringLiteral("2008118")});
    EXPECT_EQ(import_HaoMa(file), 1);
    EXPECT_EQ(rowsFrom(0), words("1|2008118|8|9|10|11|12|13|14 2|2008118|21|22|23|24|25|26|15"));
}

TEST_F(TicketFilesTest, ImportCommandReportsTheCountAndBindsEveryIssue) {
    addSample(kIssue - 1);
    const QString file = tempFile(QStringLiteral("t.txt"), "01 02 03 04 05 06+07\n");
    ui().answerFile(file);
    ui().answerFromFile(TicketImportOptions{0, QStringLiteral("2008118")});
    ui().answerConfirm(true);
    cmmTouZhu_Click(kCmdImport);
    EXPECT_EQ(ui().messages(), QStringList{QStringLiteral("数据导入完成，共导入：１ 注！")});
    EXPECT_TRUE(shared().operationLog.endsWith(QStringLiteral("\r\n\r\n数据导入完成，共导入：１ 注！")));
    EXPECT_EQ(ui().lines().filter(QStringLiteral("GRID TDBGrid_RZ")).last(),
              QStringLiteral("GRID TDBGrid_RZ 8 rows"));
    // No file chosen: nothing happens.
    ui().clear();
    cmmTouZhu_Click(kCmdImport);
    EXPECT_TRUE(ui().messages().isEmpty());
}

}  // namespace
}  // namespace dovrex::test
