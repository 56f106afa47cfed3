#pragma once

#include <QString>
#include <QStringList>

namespace dovrex {

class Store;

// Column lists of the store's tables, in their order. select * reads them in this order.
namespace schema {
QStringList historyColumns();         // 历史记录
QStringList ticketColumns();          // 日志表
QStringList numberTraitColumns();     // 号码特性
QStringList historyDerivedColumns();  // the columns recalc_LiShiLie writes, in its order
}  // namespace schema

// Creates every table of the working store (empty). Safe on a store that has some of them.
void createWorkStoreSchema(Store& store);

// 奖级奖金: the winners and the prize in yuan of each tier of a draw, as its notice gave them (奖金
// empty when the notice left it blank). Also made on a store older than the table.
void createPrizeSchema(Store& store);

// Creates the four condition tables that the template, the user files and exported condition
// files hold: 过滤条件, 过滤条件使用情况, 历史数据过滤, 号码特性.
void createConditionSchema(Store& store);

// What keeps a store from being the program's: a table or column it uses that is missing or is not
// a plain stored one, a trigger (the program makes none, and one may raise on any write), a
// constraint or unique index it never declared, fewer than the 33 rows of BallColor. Empty when the
// store matches the declared schema. Tables the program makes when they are missing may be absent.
QString schemaFault(Store& store);

// A store file the program may take: it opens, passes the engine's quick_check and matches the
// declared schema. Opened read-only; false for anything else.
bool storeFileIsSound(const QString& path);

}  // namespace dovrex
