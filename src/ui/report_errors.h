// Routines that trap: what goes wrong in them is shown in a box, and the program goes on.
#pragma once

#include "base/attempt.h"
#include "ui/desktop.h"

#include <string>
#include <string_view>
#include <utility>

namespace ui {

inline void showError(Desktop& desktop, std::string_view routine, const base::RuntimeError& error) {
    desktop.messageBox("Error in " + std::string(routine) + ":" + error.description());
}

// Runs `body`; an error ends it and shows "Error in <routine>:" and the error's description. True when it ran through.
// Traps what base::attempt() catches.
template <typename Body>
bool reportErrors(Desktop& desktop, std::string_view routine, Body&& body) {
    const auto error = base::attempt(std::forward<Body>(body));
    if (error) {
        showError(desktop, routine, *error);
    }
    return !error;
}

} // namespace ui
