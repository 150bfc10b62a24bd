// The user's desktop on Windows: shows forms from their dialog templates, runs their modal loops, asks in boxes.
#pragma once

#include "ui/desktop.h"

#include <atomic>
#include <optional>
#include <vector>

#include <windows.h>

namespace windows {

class FormWindow;

class WindowsDesktop final : public ui::Desktop {
public:
    // The templates and the manifest are resources of `module`.
    explicit WindowsDesktop(HINSTANCE module) noexcept : m_module(module) {}

    void showModal(ui::Form& form) override;
    [[nodiscard]] bool showsForm() const noexcept override { return m_shown != 0; }
    ui::Answer messageBox(std::string_view text, ui::Buttons buttons = ui::Buttons::Ok, ui::Icon icon = ui::Icon::None,
                          std::string_view title = ui::kDefaultTitle) override;
    [[nodiscard]] std::string inputBox(std::string_view prompt, std::string_view title,
                                       std::string_view initial = {}) override;
    [[nodiscard]] std::string openFile(const ui::OpenFileRequest& request) override;
    void doEvents() override;

private:
    void runLoop(const FormWindow& window);
    void dispatch(MSG& message);
    // The host's loop was told to end: every form closes; the message goes on to the host afterwards.
    void quit(int exitCode);
    void passQuitOn();
    void flush();
    // The window of the form shown last, unless it has hidden itself; null without one.
    [[nodiscard]] HWND boxOwner() const noexcept;

    HINSTANCE m_module;
    std::vector<FormWindow*> m_windows; // the outermost first
    std::atomic<int> m_shown{0};        // as many, for other threads to ask
    std::optional<int> m_quit;          // while forms unwind
    ULONGLONG m_lastFlush = 0;          // milliseconds
    ULONGLONG m_lastPump = 0;           // milliseconds; 0: not since the running handler started
};

} // namespace windows
