// What a person is told when no connection came about, and what they can do then.
#pragma once

#include <string>
#include <string_view>

namespace exchange {

struct Failure {
    std::string text;
    bool settingsHelp = false; // the settings may be the cause: the dialogue leads there
    bool keepAnswer = false;   // the answer is worth a file, whose name ends the text
};

// `answer`: what the server or a proxy sent, "" when nothing came; `proxy`: one is set.
[[nodiscard]] Failure describeFailure(std::string_view answer, std::string_view description, std::string_view url,
                                      bool proxy);

} // namespace exchange
