#pragma once

class QApplication;

namespace dovrex {

struct AppPaths;

// Runs the whole program: start-up sequence, main window, exit sequence. Returns the exit code.
int runProgram(QApplication& app);
// The same with the program and temporary folders given.
int runProgram(QApplication& app, const AppPaths& paths);

}  // namespace dovrex
