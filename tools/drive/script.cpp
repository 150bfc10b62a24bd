// Splits a script into words and checks every line against the one table of commands.
#include "drive/script.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace drive {
namespace {

constexpr std::size_t kMany = 1000;

struct Grammar {
    std::string_view verb;
    std::size_t least;
    std::size_t most;
    std::string_view usage;
    std::string_view effect;
};

constexpr auto kGrammar = std::to_array<Grammar>({
    {"start", 1, 1, "start \"COMMAND\"", "runs a host; from then on only its windows count"},
    {"host-prints", 1, 2, "host-prints \"TEXT\" [SECONDS]", "waits until the host's output holds the text"},
    {"wait-exit", 0, 1, "wait-exit [CODE]", "waits until the host ends with this code (0)"},
    {"wait", 1, 2, "wait FORM [SECONDS]", "waits until the form is shown; later commands act on it"},
    {"wait-closed", 1, 2, "wait-closed FORM [SECONDS]", "waits until the form is gone"},
    {"close", 1, 1, "close FORM", "clicks the form's close box"},
    {"click", 1, 1, "click CONTROL", "clicks a button"},
    {"check", 2, 2, "check CONTROL on|off", "sets a check box"},
    {"select", 2, 2, "select CONTROL \"LINE\"", "selects the first line of a list with this text"},
    {"type", 2, 2, "type CONTROL \"TEXT\"", "replaces the text of an edit field, key by key"},
    {"focus", 1, 1, "focus CONTROL", "moves the focus, as Tab would"},
    {"key", 1, kMany, "key NAME...",
     "presses keys in turn: Enter, Escape, Tab, Shift+Tab, Alt+A, F1, Space, Down, ..."},
    {"read", 1, 1, "read CONTROL", "prints what the control shows"},
    {"expect", 1, kMany, "expect CONTROL [\"VALUE\"...]",
     "waits until it shows this: a list's lines, on/off, or a text"},
    {"expect-text", 2, 2, "expect-text CONTROL \"TEXT\"", "waits until the control has this caption or text"},
    {"expect-caption", 1, 1, "expect-caption \"TEXT\"", "waits until the form has this caption"},
    {"expect-enabled", 1, 1, "expect-enabled CONTROL", "waits until the control can be used"},
    {"expect-disabled", 1, 1, "expect-disabled CONTROL", "waits until the control cannot be used"},
    {"expect-visible", 1, 1, "expect-visible CONTROL", "waits until the control shows"},
    {"expect-hidden", 1, 1, "expect-hidden CONTROL", "waits until the control is hidden"},
    {"expect-focus", 1, 1, "expect-focus CONTROL", "waits until the control has the focus"},
    {"box", 2, 3, "box \"TEXT\" ANSWER [\"TITLE\"]",
     "waits for a message box that holds the text; OK, Cancel, Yes or No"},
    {"box-icon", 1, 1, "box-icon on|off", "waits for a message box with, or without, an icon"},
    {"input", 1, 2, "input \"TEXT\" [\"PROMPT\"]", "answers an input box"},
    {"input-cancel", 0, 1, "input-cancel [\"PROMPT\"]", "cancels an input box"},
    {"pick", 1, 1, "pick \"PATH\"", "chooses a file in a file dialog"},
    {"pick-cancel", 0, 0, "pick-cancel", "cancels a file dialog"},
    {"wait-dialog", 1, 2, "wait-dialog file|input|box [SECONDS]", "waits for a dialog and leaves it open"},
    {"screenshot", 1, 1, "screenshot FILE.png", "saves a picture of the host's windows as they are on the screen"},
    {"stopwatch", 1, 1, "stopwatch start|\"LABEL\"",
     "starts the clock, or prints the milliseconds since, and the form's longest silence"},
    {"timeout", 1, 1, "timeout SECONDS", "how long each later command may wait (10)"},
    {"note", 1, 1, "note \"TEXT\"", "prints the text"},
});

[[noreturn]] void fail(std::size_t line, const std::string& what) {
    throw ScriptError("line " + std::to_string(line) + ": " + what);
}

// Reads the words of one line.
class Words {
public:
    Words(std::string_view text, std::size_t line) : m_rest(text), m_line(line) {}

    std::vector<std::string> all() {
        std::vector<std::string> words;
        for (skipBlanks(); !m_rest.empty(); skipBlanks()) {
            words.push_back(m_rest.front() == '"' ? quoted() : bare());
        }
        return words;
    }

private:
    void skipBlanks() { m_rest.remove_prefix(std::min(m_rest.find_first_not_of(" \t"), m_rest.size())); }

    std::string bare() {
        const std::size_t length = std::min(m_rest.find_first_of(" \t"), m_rest.size());
        std::string word(m_rest.substr(0, length));
        m_rest.remove_prefix(length);
        return word;
    }

    std::string quoted() {
        m_rest.remove_prefix(1);
        std::string word;
        while (!m_rest.empty()) {
            if (m_rest.starts_with("\"\"") || m_rest.starts_with("{{")) {
                word += m_rest.front();
                m_rest.remove_prefix(2);
            } else if (m_rest.front() == '"') {
                m_rest.remove_prefix(1);
                if (!m_rest.empty() && m_rest.front() != ' ' && m_rest.front() != '\t') {
                    fail(m_line, "a blank must follow a closing quote");
                }
                return word;
            } else if (m_rest.front() == '{') {
                word += escape();
            } else {
                word += m_rest.front();
                m_rest.remove_prefix(1);
            }
        }
        fail(m_line, "a quote is not closed");
    }

    std::string escape() {
        const std::size_t end = m_rest.find('}');
        if (end == std::string_view::npos) {
            fail(m_line, "a brace is not closed; a brace itself is written {{");
        }
        const std::string_view name = m_rest.substr(1, end - 1);
        m_rest.remove_prefix(end + 1);
        if (name == "n") {
            return "\r\n";
        }
        if (name == "t") {
            return "\t";
        }
        std::uint16_t unit = 0;
        if (name.size() == 5 && name.front() == 'u') {
            const auto parsed = std::from_chars(name.data() + 1, name.data() + name.size(), unit, 16);
            if (parsed.ec == std::errc{} && parsed.ptr == name.data() + name.size()) {
                return base::toUtf8(std::u16string(1, static_cast<char16_t>(unit)));
            }
        }
        fail(m_line, "unknown escape {" + std::string(name) + "}");
    }

    std::string_view m_rest;
    std::size_t m_line;
};

void check(const Command& command) {
    const auto* const found = std::ranges::find(kGrammar, command.verb, &Grammar::verb);
    if (found == kGrammar.end()) {
        fail(command.line, "unknown command '" + command.verb + "'");
    }
    const std::size_t count = command.arguments.size();
    if (count < found->least || count > found->most) {
        fail(command.line, "usage: " + std::string(found->usage));
    }
}

} // namespace

std::vector<Command> parseScript(std::string_view text) {
    std::vector<Command> commands;
    if (text.starts_with("\xEF\xBB\xBF")) {
        text.remove_prefix(3);
    }
    for (std::size_t line = 1; !text.empty(); ++line) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view current = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (current.ends_with('\r')) {
            current.remove_suffix(1);
        }
        std::vector<std::string> words = Words(current, line).all();
        if (words.empty() || words.front().starts_with('#')) {
            continue;
        }
        Command command{line, std::move(words.front()), {}};
        words.erase(words.begin());
        command.arguments = std::move(words);
        check(command);
        commands.push_back(std::move(command));
    }
    return commands;
}

std::string describeCommands() {
    constexpr std::size_t kColumn = 36;
    std::string text;
    for (const Grammar& grammar : kGrammar) {
        std::string line = "  " + std::string(grammar.usage);
        line.resize(std::max(kColumn, line.size() + 1), ' ');
        text += line + std::string(grammar.effect) + "\n";
    }
    return text;
}

} // namespace drive
