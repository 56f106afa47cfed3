#pragma once

#include <QString>
#include <functional>
#include <vector>

// Benchmarks register themselves; dovrex-bench runs them all (or those named on its command line)
// and prints one line per figure.
namespace bench {

struct Case {
    const char* name;
    std::function<void()> run;
};

std::vector<Case>& registry();

struct Register {
    Register(const char* name, std::function<void()> run) { registry().push_back({name, std::move(run)}); }
};

// Prints "name: value unit" in the bench output format.
void report(const QString& figure, double value, const QString& unit);

// A fresh copy of the shipped store in a temporary folder, opened as the shared store.
// The returned object keeps it open until destroyed.
struct ShippedStore {
    ShippedStore();
    ~ShippedStore();
    struct Impl;
    Impl* impl;
};

// An issue after every shipped draw, in a year the program accepts for a ticket.
inline constexpr int kNextIssue = 2026150;

// A blank routine: no picks, every condition and history filter switched off, every condition value
// cleared.
void blankRoutine();

// The condition sets the figures are measured with (the picks and switches otherwise as they are):
// the typical set, a middle band of each common measure, each switched on;
void typicalConditions();
// and every value of the value rows allowed, no position tolerance and every custom group filled,
// which leaves a set with every switch on permissive.
void everyValueAllowed();

}  // namespace bench
