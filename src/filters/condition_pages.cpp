#include "filters/condition_pages.h"

#include <QHash>
#include <QRegularExpression>
#include <functional>

#include "domain/game.h"
#include "domain/metrics.h"
#include "filters/condition_store.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

namespace {

const QString kUnused = QStringLiteral(" 未 使 用");
const QString kSeparator = QStringLiteral(" ----------------------------------------------------------- ");

QString useCaption(const QString& name) {
    return QStringLiteral("使用“%1”过滤").arg(name);
}

ConditionList numberedList(const QString& name, const QString& lineName, int switchNo, int base, int from,
                           int to) {
    ConditionList list{useCaption(name), switchNo, {}};
    for (int v = from; v <= to; ++v)
        list.lines.append({QStringLiteral("%1=%2").arg(lineName).arg(v), base + v});
    return list;
}

ConditionList keyList(const QString& name, int switchNo, int base, int keys, const QString& (*text)(int)) {
    ConditionList list{useCaption(name), switchNo, {}};
    for (int i = 0; i < keys; ++i) list.lines.append({text(i), base + i});
    return list;
}

struct RangeCode {
    int code, minId, maxId, base;
};
const RangeCode kRangeCodes[] = {{1, 1000, 1183, 1000},  {2, 2000, 2170, 2000},  {3, 3000, 3170, 3000},
                                 {4, 3300, 3340, 3300},  {5, 3400, 3440, 3400},  {22, 4080, 4099, 4080},
                                 {23, 4100, 4159, 4100}, {24, 4160, 4179, 4160}, {25, 4180, 4209, 4180}};

// The allowed values of an id range, from base, in order.
QList<int> allowedValues(int minId, int maxId, int base) {
    QList<int> values;
    auto c =
        store_Query(QStringLiteral("select ID, VALUE from 过滤条件 where ID>=%1 and ID<=%2 order by ID asc")
                        .arg(minId)
                        .arg(maxId));
    for (; !c->eof(); c->moveNext())
        if (c->intValue(1) > 0) values << c->intValue(0) - base;
    return values;
}

QString numbersText(const QList<int>& numbers) {
    QString out;
    for (int n : numbers) out += to_QuanJiao(twoDigits(n)) + QStringLiteral("  ");
    return out;
}

QString eachValue(int minId, int maxId, int base) {
    QString out;
    for (int v : allowedValues(minId, maxId, base)) out += to_QuanJiao(v) + QStringLiteral("  ");
    return out;
}

QString eachKey(int minId, int maxId, int base, const QString& (*text)(int), int keys) {
    QString out;
    for (int v : allowedValues(minId, maxId, base))
        if (v >= 0 && v < keys) out += QStringLiteral("（") + text(v) + QStringLiteral("）");
    return out;
}

QList<int> picked(int from, int to, int value, int offset) {
    QList<int> numbers;
    auto c = store_Query(
        QStringLiteral("select ID from 过滤条件 where ID>=%1 and ID<=%2 and VALUE=%3 order by ID asc")
            .arg(from)
            .arg(to)
            .arg(value));
    for (; !c->eof(); c->moveNext()) numbers << c->intValue(0) - offset;
    return numbers;
}

QList<int> groupMembers(const QString& column) {
    QList<int> numbers;
    auto c = store_Query(QStringLiteral("select 号码, [%1] from 号码特性 order by 号码 asc").arg(column));
    for (; !c->eof(); c->moveNext())
        if (c->intValue(1) != 0) numbers << c->intValue(0);
    return numbers;
}

int customGroupBase(int k) {
    return k <= 10 ? 3800 + 10 * (k - 1) : 4500 + 10 * (k - 11);
}
int customGroupSwitch(int k) {
    return k <= 10 ? 19 + k : 40 + k;
}

const QString& shrinkTypeCaption(int t) {
    static const QString captions[] = {QString(),
                                       QString(),
                                       QString(),
                                       QStringLiteral("保三型"),
                                       QStringLiteral("保四型"),
                                       QStringLiteral("保五型"),
                                       QStringLiteral("保六型"),
                                       QStringLiteral("保七型")};
    static const QString none;
    return t >= 0 && t <= 7 ? captions[t] : none;
}

}  // namespace

QList<ConditionList> conditionLists(int tab) {
    switch (tab) {
        case 2:
            return {numberedList(QStringLiteral("和值"), QStringLiteral("和值"), 1, 1000, 15, 183)};
        case 3:
            return {numberedList(QStringLiteral("奇数和值"), QStringLiteral("奇数和值"), 2, 2000, 0, 155)};
        case 4:
            return {numberedList(QStringLiteral("偶数和值"), QStringLiteral("偶数和值"), 3, 3000, 0, 150)};
        case 5:
            return {numberedList(QStringLiteral("跨度"), QStringLiteral("跨度"), 4, 3300, 5, 32)};
        case 6:
            return {numberedList(QStringLiteral("最大间距"), QStringLiteral("最大间距"), 5, 3400, 1, 28)};
        case 7: {
            ConditionList list{useCaption(QStringLiteral("连号")), 6, {}};
            for (int i = 0; i < kLianHaoCodes; ++i)
                list.lines.append({QStringLiteral("连号=") + lianHaoText(i), 3450 + i});
            return {list};
        }
        case 8:
            return {numberedList(QStringLiteral("重叠号"), QStringLiteral("重叠码个数"), 7, 3470, 0, 6)};
        case 9:
            return {numberedList(QStringLiteral("斜位码"), QStringLiteral("斜位码个数"), 8, 3490, 0, 6)};
        case 10:
            return {numberedList(QStringLiteral("ＡＣ值"), QStringLiteral("AC值"), 9, 3600, 0, 10)};
        case 26:
            return {numberedList(QStringLiteral("和值尾"), QStringLiteral("和值尾"), 76, 5070, 0, 9)};
        case 11:
        case 12:
        case 13: {
            static const char16_t* const names[3][2] = {
                {u"奇数个数", u"偶数个数"}, {u"大数个数", u"小数个数"}, {u"高尾码个数", u"低尾码个数"}};
            QList<ConditionList> lists;
            for (int k = 0; k < 2; ++k) {
                const QString name = QString::fromUtf16(names[tab - 11][k]);
                lists << numberedList(name, name, 2 * tab - 12 + k, 3640 + 20 * (tab - 11) + 10 * k, 0, 6);
            }
            return lists;
        }
        case 14: {
            QList<ConditionList> lists;
            for (int k = 1; k <= 4; ++k)
                lists << numberedList(QStringLiteral("区间%1").arg(k),
                                      QStringLiteral("区间%1开出个数").arg(k), 15 + k, 3700 + 10 * (k - 1), 0,
                                      6);
            return lists;
        }
        case 16:
            return {keyList(QStringLiteral("尾数形式"), 37, 4000, kGesTable5Keys, gesTable5Text)};
        case 17:
            return {keyList(QStringLiteral("间距九"), 38, 4010, kGesTable5Keys, gesTable5Text)};
        case 18:
            return {keyList(QStringLiteral("间距七"), 39, 4020, kGesTable5Keys, gesTable5Text)};
        case 19:
            return {keyList(QStringLiteral("间距十一"), 40, 4030, kGesTable5Keys, gesTable5Text)};
        case 20:
            return {keyList(QStringLiteral("间距十二"), 41, 4050, kGesTable5Keys, gesTable5Text)};
        case 21:
            return {keyList(QStringLiteral("头数形式"), 42, 4070, kGesTable6Keys, gesTable6Text)};
        case 22:
            return {numberedList(QStringLiteral("头数和值"), QStringLiteral("头数和值"), 43, 4080, 0, 16)};
        case 23:
            return {numberedList(QStringLiteral("尾数和值"), QStringLiteral("尾数和值"), 44, 4100, 0, 51)};
        case 24:
            return {numberedList(QStringLiteral("温度值5"), QStringLiteral("温度值5"), 46, 4160, 0, 12)};
        case 25:
            return {numberedList(QStringLiteral("温度值10"), QStringLiteral("温度值10"), 47, 4180, 0, 20)};
        default:
            return {};
    }
}

void set_ConditionLine(const ConditionLine& line, bool allowed) {
    set_GuoLvTiaoJian(line.id, allowed ? 1 : 0);
}

bool conditionLineAllowed(const ConditionLine& line) {
    return get_GuoLvTiaoJian(line.id) > 0;
}

QString rangeRuns(int minId, int maxId, int base, const QString& separator) {
    QStringList runs;
    const QList<int> values = allowedValues(minId, maxId, base);
    for (int i = 0; i < values.size();) {
        int j = i;
        while (j + 1 < values.size() && values[j + 1] == values[j] + 1) ++j;
        runs << (i == j ? QStringLiteral("[%1]").arg(values[i])
                        : QStringLiteral("[%1-%2]").arg(values[i]).arg(values[j]));
        i = j + 1;
    }
    return runs.join(separator);
}

QString text_FanWei(int code) {
    for (const RangeCode& r : kRangeCodes)
        if (r.code == code) return to_QuanJiao(rangeRuns(r.minId, r.maxId, r.base, QStringLiteral(" , ")));
    return {};
}

QString text_DanShuang(const QList<int>& values) {
    QString out;
    for (int v : values)
        out += v == 0 ? QStringLiteral("双") : v == 1 ? QStringLiteral("单") : QStringLiteral("*");
    return out;
}

QString zuLieBiaoLine(int k) {
    auto alias = store_Query(QStringLiteral("select 别名 from 自定义别名 where 序号=%1").arg(k));
    const QString name =
        alias->recordCount() > 0 ? alias->value(0).toString() : QStringLiteral("自定义组%1").arg(k);
    QString line = name + QStringLiteral(" ——");
    if (get_ShiYongQingKuang(customGroupSwitch(k)) != 1)
        return line + QStringLiteral("——") + QStringLiteral(" 未 使 用 ");
    const QList<int> members = groupMembers(QStringLiteral("自定义组%1").arg(k));
    if (members.isEmpty()) {
        line += QStringLiteral("（ 无 号 码 ）");
    } else {
        QStringList texts;
        for (int n : members) texts << to_QuanJiao(twoDigits(n));
        line += QStringLiteral("号码：（") + texts.join(u',') + QStringLiteral("）");
    }
    const QList<int> counts = allowedValues(customGroupBase(k), customGroupBase(k) + 9, customGroupBase(k));
    if (counts.isEmpty()) return line + QStringLiteral("（条 件 未 设 置）");
    line += QStringLiteral(" 允许开出个数（");
    for (int c : counts) line += to_QuanJiao(c) + QStringLiteral("个,");
    return line + QStringLiteral("）");
}

QStringList list_ZuLieBiao() {
    QStringList lines;
    for (int k = 1; k <= 20; ++k) lines << zuLieBiaoLine(k);
    return lines;
}

QString make_BaoGao() {
    QString text;
    auto line = [&text](const QString& l) { text += QStringLiteral("\n\n") + l; };
    auto on = [](int n) { return get_ShiYongQingKuang(n) == 1; };

    // Picks.
    line(QStringLiteral(" 红球“拖码”： ") + numbersText(picked(1, 33, 1, 0)));
    line(QStringLiteral(" 红球“胆码”： ") + numbersText(picked(1, 33, 2, 0)));
    line(QStringLiteral(" 蓝球“拖码”： ") + numbersText(picked(101, 116, 1, 100)));
    line(QStringLiteral(" 蓝球“胆码”： ") + numbersText(picked(101, 116, 2, 100)));
    line(kSeparator);

    // Positions.
    for (int i = 1; i <= 7; ++i) {
        const QString label =
            QStringLiteral(" 第 ") + to_QuanJiao(i) + QStringLiteral(" 位允许开出的号码： ");
        line(label + (on(29 + i) ? numbersText(groupMembers(QStringLiteral("第%1位").arg(i))) : kUnused));
    }
    line(QStringLiteral(" 定位过滤容错条件个数： ") + to_QuanJiao(get_GuoLvTiaoJian(3901)));
    line(kSeparator);

    // The conditions.
    struct Block {
        const char16_t* label;
        int switchNo;
        std::function<QString()> text;
    };
    auto range = [](int code) { return [code] { return text_FanWei(code); }; };
    auto each = [](int minId, int maxId) { return [=] { return eachValue(minId, maxId, minId); }; };
    auto keys5 = [](int minId) {
        return [=] { return eachKey(minId, minId + 9, minId, gesTable5Text, kGesTable5Keys); };
    };
    const QList<Block> blocks = {
        {u" 和值取值范围： ", 1, range(1)},
        {u" 允许的和值尾： ", 76, each(5070, 5079)},
        {u" 头数和值范围： ", 43, range(22)},
        {u" 尾数和值范围： ", 44, range(23)},
        {u" 奇数和值取值范围： ", 2, range(2)},
        {u" 偶数和值取值范围： ", 3, range(3)},
        {u" 跨度取值范围： ", 4, range(4)},
        {u" 最大间距取值范围： ", 5, range(5)},
        {u" 温度值５取值范围： ", 46, range(24)},
        {u" 温度值１０取值范围： ", 47, range(25)},
        {u" 连号取值范围： ", 6, [] { return eachKey(3450, 3460, 3450, lianHaoText, kLianHaoCodes); }},
        {u" 重叠号取值范围： ", 7, each(3470, 3480)},
        {u" 斜位码取值范围： ", 8, each(3490, 3500)},
        {u" ＡＣ值取值范围： ", 9, each(3600, 3630)},
        {u" 奇数个数取值范围： ", 10, each(3640, 3649)},
        {u" 偶数个数取值范围： ", 11, each(3650, 3659)},
        {u" 大数个数取值范围： ", 12, each(3660, 3669)},
        {u" 小数个数取值范围： ", 13, each(3670, 3679)},
        {u" 高尾码个数取值范围： ", 14, each(3680, 3689)},
        {u" 低尾码个数取值范围： ", 15, each(3690, 3699)},
        {u" 区间1开出号码个数取值范围： ", 16, each(3700, 3709)},
        {u" 区间2开出号码个数取值范围： ", 17, each(3710, 3719)},
        {u" 区间3开出号码个数取值范围： ", 18, each(3720, 3729)},
        {u" 区间4开出号码个数取值范围： ", 19, each(3730, 3739)},
        {u" 尾数形式： ", 37, keys5(4000)},
        {u" 间距九： ", 38, keys5(4010)},
        {u" 间距七： ", 39, keys5(4020)},
        {u" 间距十一： ", 40, keys5(4030)},
        {u" 间距十二： ", 41, keys5(4050)},
        {u" 头数形式： ", 42, [] { return eachKey(4070, 4079, 4070, gesTable6Text, kGesTable6Keys); }},
    };
    for (const Block& b : blocks) line(QString::fromUtf16(b.label) + (on(b.switchNo) ? b.text() : kUnused));
    line(kSeparator);

    // Custom groups.
    for (const QString& l : list_ZuLieBiao()) line(l);
    line(kSeparator);

    // History match.
    {
        auto h = store_Query(QStringLiteral("select * from 历史数据过滤"));
        QString t = QStringLiteral(" 历史数据过滤： ");
        if (h->recordCount() == 0 || h->intValue(QStringLiteral("使用状态")) == 0) {
            t += kUnused;
        } else {
            t += QStringLiteral(" 过滤掉与 ") + to_QuanJiao(h->intValue(QStringLiteral("最小值"))) +
                 QStringLiteral(" ～ ") + to_QuanJiao(h->intValue(QStringLiteral("最大值"))) +
                 QStringLiteral(" 期,匹配值为： ") + to_QuanJiao(h->intValue(QStringLiteral("匹配值"))) +
                 QStringLiteral(" 及以上的号码.");
        }
        line(t);
    }
    line(kSeparator);

    // Parity patterns.
    for (int slot = 1; slot <= 5; ++slot) {
        if (!on(70 + slot)) continue;
        QList<int> values;
        for (int p = 1; p <= 7; ++p) values << get_GuoLvTiaoJian(5000 + 10 * slot + p);
        line(QStringLiteral(" √ 排除掉单双组合： ") + text_DanShuang(values));
    }
    if (on(70)) line(QStringLiteral(" √ 【排除掉上一期的单双组合形式】"));
    line(kSeparator);

    // Shrink.
    line(QStringLiteral(" 缩 水 类 型： ") + shrinkTypeCaption(get_GuoLvTiaoJian(3900)));
    line(on(45) ? QStringLiteral(" 缩水智能优化： ★☆★☆★ 使 用 ★☆★☆★")
                : QStringLiteral(" 缩水智能优化： 未 使 用"));
    return text;
}

QString text_KuaiSuFanWei(int no) {
    auto row = store_Query(QStringLiteral("select * from 快速设置 where 编号=%1").arg(no));
    if (row->recordCount() == 0) return {};
    const int min = row->intValue(QStringLiteral("范围min"));
    const int max = row->intValue(QStringLiteral("范围max"));
    return rangeRuns(min, max, min, QStringLiteral(","));
}

bool apply_KuaiSu(const QHash<int, QString>& texts) {
    auto rows = store_Query(QStringLiteral("select * from 快速设置 order by 编号 asc"));
    QHash<int, QString> cleaned;
    // First pass: every row, ticked or not, is tidied and checked.
    for (rows->moveFirst(); !rows->eof(); rows->moveNext()) {
        const int no = rows->intValue(QStringLiteral("编号"));
        const QString name = rows->value(QStringLiteral("条件名称")).toString();
        QString t = texts.value(no);
        t.remove(u',').remove(u'，');
        t.replace(u'【', u'[').replace(u'】', u']').replace(u'－', u'-').replace(u'—', u'-');
        if (!t.startsWith(u'[')) t.prepend(u'[');
        if (!t.endsWith(u']')) t.append(u']');
        cleaned.insert(no, t);
        if (t.size() < 3) {
            screen().ui_Message(
                QStringLiteral("未设置[") + name +
                    QStringLiteral("的范围！(你可以自己设置，也可以点击下面的还原为默认值按钮)"),
                MessageKind::Warning);
            return false;
        }
        for (const QChar c : t) {
            if (!QStringLiteral("0123456789[]-").contains(c)) {
                screen().ui_Message(
                    QStringLiteral("你设置的[") + name +
                        QStringLiteral("的范围包含非法字符！(只允许‘0123456789[]-’中的字符，如：[1-5]"
                                       "或者[5]是合法的)"),
                    MessageKind::Warning);
                return false;
            }
        }
        // A number too large to hold is refused rather than read as 0.
        static const QRegularExpression kDigits(QStringLiteral("[0-9]+"));
        for (auto m = kDigits.globalMatch(t); m.hasNext();) {
            bool fits = false;
            m.next().captured().toInt(&fits);
            if (!fits) {
                screen().ui_Message(QStringLiteral("你设置的[") + name + msg::kQuickNumberTooLarge,
                                    MessageKind::Warning);
                return false;
            }
        }
    }
    // Second pass: each range rewritten from its text.
    Transaction tx(store());
    for (rows->moveFirst(); !rows->eof(); rows->moveNext()) {
        const int no = rows->intValue(QStringLiteral("编号"));
        const int min = rows->intValue(QStringLiteral("范围min"));
        const int max = rows->intValue(QStringLiteral("范围max"));
        set_GuoLvFanWei(min, max < 1 ? min : max, 0);
        QString t = cleaned.value(no);
        while (!t.isEmpty()) {
            const int close = t.indexOf(u']');
            QString piece = close < 0 ? t : t.left(close + 1);
            t = close < 0 ? QString() : t.mid(close + 1);
            piece.remove(u'[').remove(u']');
            if (piece.isEmpty()) continue;
            const int dash = piece.indexOf(u'-');
            // In 64 bits: the offset may be near the largest int.
            if (dash < 0) {
                const long long id = min + qAbs(piece.toLongLong());
                if (id <= max) set_GuoLvTiaoJian(int(id), 1);
            } else {
                const long long a = qAbs(piece.left(dash).toLongLong());
                const long long b = qAbs(piece.mid(dash + 1).toLongLong());
                if (min + a > max) continue;
                for (long long id = min + a; id <= std::min<long long>(min + b, max); ++id)
                    set_GuoLvTiaoJian(int(id), 1);
            }
        }
    }
    screen().ui_Message(QStringLiteral("条件设置完成！"));
    return true;
}

}  // namespace dovrex
