#include "pipeline/distribution_report.h"

#include <array>
#include <vector>

#include "app/shared_state.h"
#include "pipeline/prepared.h"
#include "pipeline/run_panel.h"

namespace dovrex {

void show_HaoMaFenBu(IssueNumber issue) {
    SharedState& s = shared();
    std::vector<std::array<int, 6>> rows;
    {
        Prepared q(
            QStringLiteral("SELECT 红球1,红球2,红球3,红球4,红球5,红球6 FROM 日志表 WHERE 期号=? "
                           "ORDER BY 序号 ASC, rowid ASC"));
        q.bind(1, issue);
        while (q.next()) {
            std::array<int, 6> r{};
            for (int i = 0; i < 6; ++i) r[size_t(i)] = q.intColumn(i);
            rows.push_back(r);
        }
    }
    if (rows.empty()) return;
    RunPanel panel(int(rows.size()));
    log_Append(QStringLiteral("正在统计各号码发布情况．．．"));
    std::array<int, kRedCount + 1> count{};
    Screen& ui = screen();
    int done = 0;
    for (const auto& r : rows) {
        if (s.tingZhi) break;
        for (int red : r)
            if (red >= 1 && red <= kRedCount) ++count[size_t(red)];
        ui.ui_Pump();
        panel.step(++done);
    }
    if (s.tingZhi) return;
    QString text = s.operationLog + kCrLf2 + QStringLiteral("所选红球号码分布情况——") + kCrLf;
    for (int n = 1; n <= kRedCount; ++n) {
        if (count[size_t(n)] == 0) continue;
        text += kCrLf + to_QuanJiao(QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'))) +
                QStringLiteral("：") + QString::number(count[size_t(n)]) + QStringLiteral(" 注.") + kCrLf;
    }
    log_Set(text);
}

}  // namespace dovrex
