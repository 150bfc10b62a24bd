// Answers of the server that nothing can be done with, kept for the user to hand to the supplier.
#pragma once

#include "exchange/dialogues.h"
#include "exchange/services.h"

#include <string>
#include <string_view>

namespace exchange {

// Writes the answer, byte for byte as it was received, and a line break to errors\yyyyMMdd_hhmmss.html in the data
// folder (with its final backslash), and returns the file's path; a second answer within the same second replaces the
// first. What goes wrong is reported, and the result is "".
[[nodiscard]] std::string writeErrorFile(Dialogues& dialogues, const Services& services, std::string_view dataFolder,
                                         std::string_view answer);

} // namespace exchange
