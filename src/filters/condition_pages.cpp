#include "filters/condition_pages.h"

#include <QHash>
#include <QRegularExpression>
#include <functional>

#include "domain/condition_catalogue.h"
#include "domain/game.h"
#include "domain/metrics.h"
#include "filters/condition_editing.h"
#include "filters/condition_store.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

namespace {

const QString kUnused = QStringLiteral(" 未 使 用");
const QString kSeparator = QStringLiteral(" ----------------------------------------------------------- ");

// The keys a condition's lines stand for: the 连号 keys or the shape keys.
struct KeyTable {
    const QString& (*text)(int);
    int count;
};
KeyTable keysOf(LineKind kind) {
    switch (kind) {
        case LineKind::RunKeys:
            return {lianHaoText, kLianHaoCodes};
        case LineKind::ShapeKeys:
            return {gesTable5Text, kGesTable5Keys};
        case LineKind::HeadKeys:
            return {gesTable6Text, kGesTable6Keys};
        default:
            return {nullptr, 0};
    }
}

ConditionList listOf(const ConditionEntry& c) {
    ConditionList list{c.caption(), c.switchNo, c.minId, c.maxId, {}};
    const QString lineName = c.lineName ? QString::fromUtf16(c.lineName) : QString();
    if (c.lines == LineKind::Numbers) {
        list.numbered = true;
        for (int v = c.firstLine; v <= c.lastLine; ++v)
            list.lines.append({QStringLiteral("%1=%2").arg(lineName).arg(v), c.minId + v, v});
        return list;
    }
    const KeyTable keys = keysOf(c.lines);
    // 连号's lines carry their name; the shape keys stand alone.
    const QString prefix = lineName.isEmpty() ? QString() : lineName + u'=';
    for (int i = 0; i < keys.count; ++i) list.lines.append({prefix + keys.text(i), c.minId + i, i});
    return list;
}

// text_FanWei's codes: one less than the tab for the first five pages, the tab itself after.
int rangeCode(const ConditionEntry& c) {
    return c.tab <= 6 ? c.tab - 1 : c.tab;
}

// The allowed values of an id range, from base, in order, as the rows hold them.
QList<int> storedValues(int minId, int maxId, int base) {
    QList<int> values;
    auto c =
        store_Query(QStringLiteral("select ID, VALUE from 过滤条件 where ID>=%1 and ID<=%2 order by ID asc")
                        .arg(minId)
                        .arg(maxId));
    for (; !c->eof(); c->moveNext())
        if (c->intValue(1) > 0) values << c->intValue(0) - base;
    return values;
}

// The same through guoLvShuZu, as the report's blocks read them: the range is loaded and the values
// whose entry is below 1 are left out.
QList<int> loadedValues(int minId, int maxId) {
    load_GuoLvFanWei(minId, maxId);
    const auto& loaded = shared().guoLvShuZu;
    QList<int> values;
    for (int id = minId; id <= maxId; ++id)
        if (loaded[size_t(minId % 10 + id - minId)] > 0) values << id - minId;
    return values;
}

QString runsText(const QList<int>& values, const QString& separator) {
    QStringList runs;
    for (int i = 0; i < values.size();) {
        int j = i;
        while (j + 1 < values.size() && values[j + 1] == values[j] + 1) ++j;
        runs << (i == j ? QStringLiteral("[%1]").arg(values[i])
                        : QStringLiteral("[%1-%2]").arg(values[i]).arg(values[j]));
        i = j + 1;
    }
    return runs.join(separator);
}

QString numbersText(const QList<int>& numbers) {
    QString out;
    for (int n : numbers) out += to_QuanJiao(twoDigits(n)) + QStringLiteral("  ");
    return out;
}

// What the report prints behind the label of a condition that is on.
QString blockText(const ConditionEntry& c) {
    const QList<int> values = loadedValues(c.minId, c.maxId);
    QString out;
    switch (c.report) {
        case ReportKind::Runs:
            return to_QuanJiao(runsText(values, QStringLiteral(" , ")));
        case ReportKind::Each:
            for (int v : values) out += to_QuanJiao(v) + QStringLiteral("  ");
            return out;
        case ReportKind::Keys: {
            const KeyTable keys = keysOf(c.lines);
            for (int v : values)
                if (v < keys.count) out += QStringLiteral("（") + keys.text(v) + QStringLiteral("）");
            return out;
        }
        case ReportKind::None:
            break;
    }
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
    QList<ConditionList> lists;
    for (const ConditionEntry& c : conditionCatalogue())
        if (c.tab == tab && c.lines != LineKind::None) lists << listOf(c);
    return lists;
}

ConditionList load_TiaoJianLieBiao(int tab) {
    return conditionLists(tab).value(0);
}

QList<ConditionList> load_GeShuLieBiao(int tab) {
    return conditionLists(tab);
}

ConditionList load_ElseLieBiao(int tab) {
    return conditionLists(tab).value(0);
}

void set_ConditionLine(const ConditionLine& line, bool allowed) {
    set_GuoLvTiaoJian(line.id, allowed ? 1 : 0);
}

void set_ConditionLines(const QList<ConditionLine>& lines, bool allowed) {
    Transaction tx(store());
    for (const ConditionLine& line : lines) set_ConditionLine(line, allowed);
}

QList<bool> loadListTicks(const ConditionList& list) {
    load_GuoLvFanWei(list.minId, list.maxId);
    const auto& loaded = shared().guoLvShuZu;
    QList<bool> ticks;
    for (const ConditionLine& line : list.lines) ticks << (loaded[size_t(line.value)] > 0);
    return ticks;
}

QString rangeRuns(int minId, int maxId, int base, const QString& separator) {
    return runsText(storedValues(minId, maxId, base), separator);
}

QString text_FanWei(int code) {
    for (const ConditionEntry& c : conditionCatalogue())
        if (c.report == ReportKind::Runs && rangeCode(c) == code)
            return to_QuanJiao(rangeRuns(c.minId, c.maxId, c.minId, QStringLiteral(" , ")));
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
    const QList<int> counts = storedValues(customGroupBase(k), customGroupBase(k) + 9, customGroupBase(k));
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
    const ConditionEntry* positions = conditionOfFilter(QStringLiteral("filter_DingWei"));
    for (int i = 1; i <= 7; ++i) {
        const QString label =
            QStringLiteral(" 第 ") + to_QuanJiao(i) + QStringLiteral(" 位允许开出的号码： ");
        line(label + (on(positions->switchNo + i - 1)
                          ? numbersText(groupMembers(QStringLiteral("第%1位").arg(i)))
                          : kUnused));
    }
    line(QStringLiteral(" 定位过滤容错条件个数： ") + to_QuanJiao(get_GuoLvTiaoJian(kToleranceId)));
    line(kSeparator);

    // The conditions, in the report's order (not the run's).
    std::vector<const ConditionEntry*> blocks;
    for (const ConditionEntry& c : conditionCatalogue())
        if (c.reportOrder > 0) blocks.push_back(&c);
    std::sort(blocks.begin(), blocks.end(), [](const ConditionEntry* a, const ConditionEntry* b) {
        return a->reportOrder < b->reportOrder;
    });
    for (const ConditionEntry* c : blocks)
        line(QString::fromUtf16(c->reportLabel) + (on(c->switchNo) ? blockText(*c) : kUnused));
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
    auto parity = [](int slot) { return conditionOfFilter(QStringLiteral("filter_DanShuang"), slot); };
    for (int slot = 1; slot <= 5; ++slot) {
        const ConditionEntry* pattern = parity(slot);
        if (!on(pattern->switchNo)) continue;
        QList<int> values;
        for (int id = pattern->minId; id <= pattern->maxId; ++id) values << get_GuoLvTiaoJian(id);
        line(QStringLiteral(" √ 排除掉单双组合： ") + text_DanShuang(values));
    }
    if (on(parity(0)->switchNo)) line(QStringLiteral(" √ 【排除掉上一期的单双组合形式】"));
    line(kSeparator);

    // Shrink.
    line(QStringLiteral(" 缩 水 类 型： ") + shrinkTypeCaption(get_GuoLvTiaoJian(kShrinkTypeId)));
    line(on(kSmartSwitch) ? QStringLiteral(" 缩水智能优化： ★☆★☆★ 使 用 ★☆★☆★")
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

QList<KuaiSuRow> list_KuaiSuRows() {
    QList<KuaiSuRow> rows;
    for (auto c = store_Query(QStringLiteral("select * from 快速设置 order by 编号 asc")); !c->eof();
         c->moveNext())
        rows << KuaiSuRow{c->intValue(QStringLiteral("编号")), c->intValue(QStringLiteral("菜单ID")),
                          c->intValue(QStringLiteral("条件编号")),
                          c->value(QStringLiteral("条件名称")).toString()};
    return rows;
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
