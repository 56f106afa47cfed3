#pragma once

#include <QString>
#include <functional>

#include "widgets/command_trap.h"

class QCheckBox;
class QLabel;
class QTableView;
class QWidget;

namespace dovrex {

class TickList;

// Pieces shared by the condition tabs.

// A switch of 过滤条件使用情况: the box writes its switch at each click, never when it is filled.
QCheckBox* switchBox(const QString& caption, int switchNo, const QString& name, QWidget* parent);
void loadSwitch(QCheckBox* box);

// A bold line above a group of controls.
QLabel* sectionTitle(const QString& text, QWidget* parent);
// A small grey note that wraps.
QLabel* noteLabel(const QString& text, QWidget* parent);

// TDBGrid_jioubi: the counts of every draw, newest first, in place of a chart on the count tabs.
QTableView* makeCountGrid(QWidget* parent);
void fillCountGrid(QTableView* grid);

}  // namespace dovrex
