#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include "domain/game.h"
#include "domain/record_checks.h"

namespace dovrex {

// Keeping the history complete from the published draw list: the page fetch, the three mirrors
// kept in 下载地址, the download command and the per-issue lookup.

namespace msg {
inline const QString kDownloadDone = QStringLiteral("已成功更新!");
inline const QString kDownloadTitle = QStringLiteral("下载记录");
inline const QString kDownloading = QStringLiteral(" ■■■■■  正在下载开奖数据。。。。。。  ");
inline const QString kDownloadFailed = QStringLiteral(
    "服务器忙或网络链接断开,无法完成更新!\n\n要正常更新需要电脑与互联网联接正常.\n"
    "若无法更新可能是由于你的防火墙设为禁止程序访问网络,\n你现在可以重新试试,多试几次。");
inline const QString kLookupAsk = QStringLiteral("请输入您要查询的期号（如:2008118）：");
inline const QString kLookupTitle = QStringLiteral("输入要查询的期号");
inline QString overwriteDrawsText(int count) {
    return QStringLiteral("下载的数据中有 %1 期与已存的开奖号码不同，是否以下载的为准？").arg(count);
}
inline const QString kDrawFileFilter = QStringLiteral("开奖数据 (*.txt *.json *.htm *.html);;所有文件 (*)");
inline const QString kNotADrawFile = QStringLiteral("所选文件中没有可读的开奖数据，历史记录未作改动。");
inline const QString kLookupMissing = QStringLiteral("很抱歉，没有找到该期的开奖数据。请稍后再试。。。");
}  // namespace msg

// What one HTTP GET brought: the body as far as it came (a cut transfer keeps its part), and
// whether the server answered at all with a success status.
struct PageReply {
    QByteArray body;
    QByteArray contentType;
    int status = 0;         // HTTP status, 0 when no answer came
    bool timedOut = false;  // no byte for the time-out, the deadline passed, or Stop
};

// One GET, waited for in a local event loop that keeps calling screen().ui_Pump() so that the
// window stays alive. The wait ends when the reply is complete, when nothing has arrived for the
// time-out, when the whole request has lasted the deadline, or on Stop. Needs a running
// QCoreApplication; without one nothing is fetched.
PageReply fetch_Page(const QString& url);
// get_Page: the page's text in its charset (Content-Type, a BOM or a meta tag; UTF-8 otherwise, or
// GB18030 when the bytes are not UTF-8). Empty when no answer came or the status is an error.
QString get_Page(const QString& url);
QString decode_Page(const QByteArray& body, const QByteArray& contentType);

// The time-out of a page fetch in milliseconds: how long the wait lasts without a byte arriving.
int page_Timeout();
void set_PageTimeout(int ms);
// The deadline of a whole page fetch in milliseconds, 60 s: however the bytes trickle in, the wait
// ends then, with what has come.
int page_Deadline();
void set_PageDeadline(int ms);

// The three mirror addresses (rows 1..3 of 下载地址); a missing or empty row reads as its default.
QStringList load_MirrorAddresses();
// Keeps three addresses; an empty one goes back to its default.
void save_MirrorAddresses(const QStringList& addresses);
// The address of mirror `index` (0..2, taken modulo 3).
QString mirror_Address(int index);

// fetch_KaiJiang: fetches the list from the mirror in use (or from `address` when one is given) and stores
// every draw it holds from ten issues before the latest to 3000 after, then recomputes the derived columns of
// the first draw and of that range. False, with nothing written, when the page is not a draw list.
bool fetch_KaiJiang(const QString& address = {});

struct SourceDraws;

// The official draw notice service (its path ends in findDrawNotice): asked page by page, and its
// numbers win over stored ones without a question.
bool is_NoticeService(const QString& address);
// The address of one page of notices from issue `from` on (0: every draw).
QString notice_PageAddress(const QString& address, IssueNumber from, int pageNo);

// Stores downloaded draws through store_KaiJiang in one transaction, with their prize tiers, then
// recounts the first draw and the range stored. A draw stored with other numbers is overwritten only
// when `official` or after the user agrees. Returns the count of draws written.
int store_Downloaded(SourceDraws& source, bool official);

// What a fetch came to: whether a response of a known kind was read, the draws written, the records
// refused.
struct FetchOutcome {
    bool read = false;
    int stored = 0;
    RefusedRecords refused;
};
// The fetch of one address (the mirror in use when empty), whatever its kind: the draw list from ten
// issues before the latest to 3000 after; notices and text lists from ten issues before the latest,
// or every draw when the table is empty.
FetchOutcome fetch_Draws(const QString& address = {});

// cmmUpdateHistory_Click(1) without its buttons and pages: the fetch, then "已成功更新!" or the
// five-line failure message with the move to the next mirror. Error: a store failure ended the run
// silently, keeping the draws stored so far. After Updated the window moves the entry boxes on
// (advance_Entry) and redraws its pages; after any result it calls history_Status.
enum class DownloadResult { Updated, Failed, Error };
DownloadResult downloadNewDraws(const QString& address = {});

// 从文件更新: a saved draw list, text list or notice file (picked when `path` is empty) read as a
// download would read it, for a machine without a network. Its numbers never move a stored draw
// without the user's word. Failed when nothing was picked or the file holds no draws.
DownloadResult update_FromFile(const QString& path = {});

// The page of one issue on the mirror in use: beside the list, the last five digits of the issue
// and ".html".
QString lookup_Address(IssueNumber issue);
// cmm_kuaisusezi_Click: asks for an issue (default the latest), fetches its page and opens it in
// the browser when it tells of a draw; nothing is stored.
enum class LookupResult { Cancelled, NotFound, Opened };
LookupResult cmm_kuaisusezi();

}  // namespace dovrex
