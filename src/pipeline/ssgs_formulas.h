#pragma once

#include <QMap>
#include <QString>
#include <vector>

namespace dovrex {

class Store;

// The shrink formulas shipped in table Ssgs, kept in data/ssgs-formulas.txt as written by
// dovrex-makessgs: one line a size, "<drags>: <序号> <序号> ...". Each names the tickets of the
// first step (one blue, no banker) whose reds any six drawn among the drags share five with.
using SsgsFormulas = QMap<int, std::vector<int>>;

// Reads the file; false with a reason on a line that is not of that form.
bool read_SsgsFile(const QString& path, SsgsFormulas& out, QString* why = nullptr);
// Replaces the rows of Ssgs by the formulas.
void storeFormulas(Store& store, const SsgsFormulas& formulas);

}  // namespace dovrex
