#include "pipeline/weights.h"

#include <vector>

#include "filters/condition_store.h"
#include "pipeline/ticket_rows.h"
#include "screen/control_roles.h"
#include "screen/prepared.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"

namespace dovrex {

const QStringList& quanZhongPresetCaptions() {
    static const QStringList captions{
        QStringLiteral("偏重大号"),   QStringLiteral("偏重小号"),   QStringLiteral("偏重奇号"),
        QStringLiteral("偏重偶号"),   QStringLiteral("平均"),       QStringLiteral("全部置0"),
        QStringLiteral("其他..."),    QStringLiteral("偏重小偶号"), QStringLiteral("偏重大偶号"),
        QStringLiteral("偏重小奇号"), QStringLiteral("偏重大奇号")};
    return captions;
}

void SliderQuanZong_Change(int index, int value) {
    if (index >= 1 && index <= kRedCount) shared().quanZhong[size_t(index)] = value;
}

void cmmQZfenpei_Click(int index) {
    auto& w = shared().quanZhong;
    auto set = [&](auto rule) {
        for (int n = 1; n <= kRedCount; ++n) w[size_t(n)] = rule(n);
    };
    const auto odd = [](int n) { return n % 2 == 1; };
    switch (index) {
        case 0:
            set([](int n) { return n; });
            break;
        case 1:
            set([](int n) { return 33 - n; });
            break;
        case 2:
            set([&](int n) { return odd(n) ? 33 : 0; });
            break;
        case 3:
            set([&](int n) { return odd(n) ? 0 : 33; });
            break;
        case 4: {
            load_GuoLvFanWei(1, kRedCount);
            const auto& shu = shared().guoLvShuZu;
            int c = 0;
            for (int n = 1; n <= kRedCount; ++n) c += shu[size_t(n)] > 0;
            if (c > 0) {
                // The middle of the pick weighs most.
                int i = 0;
                for (int n = 1; n <= kRedCount; ++n) {
                    if (shu[size_t(n)] <= 0) continue;
                    ++i;
                    w[size_t(n)] = i <= c / 2 ? i : c - i;
                }
            } else {
                set([](int n) { return n <= 16 ? n : 33 - n; });
            }
            break;
        }
        case 5:
            set([](int) { return 0; });
            break;
        case 6:
            screen().ui_Message(msg::kWeightsByHand);
            return;
        case 7:
            set([&](int n) { return odd(n) ? 0 : 33 - n; });
            break;
        case 8:
            set([&](int n) { return odd(n) ? 0 : n; });
            break;
        case 9:
            set([&](int n) { return odd(n) ? 33 - n : 0; });
            break;
        case 10:
            set([&](int n) { return odd(n) ? n : 0; });
            break;
        default:
            return;
    }
    show_QuanZhong();
}

void show_QuanZhong() {
    // One call for the whole panel: the sliders read quanZhong themselves.
    QStringList values;
    for (int n = 1; n <= kRedCount; ++n) values << QString::number(shared().quanZhong[size_t(n)]);
    screen().ui_Set(role::FrameHaomaQuanzongValue, QStringLiteral("weights"), values.join(u' '));
}

bool run_QuanZhong(IssueNumber issue) {
    SharedState& s = shared();
    long long sum = 0;
    for (int n = 1; n <= kRedCount; ++n) sum += s.quanZhong[size_t(n)];
    if (sum == 0) return false;

    struct Row {
        long long rowid;
        int weight;
    };
    std::vector<Row> rows;
    for (const StoredTicket& t : read_StoredTickets({}, issue)) {
        int w = 0;
        for (int i = 1; i <= 6; ++i) {
            const int red = t.reds[size_t(i)];
            if (red >= 1 && red <= kRedCount) w += s.quanZhong[size_t(red)];
        }
        rows.push_back({t.key, w});
    }
    if (rows.empty()) return false;
    const PassLog log;
    {
        RunPanel panel(int(rows.size()));
        log.show(QStringLiteral("正在进行号码权重设置．．．"));
        Screen& ui = screen();
        Transaction tx(store());
        Prepared write(QStringLiteral("UPDATE 日志表 SET 临时数据=? WHERE rowid=?"));
        int done = 0;
        for (const Row& row : rows) {
            if (s.tingZhi) break;
            write.bind(1, row.weight).bind(2, row.rowid).exec();
            ui.ui_Pump();
            panel.step(++done);
        }
    }
    log.show(QStringLiteral("号码权重设置完成！"));
    return true;
}

}  // namespace dovrex
