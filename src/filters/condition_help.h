#pragma once

#include <QString>

namespace dovrex {

// The note under a condition page that says what its values mean: the temperatures, and for the
// count and shape pages how the numbers 01..33 are divided, read from 号码特性 so that the note
// tells what the filter will use. Empty for a page without one.
QString condition_Definition(int tab);

}  // namespace dovrex
