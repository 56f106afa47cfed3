#include "headless/history_headless.h"

#include "domain/date_value.h"
#include "filters/history_range.h"
#include "headless/headless_runner.h"
#include "history/draw_download.h"
#include "history/draw_records.h"
#include "history/history_queries.h"
#include "screen/shared_state.h"

namespace dovrex {

bool headless_DrawAdd(HeadlessRunner& r, const HeadlessArgs& a) {
    if (!r.requireStore()) return false;
    if (a.words.size() != 9)
        return r.fail(QStringLiteral("draw-add <issue> <yyyy/mm/dd> <r1> .. <r6> <blue>"));
    const auto day = parseDateText(a.words[1]);
    if (!day) return r.fail(QStringLiteral("not a date: ") + a.words[1]);
    DrawInput in;
    in.boxes[0] = a.words[0];
    for (int i = 1; i <= 7; ++i) in.boxes[size_t(i)] = a.words[i + 1];
    in.date = toQDate(*day);
    const IssueNumber newest = latest_QiHao();
    if (!storeEnteredDraw(in)) return r.fail(QStringLiteral("draw not stored"));
    follow_NewestDraw(newest);
    r.print(QStringLiteral("stored %1, next %2 on %3").arg(a.words[0], in.boxes[0], dateText(in.date)));
    return true;
}

bool headless_DrawDelete(HeadlessRunner& r, const HeadlessArgs& a) {
    if (!r.requireStore()) return false;
    if (!a.text.isEmpty()) r.screen().answerText(a.text);
    static const char* const words[] = {"cancelled", "missing", "deleted"};
    r.print(QLatin1String(words[int(cmm_scls(true))]));
    return true;
}

bool headless_DrawSearch(HeadlessRunner& r, const HeadlessArgs& a) {
    if (!r.requireStore()) return false;
    QList<SearchTerm> terms;
    for (const QString& w : a.words) {
        const qsizetype eq = w.indexOf(u'=');
        if (eq <= 0) return r.fail(QStringLiteral("draw-search <column>=<text> ..."));
        terms << SearchTerm{w.left(eq), w.mid(eq + 1)};
    }
    const SearchResult result = filterBegin(terms);
    r.print(result.ran ? QStringLiteral("found %1").arg(result.count) : QStringLiteral("no condition"));
    return true;
}

bool headless_Download(HeadlessRunner& r, const HeadlessArgs& a) {
    if (!r.requireStore()) return false;
    static const char* const words[] = {"updated", "failed", "error"};
    const IssueNumber newest = latest_QiHao();
    const DownloadResult result = downloadNewDraws(a.text);
    follow_NewestDraw(newest);
    r.print(QStringLiteral("%1, next mirror %2")
                .arg(QLatin1String(words[int(result)]))
                .arg(shared().g_MirrorIndex + 1));
    return true;
}

bool headless_DownloadFile(HeadlessRunner& r, const HeadlessArgs& a) {
    if (!r.requireStore()) return false;
    if (a.text.isEmpty()) return r.fail(QStringLiteral("download-file <file>"));
    static const char* const words[] = {"updated", "failed", "error"};
    const IssueNumber newest = latest_QiHao();
    const DownloadResult result = update_FromFile(a.text);
    follow_NewestDraw(newest);
    r.print(QLatin1String(words[int(result)]));
    return true;
}

bool headless_Lookup(HeadlessRunner& r, const HeadlessArgs& a) {
    if (!r.requireStore()) return false;
    if (!a.text.isEmpty()) r.screen().answerText(a.text);
    static const char* const words[] = {"cancelled", "not found", "opened"};
    r.print(QLatin1String(words[int(cmm_kuaisusezi())]));
    return true;
}

bool headless_Mirrors(HeadlessRunner& r, const HeadlessArgs& a) {
    if (!r.requireStore()) return false;
    if (!a.words.isEmpty()) {
        if (a.words.size() != 3) return r.fail(QStringLiteral("mirrors [<url1> <url2> <url3>]"));
        save_MirrorAddresses(a.words);
    }
    const QStringList list = load_MirrorAddresses();
    for (int i = 0; i < list.size(); ++i)
        r.print(
            QStringLiteral("%1%2 %3").arg(QChar(i == shared().g_MirrorIndex ? u'*' : u' ')).arg(i + 1).arg(list[i]));
    return true;
}

}  // namespace dovrex
