#include "store/store.h"

#include <sqlite3.h>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QUrl>
#include <cmath>

#include "store/jet_sql.h"

namespace dovrex {

namespace {

QString sqliteMessage(sqlite3* db, const QString& sql) {
    return QStringLiteral("%1 [%2]").arg(QString::fromUtf8(sqlite3_errmsg(db)), sql);
}

// Borrows one prepared statement from the store's cache for as long as it runs.
class Statement {
  public:
    Statement(Store& store, const QString& sql) : store_(store), sql_(sql), stmt_(store.lendStatement(sql)) {}
    ~Statement() { store_.giveBackStatement(sql_, stmt_); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    sqlite3_stmt* get() const { return stmt_; }

  private:
    Store& store_;
    QString sql_;
    sqlite3_stmt* stmt_;
};

constexpr int kMaxCachedStatements = 256;

void bindValue(sqlite3_stmt* stmt, int index, const QVariant& v) {
    if (!v.isValid() || v.isNull()) {
        sqlite3_bind_null(stmt, index);
        return;
    }
    switch (v.typeId()) {
        case QMetaType::Bool:
            sqlite3_bind_int(stmt, index, v.toBool() ? 1 : 0);
            break;
        case QMetaType::Int:
        case QMetaType::Short:
        case QMetaType::UInt:
        case QMetaType::Long:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
        case QMetaType::UShort:
        case QMetaType::Char:
        case QMetaType::UChar:
            sqlite3_bind_int64(stmt, index, v.toLongLong());
            break;
        case QMetaType::Double:
        case QMetaType::Float:
            sqlite3_bind_double(stmt, index, v.toDouble());
            break;
        case QMetaType::QByteArray: {
            const QByteArray b = v.toByteArray();
            sqlite3_bind_blob(stmt, index, b.constData(), int(b.size()), SQLITE_TRANSIENT);
            break;
        }
        default: {
            const QByteArray t = v.toString().toUtf8();
            sqlite3_bind_text(stmt, index, t.constData(), int(t.size()), SQLITE_TRANSIENT);
        }
    }
}

void bindAll(sqlite3_stmt* stmt, const QVariantList& params) {
    for (int i = 0; i < params.size(); ++i) bindValue(stmt, i + 1, params[i]);
}

QVariant columnValue(sqlite3_stmt* stmt, int col) {
    switch (sqlite3_column_type(stmt, col)) {
        case SQLITE_INTEGER: {
            const qint64 v = sqlite3_column_int64(stmt, col);
            if (v >= INT32_MIN && v <= INT32_MAX) return QVariant(int(v));
            return QVariant(qlonglong(v));
        }
        case SQLITE_FLOAT:
            return QVariant(sqlite3_column_double(stmt, col));
        case SQLITE_TEXT:
            return QVariant(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, col)),
                                              sqlite3_column_bytes(stmt, col)));
        case SQLITE_BLOB:
            return QVariant(QByteArray(reinterpret_cast<const char*>(sqlite3_column_blob(stmt, col)),
                                       sqlite3_column_bytes(stmt, col)));
        default:
            return QVariant();
    }
}

QString quoteName(const QString& name) {
    return u'"' + QString(name).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

bool sameValue(const QVariant& a, const QVariant& b) {
    if (a.isNull() || b.isNull()) return a.isNull() && b.isNull();
    return QVariant::compare(a, b) == QPartialOrdering::Equivalent;
}

}  // namespace

std::unique_ptr<Store> Store::open(const QString& path, bool createIfMissing) {
    if (!createIfMissing && !QFileInfo::exists(path)) throw StoreError(QStringLiteral("no store at ") + path);
    std::unique_ptr<Store> store(new Store);
    store->path_ = path;
    int flags = SQLITE_OPEN_READWRITE | (createIfMissing ? SQLITE_OPEN_CREATE : 0);
    if (sqlite3_open_v2(path.toUtf8().constData(), &store->db_, flags, nullptr) != SQLITE_OK) {
        const QString msg =
            store->db_ ? QString::fromUtf8(sqlite3_errmsg(store->db_)) : QStringLiteral("open");
        throw StoreError(msg + QStringLiteral(" [") + path + u']');
    }
    // The working copy reaches the disc only through the pack at exit, so no fsync per statement.
    store->execute(QStringLiteral("PRAGMA synchronous=OFF"));
    store->execute(QStringLiteral("PRAGMA journal_mode=MEMORY"));
    store->execute(QStringLiteral("PRAGMA temp_store=MEMORY"));
    // Fails here, rather than at the first query, when the file is not a store at all.
    store->scalar(QStringLiteral("SELECT count(*) FROM sqlite_master"));
    return store;
}

std::unique_ptr<Store> Store::openReadOnly(const QString& path) {
    if (!QFileInfo(path).isFile()) throw StoreError(QStringLiteral("no store at ") + path);
    std::unique_ptr<Store> store(new Store);
    store->path_ = path;
    const QByteArray uri =
        QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()).toEncoded() + "?mode=ro&immutable=1";
    if (sqlite3_open_v2(uri.constData(), &store->db_, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, nullptr) !=
        SQLITE_OK) {
        const QString msg =
            store->db_ ? QString::fromUtf8(sqlite3_errmsg(store->db_)) : QStringLiteral("open");
        throw StoreError(msg + QStringLiteral(" [") + path + u']');
    }
    // Functions named in the file's schema never run, and no single value may be large.
    sqlite3_db_config(store->db_, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(store->db_, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_limit(store->db_, SQLITE_LIMIT_LENGTH, 1 << 20);
    store->scalar(QStringLiteral("SELECT count(*) FROM sqlite_master"));
    return store;
}

Store::~Store() {
    for (auto* stmt : std::as_const(cache_)) sqlite3_finalize(stmt);
    if (transactionDepth_ > 0) sqlite3_exec(db_, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(db_);
}

sqlite3_stmt* Store::cachedStatement(const QString& sql) {
    if (auto it = cache_.find(sql); it != cache_.end()) {
        sqlite3_reset(*it);
        sqlite3_clear_bindings(*it);
        return *it;
    }
    sqlite3_stmt* stmt = lendStatement(sql);
    makeRoomInCache();
    cache_.insert(sql, stmt);
    return stmt;
}

sqlite3_stmt* Store::lendStatement(const QString& sql) {
    if (sqlite3_stmt* cached = cache_.take(sql)) return cached;
    sqlite3_stmt* stmt = nullptr;
    const QByteArray utf8 = sql.toUtf8();
    if (sqlite3_prepare_v2(db_, utf8.constData(), int(utf8.size()), &stmt, nullptr) != SQLITE_OK) {
        sqlite3_finalize(stmt);
        throw StoreError(sqliteMessage(db_, sql));
    }
    return stmt;
}

void Store::giveBackStatement(const QString& sql, sqlite3_stmt* stmt) {
    if (!stmt) return;
    sqlite3_reset(stmt);
    sqlite3_clear_bindings(stmt);
    if (cache_.contains(sql)) {
        sqlite3_finalize(stmt);
        return;
    }
    makeRoomInCache();
    cache_.insert(sql, stmt);
}

void Store::makeRoomInCache() {
    if (cache_.size() < kMaxCachedStatements) return;
    for (auto* stmt : std::as_const(cache_)) sqlite3_finalize(stmt);
    cache_.clear();
}

const JetSql& Store::translated(const QString& sql) {
    if (auto it = translations_.constFind(sql); it != translations_.constEnd()) return **it;
    if (translations_.size() >= kMaxCachedStatements) translations_.clear();
    return **translations_.insert(sql, std::make_shared<const JetSql>(translateJetSql(sql)));
}

void Store::begin() {
    if (transactionDepth_ == 0) execute(QStringLiteral("BEGIN"));
    ++transactionDepth_;
}

StoreWriteError::StoreWriteError(const QString& detail)
    : StoreError(msg::kWriteFailed + QStringLiteral("\n\n") + detail) {}

void Store::raise(const QString& sql) {
    const int code = sqlite3_errcode(db_) & 0xff;
    if (code == SQLITE_IOERR || code == SQLITE_FULL) {
        writeFailed_ = true;
        throw StoreWriteError(sqliteMessage(db_, sql));
    }
    throw StoreError(sqliteMessage(db_, sql));
}

void Store::commit() {
    if (transactionDepth_ <= 0) return;
    if (--transactionDepth_ > 0) return;
    if (sqlite3_exec(db_, "COMMIT", nullptr, nullptr, nullptr) == SQLITE_OK) {
        writeFailed_ = false;
        return;
    }
    const QString detail = sqliteMessage(db_, QStringLiteral("COMMIT"));
    // The engine may keep the transaction open after a failed COMMIT; what it held is given up,
    // so that the next statement does not run inside it.
    if (!sqlite3_get_autocommit(db_)) sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
    writeFailed_ = true;
    throw StoreWriteError(detail);
}

namespace {
qint64 schemaVersion(sqlite3* db) {
    sqlite3_stmt* stmt = nullptr;
    qint64 version = 0;
    if (sqlite3_prepare_v2(db, "PRAGMA schema_version", -1, &stmt, nullptr) == SQLITE_OK &&
        sqlite3_step(stmt) == SQLITE_ROW)
        version = sqlite3_column_int64(stmt, 0);
    sqlite3_finalize(stmt);
    return version;
}

bool quickCheckPasses(sqlite3* db) {
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(db, "PRAGMA quick_check(1)", -1, &stmt, nullptr) != SQLITE_OK) {
        sqlite3_finalize(stmt);
        return false;
    }
    bool ok = sqlite3_step(stmt) == SQLITE_ROW &&
              qstrcmp(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0)), "ok") == 0;
    ok = ok && sqlite3_step(stmt) == SQLITE_DONE;
    sqlite3_finalize(stmt);
    return ok;
}
}  // namespace

qint64 Store::changeStamp() {
    // Row counts miss a table made or dropped; the schema version catches those.
    return sqlite3_total_changes64(db_) + (schemaVersion(db_) << 40);
}

bool Store::quickCheck() {
    return quickCheckPasses(db_);
}

bool Store::fileIsSound(const QString& path) {
    if (!QFileInfo(path).isFile()) return false;
    sqlite3* db = nullptr;
    const bool opened =
        sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK;
    const bool ok = opened && quickCheckPasses(db);
    sqlite3_close(db);
    return ok;
}

int Store::execute(const QString& sql, const QVariantList& params) {
    const JetSql jet = translated(sql);
    Statement stmt(*this, jet.sql);
    bindAll(stmt.get(), params);
    int rc;
    while ((rc = sqlite3_step(stmt.get())) == SQLITE_ROW) {
    }
    if (rc != SQLITE_DONE) raise(jet.sql);
    return sqlite3_changes(db_);
}

QVariant Store::scalar(const QString& sql, const QVariantList& params) {
    auto c = query(sql, params);
    return c->recordCount() > 0 ? c->value(0) : QVariant();
}

void Store::clearTable(const QString& name) {
    execute(QStringLiteral("DELETE FROM ") + name);
}

QString Store::rowIdAlias(const QString& table) {
    if (auto it = rowIdAliases_.find(table); it != rowIdAliases_.end()) return *it;
    QString alias;
    int keys = 0;
    Statement stmt(*this, QStringLiteral("PRAGMA table_info(%1)").arg(quoteName(table)));
    while (sqlite3_step(stmt.get()) == SQLITE_ROW) {
        if (sqlite3_column_int(stmt.get(), 5) == 0) continue;
        ++keys;
        const QString type =
            QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt.get(), 2)));
        if (type.compare(QLatin1String("INTEGER"), Qt::CaseInsensitive) == 0)
            alias = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt.get(), 1)));
    }
    if (keys != 1) alias.clear();
    rowIdAliases_.insert(table, alias);
    return alias;
}

bool Store::tableExists(const QString& name) {
    return scalar(QStringLiteral("SELECT count(*) FROM sqlite_master WHERE type='table' AND name=?"), {name})
               .toInt() > 0;
}

QStringList Store::columnNames(const QString& table) {
    QStringList names;
    Statement stmt(*this, QStringLiteral("PRAGMA table_info(%1)").arg(quoteName(table)));
    while (sqlite3_step(stmt.get()) == SQLITE_ROW)
        names << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt.get(), 1)));
    return names;
}

std::shared_ptr<Cursor> Store::query(const QString& sql, const QVariantList& params) {
    const JetSql jet = translated(sql);
    if (!jet.isSelect) {
        // PRAGMA and the like: run as they are, without write-back.
    }
    const bool withRowId = !jet.baseTable.isEmpty();
    const QString text = jet.isSelect ? withHiddenColumns(jet, withRowId) : jet.sql;
    Statement stmt(*this, text);
    bindAll(stmt.get(), params);

    // The first step comes before the columns are read: a kept statement is prepared again inside it
    // when the schema changed since (a column added, a table made anew), and only then shows the
    // columns as they are now.
    int rc = sqlite3_step(stmt.get());

    std::shared_ptr<Cursor> c(new Cursor);
    c->store_ = this;
    c->table_ = withRowId ? jet.baseTable : QString();
    c->totalColumns_ = sqlite3_column_count(stmt.get());
    const int hiddenOrder = jet.hasTop ? int(jet.orderTerms.size()) : 0;
    c->visibleColumns_ = c->totalColumns_ - hiddenOrder - (withRowId ? 1 : 0);
    c->rowIdColumn_ = withRowId ? c->visibleColumns_ : -1;
    for (int i = 0; i < c->visibleColumns_; ++i) {
        const QString name = QString::fromUtf8(sqlite3_column_name(stmt.get(), i));
        c->names_ << name;
        if (!c->index_.contains(name.toLower())) c->index_.insert(name.toLower(), i);
    }
    const int hiddenStart = c->totalColumns_ - hiddenOrder;
    auto tied = [&](qint64 a, qint64 b) {
        for (int k = 0; k < hiddenOrder; ++k)
            if (!sameValue(c->cells_[a * c->totalColumns_ + hiddenStart + k],
                           c->cells_[b * c->totalColumns_ + hiddenStart + k]))
                return false;
        return true;
    };
    // TOP n needs no more rows than n and those tied with the n-th; PERCENT needs the whole count.
    const bool stopEarly = jet.hasTop && !jet.topPercent;
    int rows = 0;
    for (; rc == SQLITE_ROW; rc = sqlite3_step(stmt.get())) {
        for (int i = 0; i < c->totalColumns_; ++i) c->cells_.push_back(columnValue(stmt.get(), i));
        ++rows;
        if (stopEarly && rows > jet.topCount) {
            if (jet.topCount == 0 || hiddenOrder == 0 || !tied(rows - 2, rows - 1)) {
                c->cells_.resize(size_t(rows - 1) * c->totalColumns_);
                --rows;
                rc = SQLITE_DONE;
                break;
            }
        }
    }
    if (rc != SQLITE_DONE) raise(text);

    if (jet.hasTop) {
        qint64 keep = jet.topCount;
        if (jet.topPercent) keep = qint64(std::ceil(double(rows) * double(jet.topCount) / 100.0 - 1e-9));
        if (keep < rows) {
            // Rows tied with the last one kept, on every ORDER BY term, are kept too.
            if (keep > 0 && hiddenOrder > 0)
                while (keep < rows && tied(keep - 1, keep)) ++keep;
            rows = int(keep);
            c->cells_.resize(size_t(rows) * c->totalColumns_);
        }
    }
    c->rowCount_ = rows;
    c->row_ = 0;
    return c;
}

namespace {

// The count of a row set. "SELECT * FROM t WHERE ... ORDER BY ..." is counted as
// "SELECT count(*) FROM t WHERE ...", which SQLite answers from an index alone; as a subquery the
// same count would read every row.
QString countSql(const QString& sql) {
    static const QRegularExpression plain(QStringLiteral(R"(^\s*select\s+\*\s+from\s+)"),
                                          QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch head = plain.match(sql);
    if (head.hasMatch()) {
        QString rest = sql.mid(head.capturedEnd());
        const int order = rest.lastIndexOf(QStringLiteral(" order by "), -1, Qt::CaseInsensitive);
        if (order >= 0) {
            const QStringView tail = QStringView(rest).mid(order);
            if (!tail.contains(u')') && !tail.contains(u'\'') && !tail.contains(u'"')) rest.truncate(order);
        }
        if (!rest.contains(QStringLiteral(" order by "), Qt::CaseInsensitive) &&
            !rest.contains(QStringLiteral("limit"), Qt::CaseInsensitive) &&
            !rest.contains(QStringLiteral("group by"), Qt::CaseInsensitive))
            return QStringLiteral("SELECT count(*) FROM ") + rest;
    }
    return QStringLiteral("SELECT count(*) FROM (") + sql + u')';
}

}  // namespace

std::shared_ptr<Cursor> Store::pagedQuery(const QString& sql, const QVariantList& params) {
    const JetSql jet = translated(sql);
    if (!jet.isSelect || jet.hasTop) return query(sql, params);
    std::shared_ptr<Cursor> c(new Cursor);
    c->store_ = this;
    {
        Statement stmt(*this, jet.sql);
        bindAll(stmt.get(), params);
        sqlite3_step(stmt.get());  // as in query(): the columns as they are now
        c->totalColumns_ = c->visibleColumns_ = sqlite3_column_count(stmt.get());
        for (int i = 0; i < c->visibleColumns_; ++i) {
            const QString name = QString::fromUtf8(sqlite3_column_name(stmt.get(), i));
            c->names_ << name;
            if (!c->index_.contains(name.toLower())) c->index_.insert(name.toLower(), i);
        }
    }
    {
        Statement count(*this, countSql(jet.sql));
        bindAll(count.get(), params);
        if (sqlite3_step(count.get()) != SQLITE_ROW) throw StoreError(sqliteMessage(db_, jet.sql));
        c->rowCount_ = sqlite3_column_int(count.get(), 0);
    }
    c->pageSize_ = 512;
    c->pageSql_ = jet.sql + QStringLiteral(" LIMIT ? OFFSET ?");
    c->pageParams_ = params;
    return c;
}

// ---- Cursor ----

const QVariant* Cursor::cell(int row, int pos) const {
    if (!paged()) return &cells_[size_t(row) * totalColumns_ + pos];
    const int page = row / pageSize_;
    auto it = pages_.find(page);
    if (it == pages_.end()) {
        if (!store_) return nullptr;
        // A grid scrolls through a few pages at a time; the rest are read again when wanted.
        if (pages_.size() >= 16) pages_.clear();
        std::vector<QVariant> cells;
        cells.reserve(size_t(pageSize_) * totalColumns_);
        Statement stmt(*store_, pageSql_);
        bindAll(stmt.get(), pageParams_);
        sqlite3_bind_int(stmt.get(), int(pageParams_.size()) + 1, pageSize_);
        sqlite3_bind_int64(stmt.get(), int(pageParams_.size()) + 2, qint64(page) * pageSize_);
        while (sqlite3_step(stmt.get()) == SQLITE_ROW)
            for (int i = 0; i < totalColumns_; ++i) cells.push_back(columnValue(stmt.get(), i));
        it = pages_.insert(page, std::move(cells));
    }
    const size_t at = size_t(row % pageSize_) * totalColumns_ + pos;
    return at < it->size() ? &(*it)[at] : nullptr;
}

int Cursor::fieldIndex(const QString& name) const {
    return index_.value(name.toLower(), -1);
}

int Cursor::checkedColumn(const QString& name) const {
    const int i = fieldIndex(name);
    if (i < 0) throw StoreError(QStringLiteral("no column ") + name);
    return i;
}

void Cursor::moveFirst() {
    flush();
    row_ = 0;
}
void Cursor::moveLast() {
    flush();
    row_ = rowCount_ > 0 ? rowCount_ - 1 : 0;
}
void Cursor::moveNext() {
    flush();
    if (row_ < rowCount_) ++row_;
}
void Cursor::movePrevious() {
    flush();
    if (row_ >= 0) --row_;
}
void Cursor::moveTo(int row) {
    flush();
    row_ = row;
}

QVariant Cursor::value(int pos) const {
    if (eof() || bof()) throw StoreError(QStringLiteral("no current row"));
    if (pos < 0 || pos >= visibleColumns_) throw StoreError(QStringLiteral("no column %1").arg(pos));
    const QVariant* v = cell(row_, pos);
    return v ? *v : QVariant();
}

QVariant Cursor::value(const QString& name) const {
    return value(checkedColumn(name));
}

QVariant Cursor::valueAt(int row, int pos) const {
    if (row < 0 || row >= rowCount_ || pos < 0 || pos >= visibleColumns_) return {};
    const QVariant* v = cell(row, pos);
    return v ? *v : QVariant();
}

void Cursor::setValue(int pos, const QVariant& v) {
    if (eof() || bof()) throw StoreError(QStringLiteral("no current row"));
    if (pos < 0 || pos >= visibleColumns_) throw StoreError(QStringLiteral("no column %1").arg(pos));
    if (table_.isEmpty()) throw StoreError(QStringLiteral("this row set cannot be written"));
    QVariant stored = v;
    if (v.typeId() == QMetaType::Bool) stored = v.toBool() ? 1 : 0;
    cells_[size_t(row_) * totalColumns_ + pos] = stored;
    if (std::find(dirty_.begin(), dirty_.end(), pos) == dirty_.end()) dirty_.push_back(pos);
}

void Cursor::setValue(const QString& name, const QVariant& v) {
    setValue(checkedColumn(name), v);
}

void Cursor::flush() {
    if (!dirty_.empty() || adding_) update();
}

void Cursor::update() {
    if (table_.isEmpty() || !store_) return;
    if (eof() || bof()) {
        dirty_.clear();
        adding_ = false;
        return;
    }
    const size_t base = size_t(row_) * totalColumns_;
    QVariantList params;
    QString sql;
    if (adding_) {
        QStringList cols, marks;
        for (int c : dirty_) {
            cols << quoteName(names_[c]);
            marks << QStringLiteral("?");
            params << cells_[base + c];
        }
        sql = cols.isEmpty() ? QStringLiteral("INSERT INTO %1 DEFAULT VALUES").arg(quoteName(table_))
                             : QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                                   .arg(quoteName(table_), cols.join(u','), marks.join(u','));
    } else {
        if (dirty_.empty()) return;
        QStringList sets;
        for (int c : dirty_) {
            sets << quoteName(names_[c]) + QStringLiteral("=?");
            params << cells_[base + c];
        }
        params << cells_[base + rowIdColumn_];
        sql = QStringLiteral("UPDATE %1 SET %2 WHERE rowid=?").arg(quoteName(table_), sets.join(u','));
    }
    const std::vector<int> written = std::move(dirty_);
    dirty_.clear();
    const bool wasAdding = adding_;
    adding_ = false;
    sqlite3_stmt* stmt = store_->cachedStatement(sql);
    bindAll(stmt, params);
    if (sqlite3_step(stmt) != SQLITE_DONE) {
        sqlite3_reset(stmt);
        store_->raise(sql);
    }
    sqlite3_reset(stmt);
    if (wasAdding) {
        // The new row as the table made it: its identity and the defaults of the columns not set.
        const qlonglong rowId = sqlite3_last_insert_rowid(store_->handle());
        cells_[base + rowIdColumn_] = rowId;
        sqlite3_stmt* reread =
            store_->cachedStatement(QStringLiteral("SELECT * FROM %1 WHERE rowid=?").arg(quoteName(table_)));
        sqlite3_bind_int64(reread, 1, rowId);
        if (sqlite3_step(reread) == SQLITE_ROW) {
            for (int i = 0; i < sqlite3_column_count(reread); ++i) {
                const int c = fieldIndex(QString::fromUtf8(sqlite3_column_name(reread, i)));
                if (c >= 0) cells_[base + c] = columnValue(reread, i);
            }
        }
        sqlite3_reset(reread);
    } else if (const QString alias = store_->rowIdAlias(table_); !alias.isEmpty()) {
        // Writing the key of a table whose key is its row id moves the row: follow it.
        const int c = fieldIndex(alias);
        if (c >= 0 && std::find(written.begin(), written.end(), c) != written.end())
            cells_[base + rowIdColumn_] = cells_[base + c];
    }
}

void Cursor::addNew() {
    flush();
    if (table_.isEmpty()) throw StoreError(QStringLiteral("this row set cannot be written"));
    cells_.resize(cells_.size() + totalColumns_);
    row_ = rowCount_++;
    adding_ = true;
}

void Cursor::close() {
    flush();
    store_ = nullptr;
}

bool store_Compact(const QString& source, const QString& target) {
    try {
        auto store = Store::open(source);
        QFile::remove(target);
        store->execute(QStringLiteral("VACUUM INTO ?"), {target});
        return QFileInfo::exists(target);
    } catch (const StoreError&) {
        return false;
    }
}

}  // namespace dovrex
