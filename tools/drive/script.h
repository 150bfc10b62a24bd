// The language in which a test plays the user: one command per line, checked whole before anything is clicked.
// Portable: no window is touched here.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace drive {

struct Command {
    std::size_t line = 0; // one-based
    std::string verb;
    std::vector<std::string> arguments;
};

class ScriptError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Words are separated by blanks; a word in double quotes may hold blanks, and "" in it is one quote. Inside quotes
// {n} is a line break (CR LF), {t} a tab, {u00E9} a UTF-16 unit in hexadecimal, {{ a brace; a backslash is itself.
// A line that is empty or starts with # is skipped. Throws ScriptError, which names the line, on a bad word, an
// unknown command or a wrong number of arguments.
[[nodiscard]] std::vector<Command> parseScript(std::string_view text);

// One line per command, for people.
[[nodiscard]] std::string describeCommands();

} // namespace drive
