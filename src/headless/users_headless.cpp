#include "headless/users_headless.h"

#include "filters/condition_files.h"
#include "headless/headless_runner.h"
#include "screen/shared_state.h"
#include "users/users.h"

namespace dovrex {

bool headless_UserMode(HeadlessRunner& r, const HeadlessArgs& a) {
    if (!r.requireStore()) return false;
    if (!a.words.isEmpty()) {
        int mode = 0;
        if (!a.intAt(r, 0, mode)) return false;
        if (mode != kSingleUserMode && mode != kMultiUserMode)
            return r.fail(QStringLiteral("user-mode [1|2]"));
        write_UserMode(mode);
    }
    r.print(QStringLiteral("mode %1").arg(read_UserMode()));
    return true;
}

bool headless_Login(HeadlessRunner& r, const HeadlessArgs& a) {
    if (!r.requireStore()) return false;
    if (a.words.isEmpty()) return r.fail(QStringLiteral("login <name> [<password>]"));
    const LoginResult result = login_Submit(a.words.value(0), a.words.value(1));
    r.print(result == LoginResult::LoggedIn ? QStringLiteral("logged in as ") + shared().g_CurrentUser
                                            : QStringLiteral("login refused"));
    return true;
}

bool headless_Users(HeadlessRunner& r, const HeadlessArgs&) {
    if (!r.requireStore()) return false;
    for (const QString& name : userNames())
        r.print((name == shared().g_CurrentUser ? QStringLiteral("* ") : QStringLiteral("  ")) + name);
    return true;
}

bool headless_ExportConditions(HeadlessRunner& r, const HeadlessArgs& a) {
    if (!r.requireStore()) return false;
    if (a.text.isEmpty()) return r.fail(QStringLiteral("export-conditions <file>"));
    exportConditionSet(a.text);
    return true;
}

bool headless_ImportConditions(HeadlessRunner& r, const HeadlessArgs& a) {
    if (!r.requireStore()) return false;
    if (a.text.isEmpty()) return r.fail(QStringLiteral("import-conditions <file>"));
    importConditionSet(a.text);
    return true;
}

bool headless_RestoreDefaults(HeadlessRunner& r, const HeadlessArgs&) {
    if (!r.requireStore()) return false;
    huanyuan_Click();
    return true;
}

}  // namespace dovrex
