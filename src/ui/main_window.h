#pragma once

class QApplication;

namespace dovrex {

// Runs the whole program: start-up sequence, main window, exit sequence. Returns the exit code.
int runProgram(QApplication& app);

}  // namespace dovrex
