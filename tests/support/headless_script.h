#pragma once

#include <gtest/gtest.h>

#include <QStringList>

#include "headless/headless_runner.h"

namespace dovrex::test {

// Runs a script through a headless runner of its own and returns what it printed. The exit code is
// checked, with the whole output shown when it is not the one expected.
inline QStringList runHeadless(const QString& script, int expectedCode = 0) {
    QStringList out;
    HeadlessRunner runner([&out](const QString& line) { out << line; });
    EXPECT_EQ(runner.runScript(script), expectedCode) << out.join(u'\n').toStdString();
    return out;
}

}  // namespace dovrex::test
