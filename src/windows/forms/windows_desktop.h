// The user's desktop on Windows: shows forms from their dialog templates, runs their modal loops, asks in boxes.
#pragma once

#include "ui/desktop.h"

#include <atomic>
#include <optional>
#include <vector>

#include <windows.h>

namespace windows {

class ControlWindow;
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

    // The window of a user control in a host's window, of this thread. It takes keys from doEvents() too, and its
    // control stops when the host's loop is told to end. It leaves before it goes.
    void embed(ControlWindow& window) { m_embedded.push_back(&window); }
    void release(ControlWindow& window) noexcept { std::erase(m_embedded, &window); }

private:
    void runLoop(const FormWindow& window);
    void dispatch(MSG& message);
    [[nodiscard]] bool previewEmbedded(MSG& message);
    // The host's loop was told to end: every form closes, every control in a host's window stops; the message goes on
    // to the host afterwards.
    void quit(int exitCode);
    void passQuitOn();
    void flush();
    // The window of the form shown last, unless it has hidden itself; null without one.
    [[nodiscard]] HWND boxOwner() const noexcept;

    HINSTANCE m_module;
    std::vector<FormWindow*> m_windows; // the outermost first
    std::vector<ControlWindow*> m_embedded;
    std::atomic<int> m_shown{0}; // as many, for other threads to ask
    std::optional<int> m_quit;   // while forms unwind
    ULONGLONG m_lastFlush = 0;   // milliseconds
    ULONGLONG m_lastPump = 0;    // milliseconds; 0: not since the running handler started
};

} // namespace windows
