#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace dovrex {

// What the condition pages show and write, without the widgets: the lines of each value list with
// the condition row behind each line, the switch of each page, the range texts, the custom group
// summaries and the report of every setting (查看全部).

// One line of a value list and the 过滤条件 row its tick writes.
struct ConditionLine {
    QString text;
    int id = 0;
    int value = 0;  // the line's index into guoLvShuZu once its list's rows are loaded
};

// A value list of a condition page with its switch.
struct ConditionList {
    QString caption;  // "使用“和值”过滤"
    int switchNo = 0;
    int minId = 0, maxId = -1;  // the rows a page loads into guoLvShuZu to tick its lines
    QList<ConditionLine> lines;
    bool numbered = false;  // lines "名称=v" of a range of numbers, whose `value` is v
};

// The lists of a condition page (1-based tab of the condition pages), from the condition catalogue:
// one for tabs 2..10, 16..26, two for the count pages 11..13, four for the interval page 14; none
// for the others.
QList<ConditionList> conditionLists(int tab);

// The pages' loaders, by tab: the one list of a range page (tabs 2..10 and 26), the lists of a
// count page (11..13) or of the interval page (14), and the one list of a shape or other page
// (16..25), whose line index is the value.
ConditionList load_TiaoJianLieBiao(int tab);
QList<ConditionList> load_GeShuLieBiao(int tab);
ConditionList load_ElseLieBiao(int tab);

// A tick: writes 1 or 0 into the line's row.
void set_ConditionLine(const ConditionLine& line, bool allowed);
// A run of ticks (a shift-click, a drag, a from-to entry): every line's row in one transaction.
void set_ConditionLines(const QList<ConditionLine>& lines, bool allowed);
// The ticks of a list as a page fills it: the list's rows go through load_GuoLvFanWei into
// guoLvShuZu (where they stay, for whatever reads the array next), and a line is ticked when its
// entry there is above 0.
QList<bool> loadListTicks(const ConditionList& list);

// Runs of allowed values of a range condition, e.g. "［３-８］ , ［１０］" as "[3-8] , [10]" in
// full-width digits: codes 1..5 (和值, 奇数和值, 偶数和值, 跨度, 最大间距) and 22..25 (头数和值,
// 尾数和值, 温度值5, 温度值10). Empty for other codes.
QString text_FanWei(int code);
// The same runs for any id range, counting values from `base`, joined by `separator`; plain digits.
QString rangeRuns(int minId, int maxId, int base, const QString& separator);

// "双", "单" or "*" for each of seven parity values.
QString text_DanShuang(const QList<int>& values);

// The line of custom group k (1..20) in the group list: alias, members and allowed counts.
QString zuLieBiaoLine(int k);
QStringList list_ZuLieBiao();

// The report of every current setting, as tab 30 shows it.
QString make_BaoGao();

// Quick settings: the range text of a 快速设置 row, and the submit of all rows' texts (keyed by
// 编号). apply_KuaiSu returns false when a text was refused (the message has been shown).
QString text_KuaiSuFanWei(int no);
// One row of 快速设置 as the quick settings window lists it.
struct KuaiSuRow {
    int no = 0;           // 编号
    int menuId = 0;       // 菜单ID: the condition tab the row belongs to
    int conditionNo = 0;  // 条件编号: its switch in 过滤条件使用情况
    QString name;         // 条件名称
};
QList<KuaiSuRow> list_KuaiSuRows();
bool apply_KuaiSu(const QHash<int, QString>& texts);

namespace msg {
// Follows "你设置的[" and the condition's name.
inline const QString kQuickNumberTooLarge =
    QStringLiteral("的范围包含过大的数字！(每个数字最大为２１４７４８３６４７，如：[1-5]或者[5]是合法的)");
}  // namespace msg

}  // namespace dovrex
