#include "app/pipeline_commands.h"

#include "domain/date_value.h"
#include "filters/condition_store.h"
#include "filters/filter_run.h"
#include "history/history_queries.h"
#include "pipeline/distribution_report.h"
#include "pipeline/selection.h"
#include "pipeline/shrink.h"
#include "pipeline/ticket_init.h"
#include "pipeline/weights.h"
#include "results/prize_check.h"
#include "results/ticket_export.h"
#include "results/ticket_import.h"
#include "screen/control_roles.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"

namespace dovrex {

namespace {

// The command buttons come back on every way out of a command.
struct ButtonsDisabled {
    ButtonsDisabled() { screen().ui_Set(role::Pic_subTouZhu, QStringLiteral("enabled"), false); }
    ~ButtonsDisabled() { screen().ui_Set(role::Pic_subTouZhu, QStringLiteral("enabled"), true); }
};

struct MenuDisabled {
    explicit MenuDisabled(const QString& role) : role_(role) {
        screen().ui_Set(role_, QStringLiteral("enabled"), false);
    }
    ~MenuDisabled() { screen().ui_Set(role_, QStringLiteral("enabled"), true); }
    QString role_;
};

// The grid's issue, or 0 after telling the user that there is nothing to work on.
IssueNumber gridIssueOrSay() {
    const IssueNumber issue = get_BiaoGeQiHao();
    if (issue < 1) screen().ui_Message(msg::kNoTickets);
    return issue;
}

// 第3步：缩水. The first press opens the settings; a press while they show runs the shrink.
void runShrink() {
    Screen& ui = screen();
    if (!suoShuiSeZhiVisible()) {
        ui.ui_Set(role::Option_ShuoSuiLeiXing, QStringLiteral("value"), get_GuoLvTiaoJian(kShrinkTypeId));
        ui.ui_Set(role::Check_auto, QStringLiteral("checked"), get_ShiYongQingKuang(kSmartSwitch) == 1);
        show_QuanZhong();
        set_SuoShuiSeZhiVisible(true);
        ui.ui_Set(role::cmmSS_Run, QStringLiteral("enabled"), true);
        return;
    }
    set_SuoShuiSeZhiVisible(false);
    const IssueNumber issue = gridIssueOrSay();
    if (issue < 1) return;
    const int t = get_GuoLvTiaoJian(kShrinkTypeId);
    if (t < 3 || t > 7) {
        ui.ui_Message(msg::kShrinkChooseType);
        return;
    }
    const int count =
        store().scalar(QStringLiteral("select count(*) from 日志表 where 期号=?"), {issue}).toInt();
    if (!ui.ui_Confirm(msg::shrinkConfirm(t, count), ConfirmButtons::OkCancel)) return;
    run_SuoShui(t, issue);
    show_HaoMaFenBu(issue);
    shared().tingZhi = 0;
}

void runCommand(int index) {
    Screen& ui = screen();
    switch (index) {
        case kCmdInit: {
            const QString answer = ui.ui_AskText(msg::kAskIssue, touZhuCommandTexts()[0].button,
                                                 QString::number(next_QiHao(Clock::today())));
            if (answer.trimmed().isEmpty()) break;  // cancelled
            MenuDisabled menu(role::mnu_UserQiehuan);
            init_TouZhu(readIssue(answer));
            break;
        }
        case kCmdFilter: {
            const IssueNumber issue = gridIssueOrSay();
            if (issue >= 1 && ui.ui_Confirm(msg::kConfirmFilter, ConfirmButtons::OkCancel)) run_GuoLv(issue);
            break;
        }
        case kCmdShrink:
            runShrink();
            break;
        case kCmdSelect: {
            const IssueNumber issue = gridIssueOrSay();
            if (issue < 1) break;
            const int n = readIssue(
                ui.ui_AskText(msg::kAskSelect, touZhuCommandTexts()[3].button, QStringLiteral("5")));
            if (n <= 0) break;
            shared().tingZhi = 0;
            run_JingXuan(issue, n);
            shared().tingZhi = 0;
            break;
        }
        case kCmdExport:
            if (export_HaoMa(get_BiaoGeQiHao()) == 0) ui.ui_Message(msg::kNothingToExport);
            break;
        case kCmdImport: {
            // Where the last export went: exported tickets come back from there.
            const QString file = ui.ui_PickFile(msg::kTextFileFilter, false, true, export_Folder());
            if (file.isEmpty()) break;
            const int imported = import_HaoMa(file);
            if (imported > 0) {  // otherwise the import said why nothing came in
                const QString done = msg::importDone(imported);
                ui.ui_Message(done);
                log_Append(done);
            }
            load_TouZhuBiao(-1);
            break;
        }
        case kCmdPrizeCheck: {
            const IssueNumber issue = gridIssueOrSay();
            if (issue < 1) break;
            // Tickets bought for the next draw carry an issue not drawn yet: the player says which
            // draw to check them against.
            IssueNumber drawIssue = issue;
            if (const DrawChoice choice = prize_DrawChoice(issue); !choice.items.isEmpty()) {
                drawIssue = readIssue(
                    ui.ui_AskChoice(msg::kAskDrawToCheck, msg::kCheckTitle, choice.items, choice.current));
                if (drawIssue < 1) break;  // cancelled
            }
            if (check_KaiJiang(issue, drawIssue) != 0) ui.ui_Message(msg::kCheckDone);
            break;
        }
        case kCmdDelete:
            if (ui.ui_Confirm(msg::kConfirmDelete, ConfirmButtons::OkCancel)) {
                delete_TouZhu(0);
                ui.ui_Message(msg::kTicketsDeleteDone);
            }
            break;
        default:
            break;
    }
}

}  // namespace

const std::array<TouZhuCommandText, kTouZhuCommands>& touZhuCommandTexts() {
    static const std::array<TouZhuCommandText, kTouZhuCommands> texts{{
        {QStringLiteral("第1步：初始化"), QStringLiteral("初始化..."),
         QStringLiteral("在上面表格里生成所选号码的全部组合！")},
        {QStringLiteral("第2步：过滤"), QStringLiteral("号码过滤"),
         QStringLiteral("对上面表格里的号码按照设定的条件进行过滤！")},
        {QStringLiteral("第3步：缩水"), QStringLiteral("号码缩水"),
         QStringLiteral("对上面表格里的号码进行保N型缩水！")},
        {QStringLiteral("精选号码"), QStringLiteral("精选号码"), QStringLiteral("精选号码！")},
        {QStringLiteral("导出"), QStringLiteral("号码导出"), QStringLiteral("号码导出到文本文件！")},
        {QStringLiteral("导入"), QStringLiteral("号码导入"),
         QStringLiteral("从文本文件里导入号码到表格里！")},
        {QStringLiteral("删除"), QStringLiteral("删除记录"), QStringLiteral("清空表格里的所有数据！")},
        {QStringLiteral("开奖核对"), QStringLiteral("开奖核对"),
         QStringLiteral("按照历史数据里相应期数的开奖号码进行中奖比对！")},
    }};
    return texts;
}

void cmmTouZhu_Click(int index) {
    if (index < 0 || index >= kTouZhuCommands) return;
    ButtonsDisabled buttons;
    if (index != kCmdShrink) set_SuoShuiSeZhiVisible(false);
    try {
        runCommand(index);
    } catch (const StoreWriteError&) {
        throw;  // a lost write is the command trap's to report
    } catch (const StoreError&) {
        // The general trap: the command ends here and keeps what it wrote.
    }
}

void mnu_ShengCeng_Click(int index) {
    screen().ui_Set(role::TabStrip_Top, QStringLiteral("currentIndex"), 3);
    cmmTouZhu_Click(index);
}

void cmmSS_Click(int index) {
    if (index == 0)
        set_SuoShuiSeZhiVisible(false);
    else
        cmmTouZhu_Click(kCmdShrink);
}

}  // namespace dovrex
