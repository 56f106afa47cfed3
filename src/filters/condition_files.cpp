#include "filters/condition_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "domain/condition_catalogue.h"
#include "screen/chosen_file.h"
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
    try {
        auto file = Store::open(path);
        copy_TiaoJian(*file, store());
    } catch (const StoreError&) {
        screen().ui_Message(msg::kUserFileBroken, MessageKind::Warning);
        return false;
    }
    return true;
}

bool export_TiaoJian(const QString& path) {
    try {
        if (!fillTemplate()) return false;
    } catch (const StoreError&) {
        return false;
    }
    if (QFileInfo::exists(path) && !screen().ui_Confirm(msg::kOverwriteFile)) return false;
    if (!replaceFile(templatePath(), path)) return false;
    screen().ui_Message(msg::kExportDone);
    return true;
}

bool daocu_Click() {
    if (!QFileInfo::exists(templatePath())) {
        screen().ui_Message(msg::kTemplateMissing, MessageKind::Warning);
        return false;
    }
    QString path = screen().ui_PickFile(msg::kConditionFileFilter, true);
    if (path.isEmpty()) return false;
    if (QFileInfo(path).suffix().isEmpty()) path += QStringLiteral(".dovrex");
    return export_TiaoJian(path);
}

bool import_TiaoJian(const QString& path) {
    if (path.isEmpty() || !checkChosenFile(path)) return false;
    try {
        auto file = Store::open(path);
        copy_TiaoJian(*file, store());
    } catch (const StoreError&) {
        screen().ui_Message(msg::kImportFormatError, MessageKind::Warning);
        screen().ui_RefreshPicks();
        return false;
    }
    screen().ui_Message(msg::kImportDone);
    screen().ui_RefreshPicks();
    screen().ui_Set(QStringLiteral("TabStrip_TiaoJian"), QStringLiteral("currentRow"), 0);
    return true;
}

bool daoru_Click() {
    return import_TiaoJian(screen().ui_PickFile(QStringLiteral("过滤条件 (*.dovrex)"), false));
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
    } catch (const StoreError&) {
        return false;
    }
    screen().ui_RefreshPicks();
    screen().ui_Message(msg::kDefaultsRestored);
    screen().ui_Set(QStringLiteral("TabStrip_Top"), QStringLiteral("currentIndex"), 0);
    screen().ui_Set(QStringLiteral("TabStrip_TiaoJian"), QStringLiteral("currentRow"), 0);
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
    } catch (const StoreError&) {
        return false;
    }
    return true;
}

}  // namespace dovrex
