#pragma once

#include <QList>
#include <QPair>
#include <QStringList>

namespace dovrex {

class Store;

// The rows a new store ships with. Every condition id and switch the filters read exists, at 0:
// a neutral start in which no filter runs.

// Ranges of condition ids of 过滤条件, both ends inclusive.
QList<QPair<int, int>> conditionIdRanges();
// Switch numbers of 过滤条件使用情况.
QList<int> switchNumbers();

// The three mirrors of the draw list download as shipped (rows 1..3 of 下载地址), editable later.
QStringList defaultMirrorAddresses();

// Fills the four condition tables (过滤条件, 过滤条件使用情况, 历史数据过滤, 号码特性) with factory rows.
void seedConditionTables(Store& store);
// Fills every table of a new working store with its factory rows (not the history).
void seedFactoryData(Store& store);

}  // namespace dovrex
