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

}  // namespace bench
