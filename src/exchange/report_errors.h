// Routines that trap: what goes wrong in them is reported, and the exchange goes on.
#pragma once

#include "base/attempt.h"
#include "exchange/dialogues.h"

#include <string_view>
#include <utility>

namespace exchange {

// Runs `body`; an error that base::attempt() catches ends it and is reported as that of this routine. True when it ran
// through.
template <typename Body>
bool reportErrors(Dialogues& dialogues, std::string_view routine, Body&& body) {
    const auto error = base::attempt(std::forward<Body>(body));
    if (error) {
        dialogues.report(routine, *error);
    }
    return !error;
}

} // namespace exchange
