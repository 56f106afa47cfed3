#pragma once

#include <QString>
#include <QStringList>

namespace dovrex {

// The program writes its statements in the desktop-database dialect it grew up with. This turns
// them into SQLite with the same meaning:
//  - "TOP n" and "TOP n PERCENT" are taken out and applied by the cursor as that engine applies
//    them: rows tied with the last one on every ORDER BY term are kept too, PERCENT rounds up;
//  - #yyyy/mm/dd# literals become the day numbers the store holds dates as;
//  - the bare column name INDEX is quoted, since SQLite reserves the word;
//  - [column] is SQLite's own syntax and stays.
struct JetSql {
    QString sql;              // the SQLite statement to run
    bool hasTop = false;      // a TOP clause was taken out
    qint64 topCount = 0;      // its number
    bool topPercent = false;  // TOP n PERCENT
    QStringList orderTerms;   // the ORDER BY expressions, without ASC/DESC
    QString baseTable;        // the one table of a plain single-table SELECT, else empty
    bool isSelect = false;
};

// Hidden columns that the cursor appends to a select list: the row id of the base table and one
// column per ORDER BY term (for TOP ties).
inline const char* const kRowIdColumn = "__dovrex_rowid";
inline const char* const kOrderColumnPrefix = "__dovrex_ob";

JetSql translateJetSql(const QString& statement);

// The select statement with the hidden columns appended to its select list.
QString withHiddenColumns(const JetSql& jet, bool withRowId);

}  // namespace dovrex
