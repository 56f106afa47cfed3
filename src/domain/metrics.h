#pragma once

#include <QString>

#include "domain/game.h"

namespace dovrex {

// The numbers measured on six reds. A draw and a ticket measure alike: the derived columns of the
// history and every filter use these same functions. Inputs are not checked: a number outside
// 1..33 is a fault of the caller.

int calc_KuaDu(const Reds& r);          // span
int calc_JianJuMax(const Reds& r);      // largest gap between neighbours, in the given order
int calc_AC(const Reds& r);             // distinct positive differences less five
int calc_LianHaoMax(const Reds& r);      // run pattern code 0..10
int calc_CongDie(const Reds& prev, const Reds& r);   // repeats of the previous draw
int calc_XieWeiMa(const Reds& prev, const Reds& r);  // diagonal neighbours of the previous draw

// The eleven texts of the run pattern codes, as the history stores them: "0", "2", "2+2", ...
const QString& lianHaoText(int code);
inline constexpr int kLianHaoCodes = 11;

// Pattern of a partition: m = largest count in one group, g = number of groups that hold a ball.
// gesTable5 serves the tail and step shapes, gesTable6 the head shape. Both keep their odd entries
// (see the tables in metrics.cpp).
int gesTable5Code(int m, int g);
int gesTable6Code(int m, int g);
const QString& gesTable5Text(int code);  // codes 0..9
const QString& gesTable6Text(int code);  // codes 0..8, slot 9 is empty
inline constexpr int kGesTable5Keys = 10;
inline constexpr int kGesTable6Keys = 9;

// Counts per group of a partition: groupOf[x] lists for each number 1..33 its group flags.
// Returns (m, g) for the six reds.
struct ShapeCounts {
    int m = 0;
    int g = 0;
};
template <int Groups>
ShapeCounts shapeCounts(const Reds& r, const int (&member)[34][Groups]) {
    int counts[Groups] = {};
    for (int i = 1; i <= 6; ++i)
        for (int k = 0; k < Groups; ++k) counts[k] += member[r[i]][k];
    ShapeCounts s;
    for (int k = 0; k < Groups; ++k) {
        if (counts[k] > s.m) s.m = counts[k];
        if (counts[k] > 0) ++s.g;
    }
    return s;
}

}  // namespace dovrex
