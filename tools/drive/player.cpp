// Which member plays which command; and the commands about the host, its forms and the clock.
#include "drive/player.h"

#include "drive/controls.h"
#include "drive/failure.h"
#include "drive/screenshot.h"

#include <charconv>
#include <map>

namespace drive {
namespace {

double number(const std::string& text) {
    double value = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), value);
    if (parsed.ec != std::errc{} || parsed.ptr != text.data() + text.size() || value < 0) {
        throw Failure("'" + text + "' is no number");
    }
    return value;
}

std::optional<double> secondsAt(const std::vector<std::string>& arguments, std::size_t index) {
    return arguments.size() > index ? std::optional(number(arguments[index])) : std::nullopt;
}

} // namespace

void Player::play(const std::vector<Command>& commands) {
    for (const Command& command : commands) {
        try {
            play(command);
        } catch (const Failure& failure) {
            std::string text = "line " + std::to_string(command.line) + " (" + command.verb + "): " + failure.what() +
                               "\non screen:\n" + m_screen.describe();
            if (m_host.started()) {
                text += "the host printed:\n" + m_host.output();
            }
            throw Failure(text);
        }
    }
}

void Player::play(const Command& command) {
    using Member = void (Player::*)(Arguments);
    static const std::map<std::string_view, Member> kMembers{
        {"start", &Player::start},
        {"host-prints", &Player::hostPrints},
        {"wait-exit", &Player::waitExit},
        {"wait", &Player::wait},
        {"wait-closed", &Player::waitClosed},
        {"close", &Player::close},
        {"click", &Player::clickControl},
        {"check", &Player::checkControl},
        {"select", &Player::selectInList},
        {"type", &Player::typeText},
        {"focus", &Player::focusControl},
        {"key", &Player::keys},
        {"read", &Player::read},
        {"expect", &Player::expectValues},
        {"expect-text", &Player::expectText},
        {"expect-caption", &Player::expectCaption},
        {"expect-enabled", &Player::expectEnabled},
        {"expect-disabled", &Player::expectDisabled},
        {"expect-visible", &Player::expectVisible},
        {"expect-hidden", &Player::expectHidden},
        {"expect-focus", &Player::expectFocus},
        {"box", &Player::box},
        {"box-icon", &Player::boxIcon},
        {"input", &Player::input},
        {"input-cancel", &Player::inputCancel},
        {"pick", &Player::pick},
        {"pick-cancel", &Player::pickCancel},
        {"wait-dialog", &Player::waitDialog},
        {"screenshot", &Player::screenshot},
        {"stopwatch", &Player::stopwatch},
        {"timeout", &Player::timeout},
        {"note", &Player::note},
    };
    (this->*kMembers.at(command.verb))(command.arguments);
}

void Player::start(Arguments arguments) {
    m_host.start(arguments[0]);
    m_screen.onlyProcess(m_host.id());
}

void Player::hostPrints(Arguments arguments) {
    m_patience.until(
        "the host to print '" + arguments[0] + "'",
        [&] { return m_host.output().find(arguments[0]) != std::string::npos; }, secondsAt(arguments, 1));
}

void Player::waitExit(Arguments arguments) {
    if (!m_host.started()) {
        throw Failure("no host was started");
    }
    m_patience.until("the host to end", [&] { return m_host.exitCode().has_value(); });
    const DWORD code = m_host.exitCode().value_or(0);
    const DWORD wanted = arguments.empty() ? 0 : static_cast<DWORD>(number(arguments[0]));
    if (code != wanted) {
        throw Failure("the host ended with code " + std::to_string(code) + ", not " + std::to_string(wanted));
    }
}

void Player::wait(Arguments arguments) {
    m_form = arguments[0];
    HWND window = nullptr;
    m_patience.until(
        "the form " + m_form, [&] { return (window = m_screen.form(m_form)) != nullptr; }, secondsAt(arguments, 1));
    ask(window, WM_NULL); // answered by its message loop, so it has been filled and shown
}

void Player::waitClosed(Arguments arguments) {
    m_patience.until(
        "the form " + arguments[0] + " to close", [&] { return m_screen.form(arguments[0]) == nullptr; },
        secondsAt(arguments, 1));
}

void Player::close(Arguments arguments) {
    HWND window = nullptr;
    m_patience.until("the form " + arguments[0] + " to be usable", [&] {
        window = m_screen.form(arguments[0]);
        return window != nullptr && IsWindowEnabled(window) != FALSE;
    });
    PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
}

void Player::screenshot(Arguments arguments) {
    RECT area{};
    for (const HWND window : m_screen.windows()) {
        settle(window);
        RECT rectangle{};
        GetWindowRect(window, &rectangle);
        const RECT before = area;
        UnionRect(&area, &before, &rectangle);
    }
    if (IsRectEmpty(&area) != FALSE) {
        throw Failure("there is nothing on screen to take a picture of");
    }
    saveScreenshot(area, arguments[0]);
}

void Player::stopwatch(Arguments arguments) {
    const auto now = std::chrono::steady_clock::now();
    if (arguments[0] == "start") {
        m_watch = now;
        const HWND form = m_screen.form(m_form);
        m_silence = form == nullptr ? nullptr : std::make_unique<Silence>(form);
        return;
    }
    const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(now - m_watch);
    std::string line = arguments[0] + ": " + std::to_string(elapsed.count()) + " ms";
    if (const auto silence = std::exchange(m_silence, nullptr)) {
        line += ", longest without an answer " + std::to_string(silence->longest().count()) + " ms";
    }
    m_print(line);
}

void Player::timeout(Arguments arguments) {
    m_patience.setSeconds(number(arguments[0]));
}

void Player::settle(HWND window) const {
    // A sent message overtakes posted ones that the thread has not fetched yet; the second question, one polling
    // interval later, comes when it has.
    ask(window, WM_NULL);
    bool again = false;
    m_patience.until("the window to settle", [&] { return IsWindow(window) == FALSE || std::exchange(again, true); });
    ask(window, WM_NULL);
}

void Player::waitUntilGone(HWND window, std::string_view what) const {
    m_patience.until(std::string(what) + " to close",
                     [&] { return IsWindow(window) == FALSE || IsWindowVisible(window) == FALSE; });
}

} // namespace drive
