#pragma once

#include <QString>
#include <QStringList>

namespace dovrex {

inline constexpr int kHelpSections = 5;

// The manual is one page cut into five sections at the marks "#1" .. "#5": picks and tickets,
// conditions, shrink and ticket files, history and analysis, other tools. Returns the five
// sections as plain text (tags and entities resolved), each from its mark up to the next; a
// section whose mark is missing is empty.
QStringList cut_HelpText(const QString& html);

// The section the help should open at for a top page (0 过滤条件 .. 4 the web page), 1-based.
int helpSectionForPage(int topPage, int conditionTab);

}  // namespace dovrex
