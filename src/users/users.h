#pragma once

#include <QString>
#include <QStringList>

namespace dovrex {

// Who is working: single-user or multi-user mode, the users with their own condition sets, the
// login, the purge of users away for 30 days, and switching users while the program runs.

namespace msg {
inline const QString kEmptyUserName = QStringLiteral("用户名不能为空！");
inline const QString kCreateUser = QStringLiteral("用户不存在，要以当前的用户名及密码来建立新用户吗？");
inline const QString kWrongPassword = QStringLiteral("密码错误！(注意大小写区分)");
inline const QString kBadUserName =
    QStringLiteral("用户名不能包含“/”、“\\”、“..”或控制字符，请换一个用户名！");
inline const QString kUserNameTooLong = QStringLiteral("用户名最多３２个字符，请换一个短一些的用户名！");
inline const QString kNewUserHint = QStringLiteral(
    "请在<用户名>及<密码>栏中输入一个新的用户名称及设置密码；\n—\n然后再点击<登陆>"
    "按钮，系统将为您建立一个相应的新用户...");
}  // namespace msg

inline constexpr int kSingleUserMode = 1;
inline constexpr int kMultiUserMode = 2;
inline constexpr int kPurgeDays = 30;
// A user name becomes the file name "<name>.udovrex": 32 characters stay far inside the 255 bytes
// a file name may take, whatever the script.
inline constexpr int kLongestUserName = 32;

// 模式 of 用户模式: 0 not chosen yet, 1 single-user, 2 multi-user.
int read_UserMode();
void write_UserMode(int mode);

// The login list, by name.
QStringList userNames();

// A user name also becomes a file name: names holding "/", "\", "..", control or invisible
// characters (zero-width, bidi overrides, line separators) are refused.
bool isValidUserName(const QString& name);

enum class LoginResult { LoggedIn, Refused };

// cmdOK_Click of the login window: checks the name and password (names match without regard to
// case, passwords with it), offers to create an unknown user, and logs in. Every value typed is
// bound, so a quote is an ordinary character.
LoginResult login_Submit(const QString& name, const QString& password);

// Store defaults into the store's set, then saved as the new user's file.
void new_User(const QString& name);
// Login steps: last login today, the user's set loaded, the current user set, the purge of users
// away 30 days (with their files), the ticket table emptied.
void login_Ok(const QString& name);

// Before the login window of a user switch: the current user's set is saved.
void beginUserSwitch();
// The caption of the main window for the current user.
QString mainCaptionForUser();

}  // namespace dovrex
