#include "headless/replay_headless.h"

#include "headless/headless_runner.h"
#include "results/prize_check.h"
#include "results/replay.h"
#include "screen/shared_state.h"

namespace dovrex {

namespace {

QString share(double value) {
    return QString::number(value, 'f', 4);
}

}  // namespace

bool headless_Replay(HeadlessRunner& r, const HeadlessArgs& a) {
    const QString usage = QStringLiteral("replay <from> <to> [<seed>] [select <n>] [budget <seconds>]");
    int from = 0, to = 0;
    if (!r.requireStore() || !a.intAt(r, 0, from) || !a.intAt(r, 1, to)) return false;
    ReplaySettings settings = replay_DefaultSettings();
    int at = 2;
    if (a.words.size() > at && a.words[at].front().isDigit()) {
        bool ok = false;
        settings.seed = a.words[at++].toULongLong(&ok);
        if (!ok) return r.fail(QStringLiteral("not a seed: ") + a.words[at - 1]);
    }
    while (at < a.words.size()) {
        const QString name = a.words[at];
        int value = 0;
        if (at + 1 >= a.words.size() || !a.intAt(r, at + 1, value)) return r.fail(usage);
        if (name == QLatin1String("select") && value >= 0)
            settings.select = value;
        else if (name == QLatin1String("budget") && value >= 1 && value <= 3600)
            settings.shrink.budgetMs = value * 1000;
        else
            return r.fail(usage);
        at += 2;
    }
    SharedState& s = shared();
    s.tingZhi = 0;
    const ReplayResult result = run_Replay(from, to, settings, [&](int, int) {
        r.screen().ui_Pump();
        return s.tingZhi != 0;
    });
    s.tingZhi = 0;
    for (const ReplayDraw& d : result.draws) {
        QStringList tiers;
        for (int tier = 1; tier <= 6; ++tier) tiers << QString::number(d.tiers[size_t(tier)]);
        QString line = QStringLiteral("draw %1 tickets %2 cost %3 won %4 tiers %5")
                           .arg(d.issue)
                           .arg(d.tickets)
                           .arg(d.cost)
                           .arg(d.won)
                           .arg(tiers.join(u','));
        if (d.unknown) line += u' ' + msg::kPrizeUnknown;
        if (d.overLimit) line += QStringLiteral(" over-limit %1").arg(d.kept);
        r.print(line);
    }
    if (result.stopped) r.print(QStringLiteral("stopped after %1 draws").arg(result.draws.size()));
    r.print(QStringLiteral("total cost %1 won %2 return %3%4")
                .arg(result.cost)
                .arg(result.won)
                .arg(share(result.routineReturn()))
                .arg(result.unknown ? u' ' + msg::kPrizeUnknown : QString()));
    r.print(QStringLiteral("random mean %1 band %2 %3")
                .arg(share(result.randomMean), share(result.randomLow), share(result.randomHigh)));
    r.print(QStringLiteral("expected %1").arg(share(result.expectedReturn)));
    r.print(replay_Verdict(result));
    return true;
}

}  // namespace dovrex
