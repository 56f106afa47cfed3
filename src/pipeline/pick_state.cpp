#include "pipeline/pick_state.h"

#include "domain/date_value.h"
#include "filters/condition_store.h"
#include "history/history_queries.h"
#include "pipeline/space_init.h"
#include "screen/control_roles.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"

namespace dovrex {

int calc_ZuHeShu(int n, int k, int fixed) {
    if (n < k) return 0;
    if (n == k || fixed >= k) return 1;
    long long r = 1;
    for (int i = 1; i <= k - fixed; ++i) {
        r = r * (n - fixed - i + 1);
        if (r > INT32_MAX) throw StoreError(QStringLiteral("calc_ZuHeShu: overflow"));
        r /= i;
    }
    return int(r);
}

void show_XuanHaoTongJi() {
    const int hongTuo = count_HongTuo();
    const int hongDan = count_HongDan();
    const int lanTuo = count_LanTuo();
    const int lanDan = count_LanDan();
    PickState& st = picks();
    const long long n = (long long)calc_ZuHeShu(hongTuo + hongDan, kRedsPerTicket, hongDan) *
                        calc_ZuHeShu(lanTuo + lanDan, 1, lanDan);
    if (n > INT32_MAX) throw StoreError(QStringLiteral("zhuShu: overflow"));
    st.zhuShu = int(n);
    st.tipText = QStringLiteral("已选红球“拖码”个数： ") + to_QuanJiao(hongTuo) + kCrLf2 +
                 QStringLiteral("已选红球“胆码”个数： ") + to_QuanJiao(hongDan) + kCrLf2 +
                 QStringLiteral("已选蓝球个数： ") + to_QuanJiao(lanTuo) + kCrLf2 +
                 QStringLiteral("所选号码组合共： ") + to_QuanJiao(st.zhuShu) + QStringLiteral("  注");
    if (space_Mode()) st.tipText += kCrLf2 + spaceText(st.zhuShu);
    screen().ui_Set(role::Text_ChoseNumberTip, QStringLiteral("text"), st.tipText);
}

namespace {

void enableBlue(int onlyIndex) {
    for (int n = 1; n <= kBlueCount; ++n)
        picks().blueEnabled[size_t(n)] = onlyIndex == 0 || kBlueBase + n == onlyIndex;
}

// After a blue banker came or went without the click rules (a restore, a restart).
void syncBlueEnabled(const std::array<int, kBlueBase + kBlueCount + 1>& values) {
    int banker = 0;
    for (int n = 1; n <= kBlueCount && banker == 0; ++n)
        if (values[size_t(kBlueBase + n)] == kPickBanker) banker = kBlueBase + n;
    enableBlue(banker);
}

// Writes back the blue rows as they were before a refused click.
void restoreBlues(const std::array<int, kBlueBase + kBlueCount + 1>& before) {
    const auto now = pick_Values();
    for (int id = kBlueBase + 1; id <= kBlueBase + kBlueCount; ++id)
        if (now[size_t(id)] != before[size_t(id)]) set_GuoLvTiaoJian(id, before[size_t(id)]);
    syncBlueEnabled(before);
}

bool isPickButton(int index) {
    return (index >= 1 && index <= kRedCount) || (index > kBlueBase && index <= kBlueBase + kBlueCount);
}

}  // namespace

void cmm_C7_Click(int index) {
    if (!isPickButton(index)) return;
    PickState& st = picks();
    Screen& ui = screen();
    const bool blue = index >= kBlueBase;
    const int old = get_GuoLvTiaoJian(index);
    // A number the probability analysis marked is questioned before it is picked.
    if (!gaiLv_ConfirmPick(index, old)) return;
    const int mode = blue ? st.blueMode : st.redMode;

    const auto before = pick_Values();
    int value = old;
    if (old != kPickNone && old == mode) {
        value = kPickNone;
    } else if (old != kPickNone) {
        const QString question = mode == kPickDrag
                                     ? QStringLiteral("号码：") + to_QuanJiao(twoDigits(index)) +
                                           QStringLiteral("之前已经被设为胆码，现在要把它改为拖码吗？")
                                     : QStringLiteral("号码：") + to_QuanJiao(index) +
                                           QStringLiteral("之前已经被设为拖码，现在要把它改为胆码吗？");
        if (ui.ui_Confirm(question)) value = mode;
    } else {
        value = mode;
    }
    if (value != old) {
        // A blue banker is the only blue: the other blue picks go, whether the banker is new or
        // a drag turned into one.
        if (blue && value == kPickBanker) resetBluePicks();
        set_GuoLvTiaoJian(index, value);
    }
    if (blue) syncBlueEnabled(pick_Values());
    show_XuanHaoTongJi();

    QString refusal;
    if (value == kPickBanker && !blue && count_HongDan() >= 6)
        refusal = msg::kRedBankerLimit;
    else if (value == kPickBanker && blue && count_LanDan() >= 2)
        refusal = msg::kBlueBankerLimit;
    else if (pick_OverLimit())
        refusal = msg::kTicketLimit;
    if (!refusal.isEmpty()) {
        ui.ui_Message(refusal);
        if (blue)
            restoreBlues(before);
        else
            set_GuoLvTiaoJian(index, old);
    }
    ui.ui_RefreshPicks();
    show_XuanHaoTongJi();
}

void tabStrip_QiaQu_Click(int tab) {
    PickState& st = picks();
    st.redMode = tab;
    bool& shown = tab == 1 ? st.dragTipShown : st.bankerTipShown;
    if (shown) return;
    shown = true;
    screen().ui_Message(tab == 1 ? msg::kDragTip : msg::kBankerTip);
}

void tabStrip_HouQu_Click(int tab) {
    picks().blueMode = tab;
}

void cmm_clsQ_Click() {
    resetRedPicks();
    show_XuanHaoTongJi();
    screen().ui_RefreshPicks();
}

void cmm_clsH_Click() {
    resetBluePicks();
    enableBlue(0);
    show_XuanHaoTongJi();
    screen().ui_RefreshPicks();
}

std::array<int, kBlueBase + kBlueCount + 1> pick_Values() {
    std::array<int, kBlueBase + kBlueCount + 1> values{};
    auto c = store_Query(QStringLiteral("select ID, VALUE from 过滤条件 where ID<200"));
    for (; !c->eof(); c->moveNext()) {
        const int id = c->intValue(0);
        if (id >= 0 && id < int(values.size())) values[size_t(id)] = c->intValue(1);
    }
    return values;
}

void load_XuanHaoZhuangTai() {
    syncBlueEnabled(pick_Values());
    show_XuanHaoTongJi();
    screen().ui_RefreshPicks();
}

bool pick_OverLimit() {
    return !space_Mode() && picks().zhuShu > kTicketLimit;
}

bool check_XuanHao(bool speak) {
    show_XuanHaoTongJi();
    if (picks().zhuShu > 0) return true;
    if (speak) {
        screen().ui_Message(msg::kPickFirst);
        // The pick page: the first condition page of the first top page.
        screen().ui_Set(role::TabStrip_Top, QStringLiteral("currentIndex"), 0);
        screen().ui_Set(role::TabStrip_TiaoJian, QStringLiteral("currentRow"), 0);
    }
    return false;
}

bool tdbGrid_FenBu_MouseDown(IssueNumber rowIssue, int column, bool leftButton) {
    if (column < 1 || column > kRedCount + kBlueCount) return false;
    if (rowIssue != next_QiHao(Clock::today())) return false;
    const int id = column <= kRedCount ? column : kBlueBase + (column - kRedCount);
    const QString cellName = QStringLiteral("k") + twoDigits(column);
    auto row = store_Query(QStringLiteral("select * from 号码分布 where 期号=?"), {rowIssue});
    if (row->recordCount() == 0) return false;
    const QString before = row->value(cellName).toString();
    auto write = [&](const QString& cell, int value) {
        store_Execute(QStringLiteral("UPDATE 号码分布 SET %1=? WHERE 期号=?").arg(cellName),
                      {cell, rowIssue});
        set_GuoLvTiaoJian(id, value);
        show_XuanHaoTongJi();
    };
    const auto picksBefore = pick_Values();
    const QString star = QStringLiteral("*"), plus = QStringLiteral("+");
    QString after;
    if (!before.isEmpty())
        write(after = QString(), kPickNone);
    else if (leftButton)
        write(after = star, kPickDrag);
    else
        write(after = plus, kPickBanker);

    if (after == plus && column <= kRedCount && count_HongDan() > 5) {
        write(QString(), kPickNone);
        screen().ui_Message(msg::kGridRedBankers);
    } else if (after == plus && column > kRedCount && count_LanDan() > 0) {
        write(star, kPickDrag);
        screen().ui_Message(msg::kGridBlueBanker);
    } else if (after == star && column > kRedCount && count_LanDan() > 0) {
        // A blue banker set on the buttons would stand beside this drag; this view keeps no blue
        // banker, so it becomes a drag too.
        store_Execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=? WHERE ID>? AND ID<=? AND VALUE=?"),
                      {int(kPickDrag), kBlueBase, kBlueBase + kBlueCount, int(kPickBanker)});
        show_XuanHaoTongJi();
        screen().ui_Message(msg::kGridBlueBanker);
    }
    if (pick_OverLimit()) {
        if (before == plus)
            write(plus, kPickBanker);
        else
            write(QString(), kPickNone);
        if (column > kRedCount) restoreBlues(picksBefore);
        show_XuanHaoTongJi();
        screen().ui_Message(msg::kTicketLimit);
    }
    syncBlueEnabled(pick_Values());
    screen().ui_RefreshPicks();
    return true;
}

bool gaiLv_IsMarked(int buttonIndex) {
    const auto& m = gaiLvBiaoJi();
    if (buttonIndex >= 1 && buttonIndex <= kRedCount) return m.red[size_t(buttonIndex)];
    if (buttonIndex >= 101 && buttonIndex <= 100 + kBlueCount) return m.blue[size_t(buttonIndex - 100)];
    return false;
}

QString gaiLv_WarningText(int buttonIndex) {
    return QStringLiteral("根据概率统计,号码 ") + to_QuanJiao(twoDigits(buttonIndex % 100)) +
           QStringLiteral(" 在") + to_QuanJiao(QString::number(gaiLvBiaoJi().issue)) +
           QStringLiteral("期中开出的机率很低！确实想要选取这个号码吗？") + QStringLiteral("\r\n\r\n") +
           QStringLiteral("[") + msg::kAnalysisNote + QStringLiteral("]");
}

bool gaiLv_ConfirmPick(int buttonIndex, int pickValue) {
    if (pickValue != 0 || !gaiLv_IsMarked(buttonIndex)) return true;
    return screen().ui_Confirm(gaiLv_WarningText(buttonIndex));
}

}  // namespace dovrex
