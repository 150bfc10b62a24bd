// The user's desktop on Windows: shows forms from their dialog templates, runs their modal loops, asks in boxes.
#pragma once

#include "ui/desktop.h"

#include <atomic>
#include <cstddef>
#include <memory>
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

    // As long as one lives, no form belongs to a host's window, whatever control runs there.
    class Ownerless {
    public:
        explicit Ownerless(WindowsDesktop& desktop) noexcept : m_count(desktop.m_ownerless) { ++m_count; }
        ~Ownerless() { --m_count; }
        Ownerless(const Ownerless&) = delete;
        Ownerless& operator=(const Ownerless&) = delete;

    private:
        std::atomic<int>& m_count;
    };

    // The window of a user control in a host's window, of this thread. It takes keys from doEvents() too, and its
    // control stops when the host's loop is told to end. It leaves before it goes.
    void embed(ControlWindow& window) { m_embedded.push_back(&window); }
    // The forms that its routines show close.
    void release(ControlWindow& window) noexcept;
    // One of its routines begins, and ends: what they show belongs to the host's window.
    void enter(ControlWindow& window) { m_running.push_back({&window, m_windows.size()}); }
    void leave(ControlWindow& window) noexcept;

private:
    struct Running {
        ControlWindow* window;
        std::size_t formsBefore;
    };

    void runLoop(const FormWindow& window);
    void dispatch(MSG& message);
    [[nodiscard]] bool previewEmbedded(MSG& message);
    // The host's loop was told to end: every form closes, every control in a host's window stops; the message goes on
    // to the host afterwards.
    void quit(int exitCode);
    void passQuitOn();
    void flush();
    // The window of the form shown last, unless it has hidden itself. Without a form, the host's window around the
    // control that runs. Null where there is neither.
    [[nodiscard]] HWND boxOwner() const noexcept;
    // The control whose routine runs, unless it shows a form already; null without one.
    [[nodiscard]] std::shared_ptr<ControlWindow> runningControl() const noexcept;
    // All but so many of the outermost.
    void closeForms(std::size_t left = 0) noexcept;

    HINSTANCE m_module;
    std::vector<FormWindow*> m_windows; // the outermost first
    std::vector<ControlWindow*> m_embedded;
    std::vector<Running> m_running;  // the innermost last; a control may be there more than once
    std::atomic<int> m_ownerless{0}; // other threads ask for forms too, which they do not get while one is shown
    std::atomic<int> m_shown{0};     // as many as there are windows, for other threads to ask
    std::optional<int> m_quit;       // while forms unwind
    ULONGLONG m_lastFlush = 0;       // milliseconds
    ULONGLONG m_lastPump = 0;        // milliseconds; 0: not since the running handler started
};

} // namespace windows
