#include "pipeline/distribution_report.h"

#include <array>
#include <vector>

#include "pipeline/ticket_rows.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"

namespace dovrex {

void show_HaoMaFenBu(IssueNumber issue) {
    SharedState& s = shared();
    // A Stop of the pass before (the shrink) leaves tingZhi raised: no report then.
    if (s.tingZhi) return;
    const std::vector<StoredTicket> rows = read_StoredTickets({}, issue);
    if (rows.empty()) return;
    RunPanel panel(int(rows.size()));
    const PassLog log;
    log.show(QStringLiteral("正在统计各号码发布情况．．．"));
    std::array<int, kRedCount + 1> count{};
    Screen& ui = screen();
    int done = 0;
    for (const StoredTicket& r : rows) {
        if (s.tingZhi) break;
        for (int red : r.reds)  // position 0 is unused and 0, outside the range
            if (red >= 1 && red <= kRedCount) ++count[size_t(red)];
        ui.ui_Pump();
        panel.step(++done);
    }
    if (s.tingZhi) return;
    QString text = QStringLiteral("所选红球号码分布情况——") + kCrLf;
    for (int n = 1; n <= kRedCount; ++n) {
        if (count[size_t(n)] == 0) continue;
        text += kCrLf + to_QuanJiao(QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'))) +
                QStringLiteral("：") + to_QuanJiao(count[size_t(n)]) + QStringLiteral(" 注.") + kCrLf;
    }
    log.show(text);
}

}  // namespace dovrex
