// The draw list: its reading, and the download from a server on the loopback.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QStringEncoder>

#include "history/draw_download.h"
#include "history/draw_list.h"
#include "history/draw_records.h"
#include "history/draw_sources.h"
#include "history/history_queries.h"
#include "screen/chosen_file.h"
#include "store/factory_data.h"
#include "store/pack.h"
#include "store/schema.h"
#include "support/draw_list_server.h"
#include "support/table_rows.h"
#include "support/test_support.h"

using namespace dovrex;
using namespace dovrex::test;

namespace {

const QString kListPath = QStringLiteral("/ssq/list.txt");

// The columns of 历史记录, quoted, in the schema's order.
QString historyColumns() {
    QStringList cols;
    for (const QString& c : schema::historyColumns()) cols << u'"' + c + u'"';
    return cols.join(u',');
}

// Every column of every draw from..to, in issue order.
QList<QVariantList> historyRows(Store& s, IssueNumber from = 0, IssueNumber to = 9999999) {
    return queryRows(s,
                     QStringLiteral("select %1 from 历史记录 where 期号>=? and 期号<=? order by 期号")
                         .arg(historyColumns()),
                     {from, to});
}

int historyCount(Store& s) {
    return s.scalar(QStringLiteral("select count(*) from 历史记录")).toInt();
}

}  // namespace

TEST(DrawList, CleaningKeepsDigitsAndSlashesAndADrawIsReadAtItsFixedPlaces) {
    EXPECT_EQ(clean_Shuju(QStringLiteral("\uFEFF双色球 336\r\n2003001  2003/02/23,10 11")),
              QStringLiteral("#336#2003001#2003/02/23#10#11"));
    EXPECT_TRUE(is_DrawList(clean_Shuju(QStringLiteral("<p>336</p>2003001"))));
    EXPECT_FALSE(is_DrawList(clean_Shuju(QStringLiteral("336 2003001"))));     // no head before the mark
    EXPECT_FALSE(is_DrawList(clean_Shuju(QStringLiteral("v1 336 2003001"))));  // a header with a digit
    EXPECT_FALSE(is_DrawList(QString()));
    const QString text = clean_Shuju(QStringLiteral(
        "x336 2003001 2003/02/23 10 11 12 13 26 28 11\n2003002 2003/02/27 99 34 00 20 21 26 20\n"
        "2003003 2003/13/02 01 07 10 23 28 32 16\n2003004 2003/03/06 04 06 07 10 13 25 0"));
    DrawRecord d;
    ASSERT_TRUE(parse_QiHao(2003001, text, d));
    EXPECT_EQ(d.issue, 2003001);
    EXPECT_EQ(dateText(d.date), QStringLiteral("2003/02/23"));
    EXPECT_EQ(d.reds, makeReds(10, 11, 12, 13, 26, 28));
    EXPECT_EQ(d.blue, 11);
    ASSERT_TRUE(parse_QiHao(2003002, text, d));
    EXPECT_EQ(d.reds, makeReds(99, 34, 0, 20, 21, 26));  // read as they stand, for the check to refuse
    EXPECT_EQ(d.blue, 20);
    EXPECT_FALSE(parse_QiHao(2003003, text, d));  // a date that does not read
    EXPECT_FALSE(parse_QiHao(2003004, text, d));  // cut before the end of its blue
    EXPECT_FALSE(parse_QiHao(2003005, text, d));
}

TEST(DrawList, TheIndexFindsWhatAPlainSearchFinds) {
    // A repeated issue (the first place counts), an issue inside a longer number, a short number.
    const QString text = clean_Shuju(
        QStringLiteral("x336 2003001 2003/02/23 10 11 12 13 26 28 11 2003001 2003/02/24 01 02 03 04 05 06 07 "
                       "12003002 2003/02/27 01 02 03 04 05 06 07 99 2003/03/01 01 02 03 04 05 06 07 200300 "
                       "2003003 2003/03/02 01 "
                       "02 03 04 05 06 07"));
    const DrawListText list(text);
    for (IssueNumber x : {2003001, 2003002, 2003003, 2003004, 99, 200300, 3001}) {
        DrawRecord plain, indexed;
        EXPECT_EQ(list.find(x), text.indexOf(QString::number(x) + u'#')) << x;
        EXPECT_EQ(parse_QiHao(x, list, indexed), parse_QiHao(x, text, plain)) << x;
        EXPECT_EQ(indexed.date, plain.date) << x;
        EXPECT_EQ(indexed.reds, plain.reds) << x;
    }
}

// A fresh store as the shared one, the shipped history as the reference and the source of the
// list, and a server that serves the list on every mirror.
class DownloadTest : public FreshStoreTest {
  protected:
    void SetUp() override {
        ASSERT_TRUE(unpack(shippedPackPath(), tempPath(QStringLiteral("ref.dat")),
                           tempPath(QStringLiteral("ref.aux"))));
        reference = Store::open(tempPath(QStringLiteral("ref.dat")));
        allDraws = read_DrawRecords(*reference);
        ASSERT_TRUE(server.start());
        server.setPage(kListPath, format_DrawList(allDraws));
        useMirrors(kListPath);
        set_PageTimeout(2000);
    }
    void TearDown() override {
        set_PageTimeout(30000);
        set_PageDeadline(60000);
    }

    // The server's page at `path` on every mirror.
    void useMirrors(const QString& path) {
        save_MirrorAddresses({server.url(path), server.url(path), server.url(path)});
    }

    // Every row of the store in use equals the reference, column for column.
    void expectAsReference(IssueNumber to) {
        const QList<QVariantList> got = historyRows(db()), want = historyRows(*reference, 0, to);
        ASSERT_EQ(got.size(), want.size());
        for (int i = 0; i < got.size(); ++i) ASSERT_EQ(got[i], want[i]) << "row of " << got[i][0].toInt();
    }

    void expectFailure(const char* what) {
        const int rows = historyCount(db());
        const int mirror = shared().g_MirrorIndex;
        ui().clear();
        EXPECT_EQ(downloadNewDraws(), DownloadResult::Failed) << what;
        EXPECT_EQ(ui().messages(), QStringList{ScriptedScreen::oneLine(msg::kDownloadFailed)}) << what;
        EXPECT_EQ(shared().g_MirrorIndex, (mirror + 1) % 3) << what;
        EXPECT_EQ(historyCount(db()), rows) << what;
    }

    std::unique_ptr<Store> reference;
    QList<DrawRecord> allDraws;
    DrawListServer server;
};

TEST_F(DownloadTest, AnEmptyHistoryFillsUpToTheEndOfItsRangeAndTheNextDownloadGoesOn) {
    EXPECT_EQ(downloadNewDraws(), DownloadResult::Updated);
    EXPECT_EQ(ui().messages(), QStringList{msg::kDownloadDone});
    EXPECT_EQ(latest_QiHao(), 2006001);
    expectAsReference(2006001);
    EXPECT_FALSE(ui().progress().visible);
    EXPECT_TRUE(ui().lastStatus(2).isEmpty());
    EXPECT_FALSE(ui().linesStartingWith(QStringLiteral("STATUS 2 ") + msg::kDownloading).isEmpty());
    EXPECT_EQ(downloadNewDraws(), DownloadResult::Updated);
    EXPECT_EQ(latest_QiHao(), 2009001);
    expectAsReference(2009001);
    EXPECT_EQ(shared().g_MirrorIndex, 0);
    EXPECT_EQ(server.requests(), 2);
}

TEST_F(DownloadTest, AHistoryTenDrawsShortGetsThemAndNothingElseChanges) {
    // Start from the shipped history, derived columns and all, less its ten newest draws.
    const IssueNumber cutoff = allDraws[allDraws.size() - 11].issue;
    const QList<QVariantList> kept = historyRows(*reference, 0, cutoff);
    {
        const QStringList marks(schema::historyColumns().size(), QStringLiteral("?"));
        Transaction tx(db());
        for (const QVariantList& row : kept)
            db().execute(QStringLiteral("insert into 历史记录 (%1) values (%2)")
                             .arg(historyColumns(), marks.join(u',')),
                         row);
    }
    ASSERT_EQ(historyRows(db()), kept);
    EXPECT_EQ(downloadNewDraws(), DownloadResult::Updated);
    EXPECT_EQ(historyRows(db(), 0, cutoff), kept);
    expectAsReference(allDraws.last().issue);
    EXPECT_EQ(historyCount(db()), kept.size() + 10);
}

TEST_F(DownloadTest, AListWithHolesLeavesTheHoles) {
    QList<DrawRecord> holed;
    for (const DrawRecord& d : allDraws)
        if (d.issue < 2004010 || d.issue > 2004019) holed << d;
    server.setPage(kListPath, format_DrawList(holed));
    EXPECT_EQ(downloadNewDraws(), DownloadResult::Updated);
    EXPECT_EQ(
        intScalar(QStringLiteral("select count(*) from 历史记录 where 期号 between 2004010 and 2004019")), 0);
    EXPECT_EQ(
        historyCount(db()),
        reference->scalar(QStringLiteral("select count(*) from 历史记录 where 期号<=2006001")).toInt() - 10);
    EXPECT_EQ(
        intScalar(QStringLiteral("select count(*) from 历史记录 where 和值 is null or 温度值10 is null")), 0);
}

TEST_F(DownloadTest, EveryKindOfFailureShowsTheMessageAndMovesToTheNextMirror) {
    server.setPage(kListPath,
                   "<html><head><title>双色球</title></head><body>2003001 2003/02/23</body></html>",
                   "text/html; charset=utf-8");
    expectFailure("a page that is not a draw list");
    useMirrors(QStringLiteral("/nothing.txt"));
    expectFailure("a missing page");
    EXPECT_EQ(shared().g_MirrorIndex, 2);

    server.setMode(DrawListServer::Mode::Silent);
    set_PageTimeout(300);
    QElapsedTimer t;
    t.start();
    expectFailure("a server that never answers");
    EXPECT_LT(t.elapsed(), 5000);
    EXPECT_EQ(shared().g_MirrorIndex, 0) << "after three failures the first mirror again";
    EXPECT_GT(ui().pumpCount(), 0) << "the window is kept alive while waiting";
    // A byte every 50 ms never leaves the wait idle; the deadline of the whole request ends it.
    useMirrors(kListPath);
    server.setTrickle(50);
    set_PageDeadline(1000);
    t.restart();
    expectFailure("a server that trickles");
    EXPECT_LT(t.elapsed(), 5000);

    server.stop();
    expectFailure("a server that is down");
    save_MirrorAddresses({QStringLiteral("not an address"), QString(), QString()});
    shared().g_MirrorIndex = 0;
    expectFailure("an address that does not read");
}

TEST_F(DownloadTest, ACutBodyStoresTheDrawsItHoldsAndAHugeOneNothing) {
    const QByteArray whole = format_DrawList(allDraws.mid(0, 200));
    server.setPage(kListPath, whole);
    server.setMode(DrawListServer::Mode::Truncated, whole.size() / 2 + 5);
    EXPECT_EQ(downloadNewDraws(), DownloadResult::Updated);
    const int kept = historyCount(db());
    EXPECT_GT(kept, 90);
    EXPECT_LT(kept, 110);
    const IssueNumber last = latest_QiHao();
    EXPECT_EQ(last, allDraws[kept - 1].issue);
    expectAsReference(last);
    // A whole body over the limit stores nothing (bodies of no known kind: DrawSources.EachResponse...).
    server.setMode(DrawListServer::Mode::Normal);
    const QList<QVariantList> before = historyRows(db());
    server.setPage(kListPath, QByteArray(kMaxDrawSourceBytes + 1, '7'));
    expectFailure("a body over the limit");
    EXPECT_EQ(historyRows(db()), before);
}

TEST_F(DownloadTest, MirrorAddressesAreKeptInTheStoreAndTheNextIsAskedAfterAFailure) {
    db().execute(QStringLiteral("delete from 下载地址"));
    EXPECT_EQ(load_MirrorAddresses(), defaultMirrorAddresses());
    save_MirrorAddresses(
        {QStringLiteral("http://a.example/l.txt"), QString(), QStringLiteral(" http://c.example/l.txt ")});
    EXPECT_EQ(load_MirrorAddresses(),
              (QStringList{QStringLiteral("http://a.example/l.txt"), defaultMirrorAddresses()[1],
                           QStringLiteral("http://c.example/l.txt")}));
    EXPECT_EQ(mirror_Address(5), QStringLiteral("http://c.example/l.txt"));
    // After a failure the next mirror is asked.
    save_MirrorAddresses(
        {server.url(QStringLiteral("/gone.txt")), server.url(kListPath), server.url(kListPath)});
    EXPECT_EQ(downloadNewDraws(), DownloadResult::Failed);
    EXPECT_EQ(downloadNewDraws(), DownloadResult::Updated);
    EXPECT_EQ(latest_QiHao(), 2006001);
}

TEST_F(DownloadTest, TheLookupOpensAnIssuesPageOnlyWhenItTellsOfADraw) {
    const QByteArray gbk = QStringEncoder("GBK")(QStringLiteral("<html>双色球 2008118 开奖</html>"));
    server.setPage(QStringLiteral("/ssq/08118.html"), gbk, "text/html; charset=GBK");
    EXPECT_EQ(lookup_Address(2008118), server.url(QStringLiteral("/ssq/08118.html")));
    ui().answerText(QStringLiteral("2008118"));
    EXPECT_EQ(cmm_kuaisusezi(), LookupResult::Opened);
    EXPECT_EQ(ui().linesStartingWith(QStringLiteral("OPENURL ")),
              QStringList{QStringLiteral("OPENURL ") + server.url(QStringLiteral("/ssq/08118.html"))});
    ui().answerText(QStringLiteral("2008119"));
    EXPECT_EQ(cmm_kuaisusezi(), LookupResult::NotFound);
    EXPECT_EQ(ui().messages(), QStringList{msg::kLookupMissing});
    ui().answerText(QString());
    EXPECT_EQ(cmm_kuaisusezi(), LookupResult::Cancelled);
}

namespace {
const QString kNoticePath = QStringLiteral("/cwl_admin/front/cwlkj/search/kjxx/findDrawNotice");
}  // namespace

TEST_F(DownloadTest, TheOfficialNoticesArePagedStoredWithTheirPrizesAndWinOverStoredNumbers) {
    server.setPage(kNoticePath + QStringLiteral("?pageNo=1"), testData("notices_page1.json"),
                   "application/json");
    server.setPage(kNoticePath + QStringLiteral("?pageNo=2"), testData("notices_page2.json"),
                   "application/json");
    save_MirrorAddresses({server.url(kNoticePath + QStringLiteral("?name=ssq")), server.url(kListPath),
                          server.url(kListPath)});

    EXPECT_EQ(downloadNewDraws(), DownloadResult::Updated);
    EXPECT_EQ(
        ui().messages(),
        QStringList{ScriptedScreen::oneLine(msg::kDownloadDone + QStringLiteral("\n已拒绝 1 条：第 1 条"))});
    EXPECT_EQ(server.requests(), 2);
    const QByteArray head = server.lastRequest();
    EXPECT_TRUE(head.contains("User-Agent: Mozilla/5.0")) << head.constData();
    EXPECT_TRUE(head.contains("Referer: " + server.url(QStringLiteral("/")).toUtf8())) << head.constData();
    EXPECT_FALSE(head.contains("issueStart")) << "an empty table asks for the whole history";
    EXPECT_EQ(historyCount(db()), 4);
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 奖级奖金")), 18);
    EXPECT_EQ(intScalar(QStringLiteral("select 奖金 from 奖级奖金 where 期号=2026096 and 奖级=1")), 6821493);
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 奖级奖金 where 奖金 is null")), 1);
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 历史记录 where 和值 is null")), 0);
    // A second download asks from ten issues before the newest and corrects a mistyped draw unasked.
    db().execute(QStringLiteral("update 历史记录 set 蓝球=16 where 期号=2026097"));
    ui().clear();
    EXPECT_EQ(downloadNewDraws(), DownloadResult::Updated);
    EXPECT_TRUE(server.lastRequest().contains("issueStart=2026088"));
    EXPECT_TRUE(ui().linesStartingWith(QStringLiteral("CONFIRM")).isEmpty());
    EXPECT_EQ(intScalar(QStringLiteral("select 蓝球 from 历史记录 where 期号=2026097")), 7);
}

TEST_F(DownloadTest, AListMovesAStoredDrawOnlyWhenTheUserAgrees) {
    server.setPage(kListPath, testData("text_list_asc.txt"));
    EXPECT_EQ(downloadNewDraws(), DownloadResult::Updated);
    EXPECT_EQ(historyCount(db()), 5);
    EXPECT_EQ(ui().messages(), QStringList{ScriptedScreen::oneLine(
                                   msg::kDownloadDone + QStringLiteral("\n已拒绝 2 行：第 4、7 行"))});
    // Only the newest draws are read from a whole list once the table has some.
    db().execute(QStringLiteral("update 历史记录 set 蓝球=16 where 期号 in (2003001, 2026097)"));
    ui().answerConfirm(false);
    EXPECT_EQ(downloadNewDraws(), DownloadResult::Updated);
    EXPECT_EQ(intScalar(QStringLiteral("select 蓝球 from 历史记录 where 期号=2026097")), 16);
    ui().answerConfirm(true);
    EXPECT_EQ(downloadNewDraws(), DownloadResult::Updated);
    EXPECT_EQ(intScalar(QStringLiteral("select 蓝球 from 历史记录 where 期号=2026097")), 7);
    EXPECT_EQ(intScalar(QStringLiteral("select 蓝球 from 历史记录 where 期号=2003001")), 16);
    EXPECT_EQ(ui().linesStartingWith(QStringLiteral("CONFIRM ")).size(), 2);
}

TEST_F(DownloadTest, ASavedFileIsReadByTheSameReaders) {
    ui().answerFile(QStringLiteral(DOVREX_SOURCE_DIR "/tests/data/notices_page1.json"));
    EXPECT_EQ(update_FromFile(), DownloadResult::Updated);
    EXPECT_EQ(historyCount(db()), 3);
    EXPECT_EQ(update_FromFile(QStringLiteral(DOVREX_SOURCE_DIR "/tests/data/not_a_list.html")),
              DownloadResult::Failed);
    EXPECT_EQ(update_FromFile(QStringLiteral("/dev/zero")), DownloadResult::Failed);
    EXPECT_EQ(ui().messages(), (QStringList{msg::kDownloadDone, msg::kNotADrawFile, msg::kNotARegularFile}));
    EXPECT_EQ(historyCount(db()), 3);
    EXPECT_EQ(server.requests(), 0);
}
