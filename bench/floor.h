#pragma once

#include <QString>

// The floor of a pass: what SQLite and a plain loop pay on the same store for the same rows, with
// nothing of the program's own in between. Each pass's figure is printed beside its floor as a
// ratio, so that a figure reads the same on a fast and on a slow machine.
namespace bench {

struct Floor {
    int tickets = 0;
    double insertMs = 0;  // inserting the issue's tickets again, one prepared statement a row
    double readMs = 0;    // reading their balls and 序号 in 序号 order
    double writeMs = 0;   // writing one column of every row back by rowid
    double scanMs = 0;    // the first-fit scan on bit masks at `t` shared balls (0 without t)
};

// Measures the floor over the tickets of `issue` in the shared store, which it leaves as it was.
Floor measureFloor(int issue, int t = 0);

// Prints "figure: ms ms (ratio x floorName)".
void reportAgainst(const QString& figure, double ms, double floorMs, const QString& floorName);

}  // namespace bench
