#include "results/prize_check.h"

#include <vector>

#include "domain/date_value.h"
#include "domain/record_checks.h"
#include "pipeline/ticket_rows.h"
#include "screen/control_roles.h"
#include "screen/prepared.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"
#include "store/schema.h"

namespace dovrex {

namespace {

DrawnNumbers& drawn() {
    return shared().drawn;
}

// "第 ２００８１１８ 期开奖：０１ ０２ ０３ ０４ ０５ ０６ + ０７": the draw the report is about,
// full-width like the tallies below it.
QString drawLine(const DrawnNumbers& d) {
    return to_QuanJiao(QStringLiteral("第 %1 期开奖：%2").arg(d.issue).arg(ballsText(d.reds, d.blue)));
}

}  // namespace

int prize_Tier(int r, int b) {
    const int h = r + b;
    if (h < 4 && b == 1) return 6;
    if (h == 4) return 5;
    if (h == 5) return 4;
    if (h == 6 && b == 0) return 2;
    if (h == 6 && b == 1) return 3;
    if (h == 7) return 1;
    return 0;
}

const QString& prize_TierText(int tier) {
    static const std::array<QString, 7> texts = [] {
        std::array<QString, 7> t;
        for (int tier = 1; tier <= 6; ++tier) t[size_t(tier)] = prizeTierName(tier) + QStringLiteral("： ");
        return t;
    }();
    return texts[size_t(tier >= 1 && tier <= 6 ? tier : 0)];
}

PrizeMoney prize_Money(IssueNumber issue, const std::array<int, 7>& tickets, int ticketCount) {
    PrizeMoney money;
    money.tickets = tickets;
    money.prize = kFixedPrize;
    createPrizeSchema(store());  // a store older than the table has no prizes yet
    for (auto c =
             store_Query(QStringLiteral("SELECT 奖级, 奖金 FROM 奖级奖金 WHERE 期号=? AND 奖级<=2"), {issue});
         !c->eof(); c->moveNext()) {
        const int tier = c->intValue(0);
        if ((tier == 1 || tier == 2) && !c->value(1).isNull() && c->value(1).toLongLong() > 0)
            money.prize[size_t(tier)] = c->value(1).toLongLong();
    }
    for (int tier = 1; tier <= 6; ++tier) {
        const int n = tickets[size_t(tier)];
        if (n == 0) continue;
        if (money.prize[size_t(tier)] < 0)
            money.unknown = true;
        else
            money.total += n * money.prize[size_t(tier)];
    }
    money.cost = kTicketPrice * ticketCount;
    return money;
}

PrizeMoney prize_MoneyOfChecked(IssueNumber issue, IssueNumber drawIssue) {
    std::array<int, 7> tickets{};
    int count = 0;
    for (auto c = store_Query(QStringLiteral("SELECT 红球中, 蓝球中 FROM 日志表 WHERE 期号=?"), {issue});
         !c->eof(); c->moveNext(), ++count)
        ++tickets[size_t(prize_Tier(c->intValue(0), c->intValue(1)))];
    tickets[0] = 0;
    return prize_Money(drawIssue > 0 ? drawIssue : issue, tickets, count);
}

QStringList prize_MoneyLines(const PrizeMoney& money) {
    QStringList lines;
    for (int tier = 1; tier <= 6; ++tier) {
        const int n = money.tickets[size_t(tier)];
        if (n == 0) continue;
        const qint64 prize = money.prize[size_t(tier)];
        lines << prize_TierText(tier) +
                     (prize < 0 ? QStringLiteral("%1 注 × %2").arg(n).arg(msg::kPrizeUnknown)
                                : QStringLiteral("%1 注 × %2 元 = %3 元").arg(n).arg(prize).arg(n * prize));
    }
    lines << QStringLiteral("中奖合计： %1 元%2")
                 .arg(money.total)
                 .arg(money.unknown ? QStringLiteral("（另有奖金未知的奖级）") : QString());
    lines << QStringLiteral("投注成本： %1 元").arg(money.cost);
    return lines;
}

const DrawnNumbers& prize_DrawnNumbers() {
    return drawn();
}

DrawChoice prize_DrawChoice(IssueNumber issue) {
    DrawChoice choice;
    for (auto c = store_Query(QStringLiteral("SELECT 期号, 开奖日期 FROM 历史记录 ORDER BY 期号 DESC"));
         !c->eof(); c->moveNext()) {
        const IssueNumber drawIssue = c->intValue(0);
        if (drawIssue == issue) choice.current = int(choice.items.size());
        choice.items << QStringLiteral("%1 期  %2").arg(drawIssue).arg(dateText(c->value(1).toDouble()));
    }
    return choice;
}

int check_KaiJiang(IssueNumber issue, IssueNumber drawIssue) {
    Screen& ui = screen();
    if (drawIssue < 1) drawIssue = issue;
    for (const IssueNumber i : {issue, drawIssue}) {
        if (i > 0 && !issueCanExist(i)) {
            ui.ui_Message(issueFault(i), MessageKind::Warning);
            return 0;
        }
    }
    auto draw = store_Query(
        QStringLiteral("SELECT 期号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球 FROM 历史记录  WHERE 期号=?"),
        {drawIssue});
    TicketQuery byId;
    byId.key = QStringLiteral("ID");
    byId.orderBy = QStringLiteral("序号");
    const std::vector<StoredTicket> tickets = read_StoredTickets(byId, issue);
    if (draw->recordCount() == 0 || tickets.empty()) {
        if (issue > 0)
            ui.ui_Message(msg::noDrawToCheck(draw->recordCount() == 0 ? drawIssue : issue),
                          MessageKind::Error, msg::kNoDrawToCheckTitle);
        else
            ui.ui_Message(msg::kNothingToCheck);
        return 0;
    }

    bool redDrawn[kRedCount + 1] = {};
    bool blueDrawn[kBlueCount + 1] = {};
    DrawnNumbers d;
    d.issue = drawIssue;
    for (int i = 1; i <= kRedsPerTicket; ++i) {
        const int n = draw->intValue(i);
        d.reds[size_t(i)] = n;
        if (n >= 1 && n <= kRedCount) redDrawn[n] = true;
    }
    d.blue = draw->intValue(7);
    if (d.blue >= 1 && d.blue <= kBlueCount) blueDrawn[d.blue] = true;
    draw->close();

    std::array<int, 9> tally{};
    int best = 0;
    {
        RunPanel panel(int(tickets.size()));
        // This run cannot be stopped.
        ui.ui_Set(role::cmm_stop, QStringLiteral("enabled"), false);
        Transaction tx(store());
        Prepared write(QStringLiteral("UPDATE 日志表 SET 红球中=?,蓝球中=? WHERE ID=?"));
        int done = 0;
        for (const StoredTicket& t : tickets) {
            ui.ui_Pump();
            const int blueHit = t.blue >= 1 && t.blue <= kBlueCount && blueDrawn[t.blue] ? 1 : 0;
            int redHits = 0;
            for (int i = 1; i <= kRedsPerTicket; ++i) {
                const int n = t.reds[size_t(i)];
                if (n >= 1 && n <= kRedCount && redDrawn[n]) ++redHits;
            }
            write.bind(1, redHits).bind(2, blueHit).bind(3, t.key).exec();
            ++tally[size_t(prize_Tier(redHits, blueHit))];
            best = qMax(best, redHits + blueHit);
            panel.step(++done);
        }
    }

    QString report = msg::kCheckReportHead + kCrLf2 + drawLine(d) + kCrLf2;
    for (int tier = 1; tier <= 6; ++tier)
        report += prize_TierText(tier) + to_QuanJiao(tally[size_t(tier)]) + QStringLiteral(" 注") + kCrLf2;
    std::array<int, 7> winners{};
    for (int tier = 1; tier <= 6; ++tier) winners[size_t(tier)] = tally[size_t(tier)];
    for (const QString& line : prize_MoneyLines(prize_Money(drawIssue, winners, int(tickets.size()))))
        report += line + kCrLf2;
    log_CaoZuo(report, true);

    load_TouZhuBiao(issue);
    drawn() = d;
    QList<int> reds;
    for (int i = 1; i <= kRedsPerTicket; ++i) reds << d.reds[size_t(i)];
    ui.ui_MarkDrawn(role::TDBGrid_RZ, reds, d.blue);
    return best;
}

}  // namespace dovrex
