#pragma once

#include <QString>

namespace dovrex {

class Store;

// A condition set travels between the store and files: the user's file (<name>.udovrex), an
// exported file (*.dovrex) and the template TJmode.tjmod. All are store files holding the four
// condition tables 过滤条件, 过滤条件使用情况, 号码特性 and 历史数据过滤, with the same rows in the
// same order. A copy goes row by row and ends where the source ends. A file read into the store is
// data from outside: it is checked whole (tables, columns, rows matched by their keys ID, 条件 and
// 号码, every value's type and range, the tickets its picks yield) and either taken whole or
// refused with the store unchanged. Rows added in a later version may be missing from an older
// file; they take their factory value.

namespace msg {
inline const QString kTemplateMissing = QStringLiteral("数据模板文件丢失无法导出，请重新安装！");
inline const QString kUserFileBroken = QStringLiteral("用户文件丢失或损坏,无法打开！");
inline const QString kImportFormatError = QStringLiteral("文件格式错误无法导入数据！");
inline const QString kImportOverLimit =
    QStringLiteral("文件中所选号码的组合超过 １０００００ 注，超出了本程序的限制，无法导入！");
inline const QString kImportDone = QStringLiteral("导入完成！");
inline const QString kExportDone = QStringLiteral("导出完成！");
inline const QString kExportFailed = QStringLiteral("无法写入所选的文件（文件夹不存在或不可写），没有导出。");
inline const QString kOverwriteFile = QStringLiteral("要覆盖这个文件吗？");
inline const QString kDefaultsRestored = QStringLiteral("全部过滤条件已还原为默认值！");
inline const QString kConditionFileFilter = QStringLiteral("过滤条件 (*.dovrex);;全部文件 (*)");
}  // namespace msg

inline const QString kGuestUser = QStringLiteral("临时用户");

// Walks the four condition tables of both stores together, writing each target row from the
// source row. Throws StoreError when a statement fails; rows written before stay written.
void copy_TiaoJian(Store& from, Store& to);

// The shared store's set into the user's file (nothing for the guest). False when the template
// is missing (the message is shown).
bool save_ChengYuanWenJian(const QString& user);
// The user's file into the shared store. False when it is missing or refused (message shown).
bool load_ChengYuanWenJian(const QString& user);

// Export of the set to a file the user picks; import from one; restore of the factory defaults.
// Each talks to the user through the screen. Return true when they did their work.
bool daocu_Click();
bool daoru_Click();
bool huanyuan_Click();

// The same without dialogs, for scripts and tests: export to `path` (asking before overwriting),
// import from `path` (a refused file changes nothing).
bool exportConditionSet(const QString& path);
bool importConditionSet(const QString& path);

// Brings older data up to the present rows of 过滤条件 (laterConditionRows: the hidden buttons
// 34..38, 和值 up to 1190) in the store, its defaults, the template and every user's file, and the
// quick setting of 和值 up to its range. False when the template or the guest's file is missing
// (message shown).
bool upgrade_TiaoJian();

QString userFilePath(const QString& user);
QString templatePath();

}  // namespace dovrex
