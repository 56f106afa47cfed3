#pragma once

#include <QString>

namespace dovrex {

class Store;

// Reads a draw list in the shipped tab-separated form (issue, yyyy/mm/dd, six reds, blue; a head
// line) into 历史记录 of the shared store, skipping issues already there. Returns the number of
// draws added, or -1 when the file cannot be read. Derived columns are not computed here.
int importHistoryTsv(const QString& path, QString* error = nullptr);

}  // namespace dovrex
