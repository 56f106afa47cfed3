#include "filters/condition_files.h"

#include <sqlite3.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <array>
#include <climits>
#include <map>
#include <set>
#include <vector>

#include "domain/condition_catalogue.h"
#include "domain/game.h"
#include "domain/record_checks.h"
#include "screen/chosen_file.h"
#include "screen/control_roles.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

namespace {

// Walks `sql` on both stores together and writes the target row from the source row, column by
// position from `first` to `last` (-1: the source's last column).
void copyRows(Store& from, const QString& fromSql, Store& to, const QString& toSql, int first, int last) {
    auto source = from.query(fromSql);
    auto target = to.query(toSql);
    const int upTo = last < 0 ? source->fieldCount() - 1 : last;
    for (source->moveFirst(), target->moveFirst(); !source->eof(); source->moveNext(), target->moveNext()) {
        for (int pos = first; pos <= upTo; ++pos) target->setValue(pos, source->value(pos));
        target->update();
    }
}

void copyRows(Store& from, Store& to, const QString& sql, int first, int last) {
    copyRows(from, sql, to, sql, first, last);
}

// ---- Reading a condition file as data ------------------------------------------------------------
//
// A file may come from anywhere, so it is read read-only and immutable (see Store::openReadOnly),
// only from plain tables and plain columns of the expected names, at most as many rows as the
// store has, and every value must be an integer in its range. The whole set is read and checked
// before the first row of the store changes.

struct FileFault {
    bool overLimit = false;  // the picks would yield more tickets than the program makes
};

// One statement on the file, stepped by hand so that each value's storage class can be checked.
class FileQuery {
  public:
    FileQuery(Store& file, const QString& sql) : db_(file.handle()) {
        const QByteArray utf8 = sql.toUtf8();
        if (sqlite3_prepare_v2(db_, utf8.constData(), int(utf8.size()), &stmt_, nullptr) != SQLITE_OK)
            throw FileFault{};
    }
    ~FileQuery() { sqlite3_finalize(stmt_); }
    FileQuery(const FileQuery&) = delete;
    FileQuery& operator=(const FileQuery&) = delete;

    FileQuery& bind(int index, const QString& text) {
        const QByteArray utf8 = text.toUtf8();
        sqlite3_bind_text(stmt_, index, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
        return *this;
    }
    FileQuery& bind(int index, long long value) {
        sqlite3_bind_int64(stmt_, index, value);
        return *this;
    }
    bool next() {
        const int rc = sqlite3_step(stmt_);
        if (rc == SQLITE_ROW) return true;
        if (rc == SQLITE_DONE) return false;
        throw FileFault{};
    }
    QString text(int col) const {
        return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt_, col)),
                                 sqlite3_column_bytes(stmt_, col));
    }
    // An integer stored as such (not text, a real, a blob or NULL) within [low, high].
    int checkedInt(int col, long long low, long long high) const {
        if (sqlite3_column_type(stmt_, col) != SQLITE_INTEGER) throw FileFault{};
        const long long v = sqlite3_column_int64(stmt_, col);
        if (v < low || v > high) throw FileFault{};
        return int(v);
    }

  private:
    sqlite3* db_;
    sqlite3_stmt* stmt_ = nullptr;
};

QString quoted(const QString& name) {
    return u'"' + QString(name).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

// The table must be an ordinary table (not a view, a virtual table or anything else) whose named
// columns are ordinary stored columns (not generated ones, which compute on reading).
void requirePlainTable(Store& file, const QString& table, const QStringList& columns) {
    FileQuery kind(file, QStringLiteral("SELECT type, sql FROM sqlite_master WHERE name=?1 COLLATE NOCASE"));
    kind.bind(1, table);
    if (!kind.next() || kind.text(0) != u"table" ||
        kind.text(1).simplified().startsWith(QStringLiteral("CREATE VIRTUAL"), Qt::CaseInsensitive))
        throw FileFault{};
    QStringList plain;
    FileQuery info(file, QStringLiteral("SELECT name, hidden FROM pragma_table_xinfo(?1)"));
    info.bind(1, table);
    while (info.next())
        if (info.checkedInt(1, 0, 3) == 0) plain << info.text(0).toLower();
    for (const QString& c : columns)
        if (!plain.contains(c.toLower())) throw FileFault{};
}

// The store's keys of a condition table in the order rows are matched.
std::vector<long long> storeKeys(const QString& sql) {
    std::vector<long long> keys;
    auto c = store_Query(sql);
    for (; !c->eof(); c->moveNext()) keys.push_back(c->value(0).toLongLong());
    return keys;
}

// 最小值 and 最大值 of the history match are issues; a range may reach into the future, so any
// well-formed issue (yyyyNNN from the first year on, number 1..200) is taken. 匹配值 counts balls.
bool wellFormedIssue(long long issue) {
    const long long number = issue % 1000;
    return issue >= kFirstDrawYear * 1000LL && issue <= 9999999 && number >= 1 && number <= kIssuesPerYearMax;
}

// A condition set read from a file, checked, keyed as the store's rows are.
struct ConditionSet {
    std::vector<long long> ids, conditions, numbers, historyRows;  // the store's keys
    std::vector<int> values, switches;
    QStringList traitColumns;
    std::vector<std::vector<int>> traits, history;
};

// The rows of a keyed table of the file: every key the store has, none it lacks, none twice. Rows
// the program added in a later version may be missing whole (each range of laterRows); they take
// the factory value 0, as the start-up upgrade gives them. Values are checked by `fits`.
template <typename Fits>
std::vector<int> keyedValues(Store& file, const QString& sql, const std::vector<long long>& keys,
                             const QList<QPair<int, int>>& laterRows, Fits fits) {
    std::map<long long, int> byKey;
    FileQuery q(file, sql);
    q.bind(1, (long long)keys.size() + 1);
    while (q.next()) {
        const long long key = q.checkedInt(0, INT_MIN, INT_MAX);
        const long long value = q.checkedInt(1, INT_MIN, INT_MAX);
        if (!fits(key, value) || !byKey.emplace(key, int(value)).second) throw FileFault{};
    }
    const std::set<long long> known(keys.begin(), keys.end());
    for (const auto& [key, value] : byKey)
        if (!known.count(key)) throw FileFault{};  // a row the program does not have
    std::vector<int> values;
    values.reserve(keys.size());
    for (long long key : keys) {
        const auto it = byKey.find(key);
        if (it != byKey.end()) {
            values.push_back(it->second);
            continue;
        }
        // Missing: only a later range, and only when all of it is missing.
        bool later = false;
        for (const auto& [lo, hi] : laterRows) {
            if (key < lo || key > hi) continue;
            for (long long k = lo; k <= hi; ++k)
                if (byKey.count(k)) throw FileFault{};
            later = true;
        }
        if (!later) throw FileFault{};
        values.push_back(0);
    }
    return values;
}

ConditionSet readConditionSet(Store& file) {
    static const QStringList kHistoryColumns{QStringLiteral("使用状态"), QStringLiteral("最小值"),
                                             QStringLiteral("最大值"), QStringLiteral("匹配值")};
    ConditionSet set;
    set.ids = storeKeys(QStringLiteral("select ID from 过滤条件 order by ID asc"));
    set.conditions = storeKeys(QStringLiteral("select 条件 from 过滤条件使用情况 order by 条件 asc"));
    set.numbers = storeKeys(QStringLiteral("select 号码 from 号码特性 order by 号码 asc"));
    set.historyRows = storeKeys(QStringLiteral("select rowid from 历史数据过滤 order by rowid"));
    set.traitColumns = store().columnNames(QStringLiteral("号码特性")).mid(2);

    requirePlainTable(file, QStringLiteral("过滤条件"), {QStringLiteral("ID"), QStringLiteral("VALUE")});
    requirePlainTable(file, QStringLiteral("过滤条件使用情况"),
                      {QStringLiteral("条件"), QStringLiteral("使用情况")});
    requirePlainTable(file, QStringLiteral("号码特性"),
                      QStringList{QStringLiteral("号码")} + set.traitColumns);
    requirePlainTable(file, QStringLiteral("历史数据过滤"), kHistoryColumns);

    set.values = keyedValues(file, QStringLiteral("SELECT ID, VALUE FROM 过滤条件 LIMIT ?1"), set.ids,
                             laterConditionRows(), [](long long id, long long value) {
                                 int low = 0, high = 0;
                                 if (!conditionValueRange(int(id), low, high))
                                     return value == 0 || value == 1;
                                 return conditionValueFits(int(id), value);
                             });
    set.switches =
        keyedValues(file, QStringLiteral("SELECT 条件, 使用情况 FROM 过滤条件使用情况 LIMIT ?1"),
                    set.conditions, {}, [](long long, long long value) { return switchValueFits(value); });
    {
        QStringList columns;
        for (const QString& c : set.traitColumns) columns << quoted(c);
        FileQuery q(file, QStringLiteral("SELECT 号码, %1 FROM 号码特性 LIMIT ?1").arg(columns.join(u',')));
        q.bind(1, (long long)set.numbers.size() + 1);
        std::map<long long, std::vector<int>> byNumber;
        while (q.next()) {
            std::vector<int> row;
            for (int col = 1; col <= columns.size(); ++col) row.push_back(q.checkedInt(col, 0, 1));
            if (!byNumber.emplace(q.checkedInt(0, 1, kRedCount), std::move(row)).second) throw FileFault{};
        }
        if (byNumber.size() != set.numbers.size()) throw FileFault{};
        for (long long n : set.numbers) {
            const auto it = byNumber.find(n);
            if (it == byNumber.end()) throw FileFault{};
            set.traits.push_back(it->second);
        }
    }
    {
        FileQuery q(file, QStringLiteral("SELECT 使用状态,最小值,最大值,匹配值 FROM 历史数据过滤 LIMIT ?1"));
        q.bind(1, (long long)set.historyRows.size() + 1);
        while (q.next()) {
            const int low = q.checkedInt(1, 0, 9999999), high = q.checkedInt(2, 0, 9999999);
            if (!wellFormedIssue(low) || !wellFormedIssue(high)) throw FileFault{};
            set.history.push_back({q.checkedInt(0, 0, 1), low, high, q.checkedInt(3, 0, 7)});
        }
        if (set.history.size() != set.historyRows.size()) throw FileFault{};
    }
    return set;
}

// The pick rows by ID (red n at n, blue n at 100 + n) as they will be once the set is in: the
// store's rows with the file's over them.
using PickRows = std::array<int, 100 + kBlueCount + 1>;

PickRows picksAfter(const ConditionSet& set) {
    PickRows picks{};
    const int size = int(picks.size());
    auto rows = store_Query(QStringLiteral("select ID, VALUE from 过滤条件 where ID>=0 and ID<?"), {size});
    for (; !rows->eof(); rows->moveNext()) picks[size_t(rows->intValue(0))] = rows->intValue(1);
    for (size_t k = 0; k < set.values.size() && set.ids[k] < size; ++k)
        if (set.ids[k] >= 0) picks[size_t(set.ids[k])] = set.values[k];
    return picks;
}

// The ID of the first blue banker, or 0. It stands alone: the other blue rows are cleared with it.
int blueBankerIn(const PickRows& picks) {
    for (int n = 1; n <= kBlueCount; ++n)
        if (picks[size_t(100 + n)] == 2) return 100 + n;
    return 0;
}

void checkTicketLimit(const PickRows& picks, bool blueBanker) {
    int reds = 0, bankers = 0, blues = 0;
    for (int n = 1; n <= kRedCount; ++n) {
        reds += picks[size_t(n)] >= 1;
        bankers += picks[size_t(n)] == 2;
    }
    for (int n = 1; n <= kBlueCount; ++n) blues += picks[size_t(100 + n)] >= 1;
    if (ticketCount(reds, bankers, blues, blueBanker) > kTicketLimit) throw FileFault{true};
}

// In 大底 mode any picks are allowed: the limit holds for the tickets written, not for the picks.
bool spaceModeAfter(const ConditionSet& set) {
    for (size_t k = 0; k < set.values.size(); ++k)
        if (set.ids[k] == kSpaceModeId) return set.values[k] == 1;
    return store().scalar(QStringLiteral("select VALUE from 过滤条件 where ID=?"), {kSpaceModeId}).toInt() ==
           1;
}

void writeConditionSet(const ConditionSet& set, int blueBanker) {
    Store& s = store();
    Transaction tx(s);
    for (size_t k = 0; k < set.values.size(); ++k)
        s.execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=? WHERE ID=?"), {set.values[k], set.ids[k]});
    if (blueBanker != 0)
        s.execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=0 WHERE ID>100 AND ID<=116 AND ID<>?"),
                  {blueBanker});
    for (size_t k = 0; k < set.switches.size(); ++k)
        s.execute(QStringLiteral("UPDATE 过滤条件使用情况 SET 使用情况=? WHERE 条件=?"),
                  {set.switches[k], set.conditions[k]});
    QStringList assignments;
    for (const QString& c : set.traitColumns) assignments << quoted(c) + QStringLiteral("=?");
    const QString updateTraits =
        QStringLiteral("UPDATE 号码特性 SET %1 WHERE 号码=?").arg(assignments.join(u','));
    for (size_t k = 0; k < set.traits.size(); ++k) {
        QVariantList params;
        for (int v : set.traits[k]) params << v;
        params << set.numbers[k];
        s.execute(updateTraits, params);
    }
    for (size_t k = 0; k < set.history.size(); ++k) {
        const auto& h = set.history[k];
        s.execute(
            QStringLiteral("UPDATE 历史数据过滤 SET 使用状态=?, 最小值=?, 最大值=?, 匹配值=? WHERE rowid=?"),
            {h[0], h[1], h[2], h[3], set.historyRows[k]});
    }
}

enum class ReadResult { Done, Refused, OverLimit };

// The condition set of the file at `path` into the store, all of it or nothing.
ReadResult loadConditionFile(const QString& path) {
    try {
        auto file = Store::openReadOnly(path);
        const ConditionSet set = readConditionSet(*file);
        const PickRows picks = picksAfter(set);
        const int blueBanker = blueBankerIn(picks);
        if (!spaceModeAfter(set)) checkTicketLimit(picks, blueBanker != 0);
        writeConditionSet(set, blueBanker);
    } catch (const FileFault& fault) {
        return fault.overLimit ? ReadResult::OverLimit : ReadResult::Refused;
    } catch (const StoreWriteError&) {
        throw;  // a lost write is the command trap's to report
    } catch (const StoreError&) {
        return ReadResult::Refused;
    }
    return ReadResult::Done;
}

// Compacts a condition file in place through Temp_fuDovrex.mdb in the temporary folder.
bool compactConditionFile(const QString& path) {
    if (!QFileInfo::exists(path)) return false;
    const QString temp = shared().paths.tempDir + QStringLiteral("/Temp_fuDovrex.mdb");
    QFile::remove(temp);
    if (!store_Compact(path, temp)) return true;  // an uncompactable file is used as it is
    QFile::remove(path);
    const bool ok = QFile::copy(temp, path);
    QFile::remove(temp);
    return ok;
}

// The template, compacted and filled with the store's set. False (message shown) when missing.
bool fillTemplate() {
    if (!compactConditionFile(templatePath())) {
        screen().ui_Message(msg::kTemplateMissing, MessageKind::Warning);
        return false;
    }
    auto tpl = Store::open(templatePath());
    copy_TiaoJian(store(), *tpl);
    return true;
}

bool replaceFile(const QString& source, const QString& target) {
    QFile::remove(target);
    return QFile::copy(source, target);
}

// Adds to a table the rows of 过滤条件 that came after its layout, where it lacks them, so that the
// sets copied row by row between stores and files stay aligned.
void addLaterRows(Store& s, const QString& table) {
    Transaction tx(s);
    for (const auto& [lo, hi] : laterConditionRows()) {
        auto c = s.query(QStringLiteral("select * from %1 where ID>=%2 and ID<=%3 order by ID asc")
                             .arg(table)
                             .arg(lo)
                             .arg(hi));
        if (c->recordCount() > 0) continue;
        for (int id = lo; id <= hi; ++id)
            s.execute(QStringLiteral("INSERT INTO %1 (ID, VALUE) VALUES (?, 0)").arg(table), {id});
    }
}

}  // namespace

QString templatePath() {
    return shared().paths.programDir + u'/' + kTemplateFileName;
}

QString userFilePath(const QString& user) {
    return shared().paths.programDir + u'/' + user + QStringLiteral(".udovrex");
}

void copy_TiaoJian(Store& from, Store& to) {
    Transaction tx(to);
    copyRows(from, to, QStringLiteral("select VALUE from 过滤条件 order by ID asc"), 0, 0);
    copyRows(from, to, QStringLiteral("select 使用情况 from 过滤条件使用情况 order by 条件 asc"), 0, 0);
    copyRows(from, to, QStringLiteral("select * from 号码特性 order by 号码 asc"), 2, -1);
    copyRows(from, to, QStringLiteral("select 使用状态,最小值,最大值,匹配值 from 历史数据过滤"), 0, 3);
}

bool save_ChengYuanWenJian(const QString& user) {
    if (user == kGuestUser) return true;
    try {
        if (!fillTemplate()) return false;
        return replaceFile(templatePath(), userFilePath(user));
    } catch (const StoreWriteError&) {
        throw;  // a lost write is the command trap's to report
    } catch (const StoreError&) {
        return false;
    }
}

bool load_ChengYuanWenJian(const QString& user) {
    const QString path = userFilePath(user);
    if (!QFileInfo::exists(path)) {
        screen().ui_Message(msg::kUserFileBroken, MessageKind::Warning);
        return false;
    }
    if (loadConditionFile(path) != ReadResult::Done) {
        screen().ui_Message(msg::kUserFileBroken, MessageKind::Warning);
        return false;
    }
    return true;
}

bool exportConditionSet(const QString& path) {
    try {
        if (!fillTemplate()) return false;
    } catch (const StoreWriteError&) {
        throw;  // a lost write is the command trap's to report
    } catch (const StoreError&) {
        return false;
    }
    if (QFileInfo::exists(path) && !screen().ui_Confirm(msg::kOverwriteFile)) return false;
    if (!replaceFile(templatePath(), path)) {
        screen().ui_Message(msg::kExportFailed, MessageKind::Warning);
        return false;
    }
    screen().ui_Message(msg::kExportDone);
    return true;
}

bool daocu_Click() {
    if (!QFileInfo::exists(templatePath())) {
        screen().ui_Message(msg::kTemplateMissing, MessageKind::Warning);
        return false;
    }
    QString path = screen().ui_PickFile(msg::kConditionFileFilter, true, false);
    if (path.isEmpty()) return false;
    if (QFileInfo(path).suffix().isEmpty()) path += QStringLiteral(".dovrex");
    return exportConditionSet(path);
}

bool importConditionSet(const QString& path) {
    if (path.isEmpty() || !checkChosenFile(path)) return false;
    if (const ReadResult r = loadConditionFile(path); r != ReadResult::Done) {
        screen().ui_Message(r == ReadResult::OverLimit ? msg::kImportOverLimit : msg::kImportFormatError,
                            MessageKind::Warning);
        return false;
    }
    screen().ui_Message(msg::kImportDone);
    screen().ui_RefreshPicks();
    screen().ui_Set(role::TabStrip_TiaoJian, QStringLiteral("currentRow"), 0);
    return true;
}

bool daoru_Click() {
    return importConditionSet(screen().ui_PickFile(QStringLiteral("过滤条件 (*.dovrex)"), false));
}

bool huanyuan_Click() {
    try {
        Store& s = store();
        Transaction tx(s);
        copyRows(s, QStringLiteral("select VALUE from 默认过滤条件 order by ID asc"), s,
                 QStringLiteral("select VALUE from 过滤条件 order by ID asc"), 0, 0);
        copyRows(s, QStringLiteral("select 使用情况 from 默认过滤条件使用情况 order by 条件 asc"), s,
                 QStringLiteral("select 使用情况 from 过滤条件使用情况 order by 条件 asc"), 0, 0);
        s.execute(QStringLiteral("UPDATE 历史数据过滤 SET 使用状态=0, 匹配值=5"));
        auto traits = s.query(QStringLiteral(
            "select 自定义组1,自定义组2,自定义组3,自定义组4,自定义组5,自定义组6,自定义组7,自定义组8,"
            "自定义组9,自定义组10,第1位,第2位,第3位,第4位,第5位,第6位,第7位 from 号码特性"));
        for (; !traits->eof(); traits->moveNext()) {
            for (int pos = 0; pos < traits->fieldCount(); ++pos) traits->setValue(pos, false);
            traits->update();
        }
    } catch (const StoreWriteError&) {
        throw;  // a lost write is the command trap's to report
    } catch (const StoreError&) {
        return false;
    }
    screen().ui_RefreshPicks();
    screen().ui_Message(msg::kDefaultsRestored);
    screen().ui_Set(role::TabStrip_Top, QStringLiteral("currentIndex"), 0);
    screen().ui_Set(role::TabStrip_TiaoJian, QStringLiteral("currentRow"), 0);
    return true;
}

bool upgrade_TiaoJian() {
    try {
        addLaterRows(store(), QStringLiteral("过滤条件"));
        addLaterRows(store(), QStringLiteral("默认过滤条件"));
        for (const QString& path : {templatePath(), shared().paths.programDir + u'/' + kGuestFileName}) {
            if (!QFileInfo::exists(path)) {
                screen().ui_Message(msg::kTemplateMissing, MessageKind::Warning);
                return false;
            }
        }
        // Every user's file too: a set read into the store goes row by row.
        const QDir folder(shared().paths.programDir);
        QStringList files{templatePath()};
        for (const QString& name : folder.entryList({QStringLiteral("*.udovrex")}, QDir::Files))
            files << folder.filePath(name);
        for (const QString& path : files) {
            auto file = Store::open(path);
            addLaterRows(*file, QStringLiteral("过滤条件"));
        }
        const ConditionEntry* sum = conditionOfFilter(QStringLiteral("filter_HeZhi"));
        store_Execute(QStringLiteral("UPDATE 快速设置 SET 范围max=? WHERE 菜单ID=? and 条件名称=?"),
                      {sum->maxId, sum->tab, sum->quickName()});
    } catch (const StoreWriteError&) {
        throw;  // a lost write is the command trap's to report
    } catch (const StoreError&) {
        return false;
    }
    return true;
}

}  // namespace dovrex
