// The three kinds of draw source read from samples written from their public formats.
#include <gtest/gtest.h>

#include <QDate>
#include <QFile>
#include <QStringDecoder>

#include "domain/date_value.h"
#include "history/draw_list.h"
#include "history/draw_sources.h"
#include "support/test_support.h"

using namespace dovrex;
using dovrex::test::testData;

namespace {

QList<IssueNumber> issuesOf(const SourceDraws& s) {
    QList<IssueNumber> issues;
    for (const DrawRecord& d : s.draws) issues << d.issue;
    return issues;
}

}  // namespace

TEST(DrawSources, EachResponseIsToldByItsContentAndReadWithBadDrawsCounted) {
    const QByteArray drawList =
        "双色球 336\r\n2003001 2003/02/23 10 11 12 13 26 28 11\r\n"
        "2003002 2003/02/27 34 09 19 20 21 26 12\r\n2003003 2003/03/02 01 07 10 23 28 32 16\r\n";
    // clang-format off
    struct Case { const char* what; QByteArray body, contentType; DrawSourceKind kind;
                  QList<IssueNumber> issues; int refused; };
    const Case cases[] = {
        {"draw list, a red folded to 0", drawList, "text/plain", DrawSourceKind::DrawList, {2003001, 2003003}, 1},
        {"notices page 1", testData("notices_page1.json"), "application/json", DrawSourceKind::Notices,
         {2026098, 2026097, 2026096}, 0},
        {"notices page 2: a red twice, a numeric code", testData("notices_page2.json"), "application/json;charset=UTF-8",
         DrawSourceKind::Notices, {2003001}, 1},
        {"text list, UTF-8, oldest first", testData("text_list_asc.txt"), "text/plain", DrawSourceKind::TextList,
         {2003001, 2003002, 2003003, 2026096, 2026097}, 2},
        {"text list, GB18030, five-digit issues, newest first", testData("text_list_desc_gb18030.txt"), "text/plain",
         DrawSourceKind::TextList, {2026098, 2026097, 2003002}, 1},
        {"an HTML page", testData("not_a_list.html"), "text/html", DrawSourceKind::Unknown, {}, 0},
        {"JSON of another shape", testData("other_shape.json"), "application/json", DrawSourceKind::Unknown, {}, 0},
        {"an empty body", QByteArray(), "text/plain", DrawSourceKind::Unknown, {}, 0},
        {"a body over the limit", QByteArray(kMaxDrawSourceBytes + 1, '1'), "text/plain", DrawSourceKind::Unknown, {}, 0},
    };
    // clang-format on
    for (const Case& c : cases) {
        const SourceDraws got = read_DrawSource(c.body, c.contentType, 2002991, 2006001);
        EXPECT_EQ(got.kind, c.kind) << c.what;
        EXPECT_EQ(issuesOf(got), c.issues) << c.what;
        EXPECT_EQ(got.refused.count(), c.refused) << c.what;
    }
}

TEST(DrawSources, NoticesCarryTheirDatesBallsAndPrizeTiers) {
    const SourceDraws page = read_Notices(QString::fromUtf8(testData("notices_page1.json")));
    ASSERT_EQ(page.draws.size(), 3);
    EXPECT_EQ(page.pageCount, 2);
    const DrawRecord& d = page.draws[2];
    EXPECT_EQ(std::tuple(dateText(d.date), d.reds, d.blue),
              std::tuple(QStringLiteral("2026/08/20"), makeReds(1, 4, 16, 22, 26, 31), 4));
    ASSERT_EQ(page.prizes.size(), 18);  // tiers 1..6 of each draw; the seventh entry is not a tier
    // [12] is 2026096's tier 1; issue, tier and prize as stored: DownloadTest.TheOfficialNoticesArePaged...
    EXPECT_EQ(std::tuple(page.prizes[12].winners, page.prizes[0].winners), std::tuple(8, 0));

    // The text list gives the same draw from a five-digit issue and a date without separators.
    const SourceDraws list = read_TextList(QStringDecoder("GB18030")(testData("text_list_desc_gb18030.txt")));
    ASSERT_FALSE(list.draws.isEmpty());
    EXPECT_EQ(dateText(list.draws[0].date), QStringLiteral("2026/08/25"));
    EXPECT_EQ(std::pair(list.draws[0].reds, list.draws[0].blue),
              std::pair(page.draws[0].reds, page.draws[0].blue));
}

// The ranges are the record check's (RecordChecks); a reader only has to go through it.
TEST(DrawSources, ADrawMustBeOneTheEntryRowWouldTake) {
    DrawRecord d{2026096, toDateValue(QDate(2026, 8, 20)), makeReds(1, 4, 16, 22, 26, 31), 4};
    EXPECT_TRUE(valid_Draw(d));
    d.reds[6] = 34;
    EXPECT_FALSE(valid_Draw(d));
}
