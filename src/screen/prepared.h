#pragma once

#include <QString>

struct sqlite3_stmt;

namespace dovrex {

class Store;

// A statement prepared once on the shared store and reused for every row of a pass: the fast path of
// the passes over 日志表, where a row costs one bind and one step. The text is SQLite's own (no
// dialect translation); values are always bound. The statement lives in the store's cache.
class Prepared {
  public:
    explicit Prepared(const QString& sql);
    ~Prepared();
    Prepared(const Prepared&) = delete;
    Prepared& operator=(const Prepared&) = delete;

    Prepared& bind(int index, long long value);  // 1-based, as '?' are counted
    // Steps once; true while a row is there. After the last row the statement is reset.
    bool next();
    // Runs a statement without rows to its end and resets it for the next bind; returns rows changed.
    int exec();
    int intColumn(int col) const;
    long long int64Column(int col) const;

  private:
    Store& store_;
    sqlite3_stmt* stmt_;
    QString sql_;
};

}  // namespace dovrex
