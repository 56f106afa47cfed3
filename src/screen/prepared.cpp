#include "screen/prepared.h"

#include <sqlite3.h>

#include "screen/shared_state.h"

namespace dovrex {

namespace {

[[noreturn]] void fail(Store& store, const QString& sql) {
    store.raise(sql);
}

}  // namespace

Prepared::Prepared(const QString& sql) : store_(store()), stmt_(store_.cachedStatement(sql)), sql_(sql) {}

Prepared::~Prepared() {
    sqlite3_reset(stmt_);
}

Prepared& Prepared::bind(int index, long long value) {
    sqlite3_bind_int64(stmt_, index, value);
    return *this;
}

bool Prepared::next() {
    const int rc = sqlite3_step(stmt_);
    if (rc == SQLITE_ROW) return true;
    sqlite3_reset(stmt_);
    if (rc != SQLITE_DONE) fail(store_, sql_);
    return false;
}

int Prepared::exec() {
    const int rc = sqlite3_step(stmt_);
    sqlite3_reset(stmt_);
    if (rc != SQLITE_DONE) fail(store_, sql_);
    return sqlite3_changes(store_.handle());
}

int Prepared::intColumn(int col) const {
    return sqlite3_column_int(stmt_, col);
}

long long Prepared::int64Column(int col) const {
    return sqlite3_column_int64(stmt_, col);
}

}  // namespace dovrex
