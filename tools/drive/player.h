// Plays a script against whatever program shows the windows.
#pragma once

#include "drive/host_process.h"
#include "drive/patience.h"
#include "drive/screen.h"
#include "drive/script.h"
#include "drive/silence.h"

#include <windows.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace drive {

class Player {
public:
    // `print` gets one line at a time, without a line break.
    explicit Player(std::function<void(std::string_view)> print) : m_print(std::move(print)) {}

    // Plays all commands. Throws Failure with the line, the reason, what is on the screen and what the host printed.
    // State (the host, the current form, the time limit) carries over to the next call.
    void play(const std::vector<Command>& commands);

    [[nodiscard]] const HostProcess& host() const noexcept { return m_host; }

private:
    using Arguments = const std::vector<std::string>&;
    void play(const Command& command);

    // player.cpp: the host, the forms, the clock.
    void start(Arguments arguments);
    void hostPrints(Arguments arguments);
    void waitExit(Arguments arguments);
    void wait(Arguments arguments);
    void waitClosed(Arguments arguments);
    void close(Arguments arguments);
    void screenshot(Arguments arguments);
    void stopwatch(Arguments arguments);
    void timeout(Arguments arguments);
    void note(Arguments arguments) { m_print(arguments[0]); }

    // player_controls.cpp: using controls and reading them.
    void clickControl(Arguments arguments);
    void checkControl(Arguments arguments);
    void selectInList(Arguments arguments);
    void typeText(Arguments arguments);
    void focusControl(Arguments arguments);
    void keys(Arguments arguments);
    void read(Arguments arguments);
    void expectValues(Arguments arguments);
    void expectText(Arguments arguments);
    void expectCaption(Arguments arguments);
    void expectEnabled(Arguments arguments);
    void expectDisabled(Arguments arguments);
    void expectVisible(Arguments arguments);
    void expectHidden(Arguments arguments);
    void expectFocus(Arguments arguments);

    // player_dialogs.cpp: boxes and file dialogs.
    void box(Arguments arguments);
    void boxIcon(Arguments arguments);
    void input(Arguments arguments);
    void inputCancel(Arguments arguments);
    void pick(Arguments arguments);
    void pickCancel(Arguments arguments);
    void waitDialog(Arguments arguments);

    [[nodiscard]] HWND currentForm() const;
    // The current form's control, shown or not.
    [[nodiscard]] HWND control(std::string_view name) const;
    // The same, once a person could use it.
    [[nodiscard]] HWND usableControl(std::string_view name) const;
    // Waits until what is read equals what is wanted.
    void expectEqual(const std::string& what, const std::string& wanted,
                     const std::function<std::string()>& read) const;
    [[nodiscard]] HWND dialog(DialogKind kind, std::optional<double> seconds = {}) const;
    [[nodiscard]] HWND inputBox(Arguments arguments, std::size_t promptIndex) const;
    void waitUntilGone(HWND window, std::string_view what) const;
    // Waits until the window's thread has dealt with what was posted to it.
    void settle(HWND window) const;

    std::function<void(std::string_view)> m_print;
    HostProcess m_host;
    Patience m_patience{m_host};
    Screen m_screen;
    std::string m_form;
    std::chrono::steady_clock::time_point m_watch = std::chrono::steady_clock::now();
    std::unique_ptr<Silence> m_silence; // of the form that was current when the watch was started
};

} // namespace drive
