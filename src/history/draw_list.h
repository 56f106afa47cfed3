#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

#include "domain/game.h"

namespace dovrex {

class Store;

// The published draw list: one plain text document holding every draw. Whatever its layout, once
// cleaned (every character but 0-9 and '/' turned into '#', runs of them into one '#') it reads
//   #336#2003001#2003/02/23#10#11#12#13#26#28#11#2003002#...
// that is the list's mark 336, then per draw the issue, the date and the seven balls at fixed
// places after the issue.

inline const QString kDrawListMark = QStringLiteral("#336#");

// The old numeric reader: leading blanks skipped, digits read up to the first other character, 0
// when there is none. Capped well above any issue.
qint64 read_Number(QStringView text);

// clean_Shuju: keeps 0-9 and '/', turns every other run of characters into one '#'.
QString clean_Shuju(const QString& text);

// True when a cleaned text starts with the list's mark.
bool is_DrawList(const QString& cleaned);

// parse_QiHao: finds the first place where the issue followed by '#' stands in the cleaned text and
// reads the draw there: the date at +8 (ten characters), the reds at +19, +22 ... +34 and the blue
// at +37 (two digits each), every field closed by '#'. The numbers are read as they stand (a 99
// stays 99 for the draw check to refuse). False when the issue is not there, when its date does
// not read, when a field is not where the layout puts it (a short record never borrows from the
// next), or when the text ends before its blue (a cut list).
bool parse_QiHao(IssueNumber issue, const QString& cleaned, DrawRecord& draw);

// A cleaned list with the place of every issue noted once, so that looking for some three thousand
// issues costs one pass over the text instead of one search each. find() gives what a plain search
// for the issue followed by '#' from the start of the text gives.
class DrawListText {
  public:
    explicit DrawListText(QString cleaned);
    const QString& text() const { return text_; }
    qsizetype find(IssueNumber issue) const;

  private:
    QString text_;
    QHash<IssueNumber, qsizetype> first_;  // seven digits then '#': where they start, first place only
};
bool parse_QiHao(IssueNumber issue, const DrawListText& list, DrawRecord& draw);

// The draws from..to of a store's 历史记录, in issue order.
QList<DrawRecord> read_DrawRecords(Store& store, IssueNumber from = 0, IssueNumber to = 9999999);

// Writes draws as a list the download reads: a head line carrying the mark, a line of captions,
// then one line per draw "2003001 2003/02/23 10 11 12 13 26 28 11", UTF-8, CRLF line ends.
QByteArray format_DrawList(const QList<DrawRecord>& draws);

}  // namespace dovrex
