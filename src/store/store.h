#pragma once

#include <QHash>
#include <QString>
#include <QVariant>
#include <QVariantList>
#include <exception>
#include <memory>
#include <stdexcept>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace dovrex {

class Cursor;
struct JetSql;

// A failed statement. Commands catch it in their general trap and keep what they wrote.
class StoreError : public std::runtime_error {
  public:
    explicit StoreError(const QString& message) : std::runtime_error(message.toStdString()), text(message) {}
    QString text;
};

// A write that did not reach the working copy (a failed COMMIT: a full or failing disc). Its text
// is the message the player sees; the store no longer holds what the command meant to keep.
class StoreWriteError : public StoreError {
  public:
    explicit StoreWriteError(const QString& detail);
};

namespace msg {
inline const QString kWriteFailed = QStringLiteral(
    "数据未能保存：写入工作数据时出错（磁盘已满或出错），这次操作的结果没有保存，上次保存的数据文件保持不变"
    "。");
}  // namespace msg

// One connection to a store file. Statements are written in the program's dialect (see jet_sql.h);
// values typed by the user are bound as parameters ('?') rather than pasted into the text.
class Store {
  public:
    // store_Open: opens read-write; throws StoreError when the file is not a store.
    static std::unique_ptr<Store> open(const QString& path, bool createIfMissing = false);
    // A file read as data only: read-only and immutable, so that reading never writes it (not even
    // a journal or a checkpoint of a file in WAL mode), with a trusted-schema guard and a cap on
    // the size of any value. Throws StoreError when the file is not a store.
    static std::unique_ptr<Store> openReadOnly(const QString& path);
    ~Store();
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    // store_Query: an updatable, scrollable cursor with its exact row count.
    std::shared_ptr<Cursor> query(const QString& sql, const QVariantList& params = {});
    // A read-only row set for a grid over a long table: its count comes from one count query and
    // its rows are read a page at a time as they are asked for, so binding costs the same for ten
    // rows and for a hundred thousand. Pages reflect the table when they are read. A TOP query is
    // read whole, as query() does.
    std::shared_ptr<Cursor> pagedQuery(const QString& sql, const QVariantList& params = {});
    // store_Execute: a statement with no result. Returns the number of rows changed.
    int execute(const QString& sql, const QVariantList& params = {});
    // store_ClearTable
    void clearTable(const QString& name);
    // First column of the first row, or an invalid variant.
    QVariant scalar(const QString& sql, const QVariantList& params = {});

    QString path() const { return path_; }
    sqlite3* handle() const { return db_; }
    bool tableExists(const QString& name);
    QStringList columnNames(const QString& table);

    // Transactions nest by counting; only the outermost one reaches the file. Every pass keeps what
    // it did, so there is no rollback: see Transaction. A COMMIT that fails throws StoreWriteError
    // after the engine has rolled the transaction back, and marks the store (writeFailed) until a
    // later COMMIT succeeds.
    void begin();
    void commit();
    bool inTransaction() const { return transactionDepth_ > 0; }
    // The last transaction failed to reach the file: such a store is not packed.
    bool writeFailed() const { return writeFailed_; }
    // Throws the error of the statement `sql` that just failed on this connection: StoreWriteError
    // (and the store marked) when the disc refused a write, StoreError otherwise.
    [[noreturn]] void raise(const QString& sql);

    // Grows with every change this connection made (rows and schema alike): a cheap test of whether
    // the store changed since it was last packed.
    qint64 changeStamp();
    // PRAGMA quick_check on this connection: true when the engine finds the file sound.
    bool quickCheck();
    // The same check on a store file, opened read-only; false for anything that is not a sound store.
    static bool fileIsSound(const QString& path);

    // Prepared statement cache for the cursor's write-backs: the statement stays valid until the
    // next call that may prepare one.
    sqlite3_stmt* cachedStatement(const QString& sql);
    // A prepared statement lent for one run, out of the cache (prepared when not there), and given
    // back reset; a statement that is lent twice at once is simply prepared twice. A program that
    // asks the same few questions thousands of times (a back-test, a chart) then parses each once.
    sqlite3_stmt* lendStatement(const QString& sql);
    void giveBackStatement(const QString& sql, sqlite3_stmt* stmt);
    // The column that is the table's row id (an INTEGER PRIMARY KEY), or empty.
    QString rowIdAlias(const QString& table);

  private:
    Store() = default;
    sqlite3* db_ = nullptr;
    QString path_;
    int transactionDepth_ = 0;
    bool writeFailed_ = false;
    // Both caches are bounded: statements that paste their values would otherwise grow them forever.
    QHash<QString, sqlite3_stmt*> cache_;
    QHash<QString, std::shared_ptr<const JetSql>> translations_;
    const JetSql& translated(const QString& sql);
    void makeRoomInCache();
    QHash<QString, QString> rowIdAliases_;
};

// RAII: groups the writes of one pass into one transaction, committed when the pass ends, whether
// it ends normally, on Stop or on an error. Passes never roll back. A failed COMMIT throws
// StoreWriteError out of the destructor, so that no success message follows it; when the pass is
// already leaving on an exception, that one goes on and the store keeps the failure (writeFailed).
class Transaction {
  public:
    explicit Transaction(Store& store) : store_(store), exceptions_(std::uncaught_exceptions()) {
        store_.begin();
    }
    ~Transaction() noexcept(false) {
        if (std::uncaught_exceptions() == exceptions_) {
            store_.commit();
            return;
        }
        try {
            store_.commit();
        } catch (const StoreError&) {
        }
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

  private:
    Store& store_;
    int exceptions_;
};

// A row set held in memory with its exact count, movable both ways, readable by column name
// (case-insensitive) or 0-based position, and writable in place when it comes from one table.
// Moving off a changed row writes it, as the desktop database's cursors do.
class Cursor {
  public:
    int recordCount() const { return rowCount_; }
    int fieldCount() const { return visibleColumns_; }
    QString fieldName(int pos) const { return names_.value(pos); }
    int fieldIndex(const QString& name) const;  // -1 when absent

    bool eof() const { return row_ >= rowCount_ || rowCount_ == 0; }
    bool bof() const { return row_ < 0 || rowCount_ == 0; }
    int position() const { return row_; }
    void moveFirst();
    void moveLast();
    void moveNext();
    void movePrevious();
    void moveTo(int row);

    QVariant value(int pos) const;
    QVariant value(const QString& name) const;
    int intValue(const QString& name) const { return value(name).toInt(); }
    int intValue(int pos) const { return value(pos).toInt(); }
    // Random access for grids; no move.
    QVariant valueAt(int row, int pos) const;

    void setValue(int pos, const QVariant& v);
    void setValue(const QString& name, const QVariant& v);
    // Writes the changed columns of the current row (or inserts the row begun by addNew).
    void update();
    // Starts a new row at the end; set its columns, then update().
    void addNew();
    void close();
    bool updatable() const { return !table_.isEmpty(); }

    bool paged() const { return pageSize_ > 0; }

  private:
    friend class Store;
    Cursor() = default;
    const QVariant* cell(int row, int pos) const;
    int checkedColumn(const QString& name) const;
    void flush();

    Store* store_ = nullptr;
    QString table_;
    QStringList names_;
    QHash<QString, int> index_;
    int visibleColumns_ = 0;
    int totalColumns_ = 0;
    int rowIdColumn_ = -1;
    int rowCount_ = 0;
    int row_ = 0;
    std::vector<QVariant> cells_;
    std::vector<int> dirty_;  // columns changed in the current row
    bool adding_ = false;
    // Paged row sets: the statement text (with LIMIT/OFFSET to bind after the parameters) and the
    // pages read so far.
    int pageSize_ = 0;
    QString pageSql_;
    QVariantList pageParams_;
    mutable QHash<int, std::vector<QVariant>> pages_;
};

// store_Compact: copies a store file to target, reclaiming space. The source must not be open.
bool store_Compact(const QString& source, const QString& target);

}  // namespace dovrex
