// Routines that trap: what goes wrong in them is shown in a box, and the program goes on.
#pragma once

#include "base/runtime_error.h"
#include "ui/desktop.h"

#include <string>
#include <string_view>
#include <utility>

namespace ui {

// Runs `body`; a run-time error ends it and shows "Error in <routine>:" and the error's description. True when it ran
// through. Out of memory is not trapped, nor is anything that is not a RuntimeError.
template <typename Body>
bool reportErrors(Desktop& desktop, std::string_view routine, Body&& body) {
    try {
        std::forward<Body>(body)();
        return true;
    } catch (const base::RuntimeError& e) {
        if (e.number() == base::error::kOutOfMemory) {
            throw;
        }
        desktop.messageBox("Error in " + std::string(routine) + ":" + e.description());
        return false;
    }
}

} // namespace ui
