#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <array>

// The birth-chart pick: the four pillars of a birth moment, their five-element strengths, and one
// ticket derived from them and from the current year's pillar. No random element.
namespace dovrex {

struct BaziState {
    QString baZiZi;                 // the eight characters of the pillars
    std::array<int, 6> wuXingHe{};  // 1..5: 金, 木, 水, 火, 土 summed over the pillars
};

// The report of a birth moment. termList is the birth year's 24 term times from the almanac, or
// empty (solarTermTime decides then). Fills state and the fanXu of JiaZiBiao for today's year,
// whose pillar turns at the almanac's 立春.
QString make_BaziReport(const QDateTime& birth, const QDate& today, const QString& termList,
                        BaziState& state);

// The ticket "01 03 12 21 23 30+05" of a report made before.
QString make_BaziHaoMa(const BaziState& state);

}  // namespace dovrex
