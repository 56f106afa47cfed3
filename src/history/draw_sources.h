#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include "domain/game.h"
#include "domain/record_checks.h"

namespace dovrex {

// The kinds of response a draw source gives, told apart by their content:
//  - DrawList: the published draw list, text that cleans to "#336#..." (see draw_list.h);
//  - Notices: the welfare lottery centre's draw notices, JSON whose `result` array holds one object
//    per draw ({"code":"2026096","date":"2026-08-20(四)","red":"01,04,...","blue":"04",
//    "prizegrades":[{"type":1,"typenum":"8","typemoney":"6821493"},...]});
//  - TextList: one draw a line, the issue (seven digits, or five as yyNNN), the date (yyyy-mm-dd,
//    yyyy/mm/dd or yyyymmdd), six reds and the blue, any separators, later fields ignored.
// Anything else (an HTML page, an empty body, JSON of another shape) is Unknown and stores nothing.
enum class DrawSourceKind { Unknown, DrawList, Notices, TextList };

// Larger bodies are refused before they are read.
constexpr qsizetype kMaxDrawSourceBytes = 10 * 1024 * 1024;

// One prize tier of one draw as a notice gives it. `prize` is in yuan, -1 when the notice left it
// blank.
struct PrizeTier {
    IssueNumber issue = 0;
    int tier = 0;
    qint64 winners = 0;
    qint64 prize = -1;
};

// What one response held: the good draws (reds ascending), the prize tiers of the notices, and the
// records that looked like draws but failed the entry row's checks (by line of a text list, by
// place in the response otherwise).
struct SourceDraws {
    DrawSourceKind kind = DrawSourceKind::Unknown;
    QList<DrawRecord> draws;
    QList<PrizeTier> prizes;
    RefusedRecords refused{QStringLiteral("条")};
    int pageCount = 0;  // Notices: the pages the service says it has, 0 when it does not say
};

// A draw the entry row would accept (drawFault): six distinct reds 1..33, a blue 1..16, an issue
// that can exist, dated in its year between the first draw and today.
bool valid_Draw(const DrawRecord& draw);

DrawSourceKind drawSource_Kind(const QString& text);

// Each reader is a pure function of the response text. The draw list is searched issue by issue
// for from..to, as the download always did; the other two give every draw they hold.
SourceDraws read_DrawListSource(const QString& text, IssueNumber from, IssueNumber to);
SourceDraws read_Notices(const QString& text);
SourceDraws read_TextList(const QString& text);

// The body decoded in its charset, its kind told and read. The draw list range applies to that kind
// only. Unknown for a body over kMaxDrawSourceBytes.
SourceDraws read_DrawSource(const QByteArray& body, const QByteArray& contentType, IssueNumber from,
                            IssueNumber to);

}  // namespace dovrex
