#pragma once

#include <functional>
#include <vector>

namespace dovrex {

class FormMain;

// Pages, tabs and menu entries that plug themselves into the main window. Each source file of a
// page registers its part with a static RegisterWindowPart; the window installs them all, in
// `order`, once its own pages and menus exist. Adding a page therefore never edits the window.
struct WindowPart {
    const char* name;
    int order;
    std::function<void(FormMain&)> install;
};

std::vector<WindowPart>& windowParts();

struct RegisterWindowPart {
    RegisterWindowPart(const char* name, int order, std::function<void(FormMain&)> install) {
        windowParts().push_back({name, order, std::move(install)});
    }
};

}  // namespace dovrex
