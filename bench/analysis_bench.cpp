#include <QElapsedTimer>

#include "analysis/combination_omission.h"
#include "analysis/jindu.h"
#include "analysis/omission.h"
#include "analysis/probability.h"
#include "bench.h"
#include "history/history_queries.h"
#include "screen/shared_state.h"

namespace {

using namespace dovrex;

// Answers the warning before the combination count with OK.
class YesScreen : public NullScreen {
  public:
    bool ui_Confirm(const QString&, ConfirmButtons, const QString&) override { return true; }
};

double msSince(const QElapsedTimer& t) {
    return double(t.nsecsElapsed()) / 1e6;
}

const bench::Register analysis("analysis", [] {
    bench::ShippedStore store;
    YesScreen yes;
    Screen* before = shared().screen;
    shared().screen = &yes;
    const int draws = store_Query(QStringLiteral("select count(*) from 历史记录"))->intValue(0);
    const IssueNumber latest = latest_QiHao();

    QElapsedTimer t;
    t.start();
    calc_RedOmission(latest);
    bench::report(QStringLiteral("omission refresh, red, up to the newest of %1 draws").arg(draws),
                  msSince(t), QStringLiteral("ms"));
    t.restart();
    calc_BlueOmission(latest);
    bench::report(QStringLiteral("omission refresh, blue"), msSince(t), QStringLiteral("ms"));

    t.restart();
    const IssueNumber next = next_QiHao_n(latest, 1) == latest ? latest + 1 : next_QiHao_n(latest, 1);
    calc_HongQiuGaiLv(next, 8);
    calc_LanQiuGaiLv(next, 5);
    bench::report(QStringLiteral("probability analysis of the next issue (red and blue)"), msSince(t),
                  QStringLiteral("ms"));

    myJinDuCTL progress;
    t.restart();
    runCombinationOmission(2, progress);
    bench::report(QStringLiteral("pair omission, 528 pairs over the whole history"), msSince(t),
                  QStringLiteral("ms"));
    t.restart();
    runCombinationOmission(3, progress);
    bench::report(QStringLiteral("triple omission, 5456 triples over the whole history"), msSince(t),
                  QStringLiteral("ms"));
    shared().screen = before;
});

}  // namespace
