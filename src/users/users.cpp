#include "users/users.h"

#include <QFile>

#include "domain/date_value.h"
#include "filters/condition_files.h"
#include "screen/control_roles.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

namespace {

// Copies one column of a defaults table over the working table, row by row in the same order.
void copyDefaults(Store& s, const QString& fromSql, const QString& toSql) {
    auto from = s.query(fromSql);
    auto to = s.query(toSql);
    for (; !from->eof() && !to->eof(); from->moveNext(), to->moveNext()) to->setValue(0, from->value(0));
    to->update();
}

}  // namespace

int read_UserMode() {
    auto c = store_Query(QStringLiteral("select * from 用户模式 "));
    return c->recordCount() > 0 ? c->intValue(QStringLiteral("模式")) : 0;
}

void write_UserMode(int mode) {
    auto c = store_Query(QStringLiteral("select * from 用户模式 "));
    if (c->recordCount() == 0) {
        store_Execute(QStringLiteral("INSERT INTO 用户模式 (模式) VALUES (?)"), {mode});
    } else {
        c->setValue(QStringLiteral("模式"), mode);
        c->update();
    }
    shared().g_UserMode = mode;
}

QStringList userNames() {
    QStringList names;
    for (auto c = store_Query(QStringLiteral("select 用户名 from 用户表 order by 用户名 asc")); !c->eof();
         c->moveNext())
        names << c->value(0).toString();
    return names;
}

bool isValidUserName(const QString& name) {
    if (name.contains(u'/') || name.contains(u'\\') || name.contains(QStringLiteral(".."))) return false;
    // Control, format (zero-width, bidi overrides), line and paragraph separators, private-use and
    // unassigned characters print as nothing or as something else: two names could look the same.
    for (const QChar c : name) {
        switch (c.category()) {
            case QChar::Other_Control:
            case QChar::Other_Format:
            case QChar::Other_PrivateUse:
            case QChar::Other_NotAssigned:
            case QChar::Separator_Line:
            case QChar::Separator_Paragraph:
                return false;
            default:
                break;
        }
    }
    return true;
}

void new_User(const QString& name) {
    Store& s = store();
    {
        Transaction tx(s);
        copyDefaults(s, QStringLiteral("select VALUE from 默认过滤条件 order by ID asc"),
                     QStringLiteral("select VALUE from 过滤条件 order by ID asc"));
        copyDefaults(s, QStringLiteral("select 使用情况 from 默认过滤条件使用情况 order by 条件 asc"),
                     QStringLiteral("select 使用情况 from 过滤条件使用情况 order by 条件 asc"));
        s.execute(QStringLiteral("UPDATE 历史数据过滤 SET 使用状态=0, 匹配值=5"));
    }
    save_ChengYuanWenJian(name);
}

void login_Ok(const QString& name) {
    store_Execute(QStringLiteral("UPDATE 用户表 SET 最后登陆时间=? WHERE 用户名=?"),
                  {toDateValue(Clock::today()), name});
    load_ChengYuanWenJian(name);
    shared().g_CurrentUser = name;

    const QString cutoff = dateText(Clock::today().addDays(-kPurgeDays));
    const QString away = QStringLiteral("最后登陆时间<=#%1# and 用户名<>'临时用户'").arg(cutoff);
    for (auto c = store_Query(QStringLiteral("select 用户名 from 用户表 where ") + away); !c->eof();
         c->moveNext()) {
        const QString user = c->value(0).toString();
        if (isValidUserName(user)) QFile::remove(userFilePath(user));
    }
    store_Execute(QStringLiteral("DELETE FROM 用户表 WHERE ") + away);
    store_Execute(QStringLiteral("DELETE FROM 日志表 "));
    screen().ui_Grid(role::TDBGrid_RZ, nullptr);
    screen().ui_RefreshPicks();
}

LoginResult login_Submit(const QString& typedName, const QString& typedPassword) {
    const QString name = typedName.trimmed();
    const QString password = typedPassword.trimmed();
    if (name.isEmpty()) {
        screen().ui_Message(msg::kEmptyUserName, MessageKind::Warning);
        return LoginResult::Refused;
    }
    if (!isValidUserName(name)) {
        screen().ui_Message(msg::kBadUserName, MessageKind::Warning);
        return LoginResult::Refused;
    }
    // Refused before anything is written: a longer name would get a row but never its file.
    if (name.size() > kLongestUserName) {
        screen().ui_Message(msg::kUserNameTooLong, MessageKind::Warning);
        return LoginResult::Refused;
    }
    try {
        auto user = store_Query(QStringLiteral("select * from 用户表 where 用户名=? COLLATE NOCASE"), {name});
        if (user->recordCount() == 0) {
            if (!screen().ui_Confirm(msg::kCreateUser)) return LoginResult::Refused;
            store_Execute(QStringLiteral("INSERT INTO 用户表 (用户名, 密码, 最后登陆时间) VALUES (?, ?, ?)"),
                          {name, password, toDateValue(Clock::today())});
            new_User(name);
            login_Ok(name);
            return LoginResult::LoggedIn;
        }
        const QString stored = user->value(QStringLiteral("用户名")).toString();
        if (stored == kGuestUser) {
            login_Ok(stored);
            return LoginResult::LoggedIn;
        }
        auto match = store_Query(
            QStringLiteral("select * from 用户表 where 用户名=? COLLATE NOCASE and 密码=? COLLATE BINARY"),
            {name, password});
        if (match->recordCount() == 0) {
            screen().ui_Message(msg::kWrongPassword, MessageKind::Warning);
            return LoginResult::Refused;
        }
        login_Ok(stored);
        return LoginResult::LoggedIn;
    } catch (const StoreWriteError&) {
        throw;  // a lost write is the command trap's to report
    } catch (const StoreError&) {
        return LoginResult::Refused;
    }
}

void beginUserSwitch() {
    save_ChengYuanWenJian(shared().g_CurrentUser);
}

QString mainCaptionForUser() {
    return shared().g_CurrentUser.isEmpty()
               ? shared().g_MainCaption
               : shared().g_MainCaption + QStringLiteral("  —— ") + shared().g_CurrentUser;
}

}  // namespace dovrex
