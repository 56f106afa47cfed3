#pragma once

#include <QStringList>

namespace dovrex {

class Store;

// The rows a new store ships with. Every condition row and switch of the condition catalogue
// (domain/condition_catalogue.h) exists, at 0: a neutral start in which no filter runs.

// The three draw sources as shipped (rows 1..3 of 下载地址), editable later: the official draw
// notices, the public text list oldest first, the same list newest first.
QStringList defaultMirrorAddresses();

// Fills the four condition tables (过滤条件, 过滤条件使用情况, 历史数据过滤, 号码特性) with factory rows.
void seedConditionTables(Store& store);
// Fills every table of a new working store with its factory rows (not the history).
void seedFactoryData(Store& store);

}  // namespace dovrex
