#include "history/draw_records.h"

#include <QRegularExpression>
#include <algorithm>

#include "domain/date_value.h"
#include "domain/record_checks.h"
#include "history/derived_columns.h"
#include "history/draw_list.h"
#include "history/history_display.h"
#include "history/history_queries.h"
#include "screen/control_roles.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

QString msg::searchDoneText(int count) {
    return QStringLiteral("搜索完成，符合条件的记录共：") + to_QuanJiao(count) + QStringLiteral(" 条！");
}

namespace {
// A box holds digits only, at most `digits` of them: "7x" or "１２" is a typing slip, not a 7.
qint64 strictBox(const QString& box, int digits) {
    const QString text = box.trimmed();
    if (text.isEmpty() || text.size() > digits) return -1;
    for (const QChar c : text)
        if (c < u'0' || c > u'9') return -1;
    return text.toLongLong();
}
}  // namespace

bool check_Shuru(DrawInput& input) {
    Reds reds{};
    for (int i = 1; i <= kRedsPerTicket; ++i) reds[size_t(i)] = int(strictBox(input.boxes[size_t(i)], 2));
    const int blue = int(strictBox(input.boxes[7], 2));
    const qint64 issue = strictBox(input.boxes[0], 7);
    if (!drawFault(reds, blue, issue, input.date).isEmpty()) return false;
    std::sort(reds.begin() + 1, reds.end());
    for (int i = 1; i <= kRedsPerTicket; ++i) input.boxes[size_t(i)] = QString::number(reds[size_t(i)]);
    return true;
}

DrawRecord entry_Draw(const DrawInput& input) {
    DrawRecord d;
    d.issue = IssueNumber(read_Number(input.boxes[0]));
    d.date = toDateValue(input.date);
    for (int i = 1; i <= kRedsPerTicket; ++i) d.reds[size_t(i)] = int(read_Number(input.boxes[size_t(i)]));
    d.blue = int(read_Number(input.boxes[7]));
    return d;
}

bool store_KaiJiang(const DrawRecord& draw, bool recalc) {
    if (!drawFault(draw.reds, draw.blue, draw.issue, toQDate(draw.date)).isEmpty()) return false;
    try {
        auto rs = store_Query(QStringLiteral("select * from 历史记录 where 期号=?"), {draw.issue});
        if (rs->eof()) rs->addNew();
        rs->setValue(QStringLiteral("期号"), draw.issue);
        rs->setValue(QStringLiteral("开奖日期"), draw.date);
        for (int i = 1; i <= kRedsPerTicket; ++i)
            rs->setValue(QStringLiteral("红球%1").arg(i), draw.reds[size_t(i)]);
        rs->setValue(QStringLiteral("蓝球"), draw.blue);
        rs->setValue(QStringLiteral("已完成"), QStringLiteral("Y"));
        rs->update();
        rs->close();
        if (recalc) recalc_LiShiLie(draw.issue, draw.issue, false);
        return true;
    } catch (const StoreWriteError&) {
        throw;  // a lost write is the command trap's to report
    } catch (const StoreError&) {
        return false;
    }
}

void advance_Entry(DrawInput& input, bool clearBalls) {
    input.boxes[0] = QString::number(next_QiHao(input.date));
    input.date = toQDate(next_KaiJiangRi(shared().g_DrawDays, toDateValue(input.date)));
    if (clearBalls)
        for (int i = 1; i <= 7; ++i) input.boxes[size_t(i)].clear();
}

bool storeEnteredDraw(DrawInput& input) {
    if (!check_Shuru(input)) {
        screen().ui_Message(msg::kBadEntry, MessageKind::Error);
        return false;
    }
    if (!store_KaiJiang(entry_Draw(input), true)) return false;
    show_LiShi();
    advance_Entry(input, true);
    return true;
}

DeleteResult cmm_scls(bool historyGridInView) {
    Screen& ui = screen();
    const QString reply =
        ui.ui_AskText(msg::kDeleteAsk, msg::kDeleteAskTitle, QString::number(latest_QiHao()));
    const qint64 issue = read_Number(reply);
    if (issue <= 0) return DeleteResult::Cancelled;
    if (store_Query(QStringLiteral("select  期号 from 历史记录 where 期号=?"), {issue})->eof()) {
        ui.ui_Message(msg::kDeleteMissing, MessageKind::Error, msg::kDeleteMissingTitle);
        return DeleteResult::Missing;
    }
    store_Execute(QStringLiteral("DELETE FROM 历史记录 where 期号=?"), {issue});
    if (historyGridInView) {
        show_LiShi();
        ui.ui_Message(msg::kDrawDeleteDone);
    } else {
        ui.ui_Message(msg::kDrawDeleteDoneReload);
    }
    return DeleteResult::Deleted;
}

SearchCondition buildDrawSearch(const QList<SearchTerm>& terms) {
    // Column names come from the grid: only those of the table are taken, with their kind.
    QHash<QString, QString> types;
    for (auto c = store_Query(QStringLiteral("PRAGMA table_info(\"历史记录\")")); !c->eof(); c->moveNext())
        types.insert(c->value(QStringLiteral("name")).toString(),
                     c->value(QStringLiteral("type")).toString().toUpper());
    static const QRegularExpression digits(QStringLiteral("^0+(\\d)"));
    QStringList parts;
    SearchCondition cond;
    for (const SearchTerm& term : terms) {
        const QString text = term.text.trimmed();
        if (text.isEmpty() || !types.contains(term.column)) continue;
        QString pattern = text;
        pattern.replace(u'*', u'%').replace(u'?', u'_');
        const QString type = types.value(term.column);
        QString column = u'"' + term.column + u'"';
        if (term.column == QStringLiteral("开奖日期")) {
            // Dates are day numbers since 1899-12-30, that is Julian day 2415018.5.
            column = QStringLiteral("strftime('%Y/%m/%d', %1 + 2415018.5)").arg(column);
        } else if (type == QLatin1String("INTEGER") || type == QLatin1String("REAL")) {
            pattern.replace(digits, QStringLiteral("\\1"));
        }
        parts << column + QStringLiteral(" LIKE ?");
        cond.params << pattern;
    }
    cond.where = parts.join(QStringLiteral(" AND "));
    return cond;
}

SearchResult filterBegin(const QList<SearchTerm>& terms) {
    SearchResult result;
    const SearchCondition cond = buildDrawSearch(terms);
    if (cond.empty()) return result;
    result.ran = true;
    auto rs = store().pagedQuery(
        QStringLiteral("SELECT * FROM 历史记录  where %1 ORDER BY 期号 ASC").arg(cond.where), cond.params);
    result.count = rs->recordCount();
    if (result.count > 0) {
        if (shared().g_HistoryCursor) shared().g_HistoryCursor->close();
        shared().g_HistoryCursor = rs;
        screen().ui_Grid(role::TDBGridHistory, rs);
        dress_HistoryGrid(*rs);
        result.cursor = rs;
    } else {
        result.clearRow = true;
        result.cursor = show_LiShi();
    }
    screen().ui_Message(msg::searchDoneText(result.count));
    return result;
}

}  // namespace dovrex
