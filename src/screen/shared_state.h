#pragma once

#include <QString>
#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "domain/game.h"
#include "screen/app_paths.h"
#include "screen/screen.h"
#include "screen/ticket_options.h"
#include "store/store.h"

namespace dovrex {

class CaiPiao;
class TicketSet;

// What the last probability analysis marked: the numbers unlikely to come up in `issue`. The pick
// page draws marked buttons struck through, bold and underlined, and asks before picking one.
struct GaiLvBiaoJi {
    std::array<bool, 34> red{};   // 1..33
    std::array<bool, 17> blue{};  // 1..16
    IssueNumber issue = 0;        // the tag of cmd_FX(0); 0 before the first analysis
};

// The pick page's state beside the rows of 过滤条件 (which hold the picks themselves).
struct PickState {
    int zhuShu = 0;    // tickets the present picks yield
    QString tipText;   // Text_ChoseNumberTip
    int redMode = 1;   // tab of TabStrip_Qiaqu: 1 drag, 2 banker
    int blueMode = 1;  // tab of TabStrip_Houqu
    // Blue buttons 1..16: a blue banker leaves only itself enabled.
    std::array<bool, kBlueCount + 1> blueEnabled{true, true, true, true, true, true, true, true, true,
                                                 true, true, true, true, true, true, true, true};
    bool dragTipShown = false;
    bool bankerTipShown = false;
};

// The filter run's state between its passes.
struct FilterRunState {
    // A history-relative filter ran: the run ends with the history's recount.
    bool liShiXiangGuan = false;
    // While a run lasts every pass works on one set of tickets in memory, written back when the
    // run ends or breaks; outside a run each pass has a set of its own.
    bool holding = false;
    std::shared_ptr<TicketSet> held;
};

// What the passes share of the ticket page (投注号码).
struct TicketPageState {
    std::shared_ptr<Cursor> grid;  // the row set of TDBGrid_RZ
    bool shrinkFrame = false;      // FrameSuosuiSezi is showing
};

// The draw the last prize check was made against.
struct DrawnNumbers {
    IssueNumber issue = 0;
    Reds reds{};  // 1..6
    int blue = 0;
};

// The process-wide state the whole program shares: one instance, used by every pass, page and
// report alike.
struct SharedState {
    // The open connection to the working store.
    Store* g_Store = nullptr;
    // The long-lived cursor behind the history grid.
    std::shared_ptr<Cursor> g_HistoryCursor;
    // The program and temporary folders of the running program.
    AppPaths paths;
    // Where every ui_* call goes.
    Screen* screen = nullptr;

    int g_UserMode = 0;     // 1 single-user, 2 multi-user
    QString g_CurrentUser;  // empty in single-user mode
    std::array<bool, 7> g_DrawDays{true, false, true, false, true, false, false};  // index 0 is Sunday
    int g_MirrorIndex = 0;  // download address in use, 0..2
    QString g_MainCaption;
    int g_PendingCommand = 0;
    bool g_TablesDirty = false;

    // Condition values copied out of 过滤条件 by load_GuoLvFanWei; never cleared between loads.
    std::array<int, 200> guoLvShuZu{};
    // The Stop flag: raised by a mouse-down on the Stop button, tested by every long loop.
    short tingZhi = 0;
    // Marks of 日志表 are at zero since the last expansion or import.
    short biaoJiQingLing = 0;
    // Number weights 1..33 (index 0 unused), in memory only.
    std::array<int, 34> quanZhong{};
    // Text of the operation log (TextChaoZuoTip).
    QString operationLog;
    // Commands started from the window and not yet finished. The trap around every command counts
    // them; the checkpoint of the work waits until none runs.
    int commandDepth = 0;
    // The marks of the last probability analysis, and its seeded sampler (made on first use).
    GaiLvBiaoJi gaiLvBiaoJi;
    std::shared_ptr<CaiPiao> caiPiao;
    PickState picks;
    FilterRunState filterRun;
    TicketPageState ticketPage;
    DrawnNumbers drawn;
    // The export options last confirmed in frmToFile.
    TicketExportOptions exportOptions;
    // The folder of the last export when there is no program folder to keep it in (a bare store).
    QString lastExportFolder;
    // Frame of the moving bar a shrink shows until its first removal (TimerSuosuijinxingzong).
    int suoShuiTimerAt = 0;
    // The tickets the last shrink started from (as ball masks), for the coverage report on demand.
    IssueNumber shrinkOriginalIssue = 0;
    std::vector<std::uint64_t> shrinkOriginal;
    // What the last shrink proved: no set with its guarantee keeps fewer than `shrinkBound` tickets,
    // and `shrinkOptimal` when what it kept is that few.
    int shrinkBound = 0;
    bool shrinkOptimal = false;
    int shrinkBestAtMs = 0;  // when 优化缩水 found the set it kept
};

SharedState& shared();
// Puts the whole process state back as a new process has it (the screen stays installed).
void reset_SharedState();
inline GaiLvBiaoJi& gaiLvBiaoJi() {
    return shared().gaiLvBiaoJi;
}

// The store in use; throws StoreError when none is open.
Store& store();
// The screen in use (a silent one when none is installed).
Screen& screen();

// Shorthands for the program's store operations on the shared connection.
std::shared_ptr<Cursor> store_Query(const QString& sql, const QVariantList& params = {});
int store_Execute(const QString& sql, const QVariantList& params = {});
void store_ClearTable(const QString& name);

}  // namespace dovrex
