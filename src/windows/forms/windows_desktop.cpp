#include "windows/forms/windows_desktop.h"

#include "base/runtime_error.h"
#include "base/scope_exit.h"
#include "windows/base/wide.h"
#include "windows/forms/common_controls.h"
#include "windows/forms/control_window.h"
#include "windows/forms/disabled_windows.h"
#include "windows/forms/dpi.h"
#include "windows/forms/file_dialog.h"
#include "windows/forms/form_window.h"
#include "windows/forms/input_box.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

namespace windows {
namespace {

// A long loop may change a control thousands of times a second; people see twenty.
constexpr ULONGLONG kFlushInterval = 50; // milliseconds
// Asking for messages costs more than most items of a loop; a click can wait this long.
constexpr ULONGLONG kPumpInterval = 10; // milliseconds

// The host of a control that shows something modal waits as long as this lives.
class HostWaits {
public:
    explicit HostWaits(std::shared_ptr<ControlWindow> control) : m_control(std::move(control)) { tell(true); }
    HostWaits(const HostWaits&) = delete;
    HostWaits& operator=(const HostWaits&) = delete;
    ~HostWaits() { tell(false); }

private:
    void tell(bool begins) const noexcept {
        if (m_control) {
            m_control->hostWaits(begins);
        }
    }

    std::shared_ptr<ControlWindow> m_control;
};

UINT styleOf(ui::Buttons buttons, ui::Icon icon, HWND owner) noexcept {
    UINT style = MB_SETFOREGROUND;
    style |= buttons == ui::Buttons::YesNo ? MB_YESNO : buttons == ui::Buttons::OkCancel ? MB_OKCANCEL : MB_OK;
    style |= icon == ui::Icon::Critical ? MB_ICONERROR : 0;
    // Without an owner it is still modal to the thread's windows.
    return style | (owner == nullptr ? MB_TASKMODAL : 0);
}

ui::Answer closingAnswer(ui::Buttons buttons) noexcept {
    return buttons == ui::Buttons::Ok ? ui::Answer::Ok : ui::Answer::Cancel;
}

} // namespace

void WindowsDesktop::showModal(ui::Form& form) {
    const bool active = std::any_of(m_windows.begin(), m_windows.end(),
                                    [&](const FormWindow* window) { return &window->form() == &form; });
    if (active) {
        throw base::RuntimeError(base::error::kFormAlreadyDisplayed);
    }
    if (m_quit) {
        form.hide();
        return;
    }
    flush();
    const HostWaits host(runningControl());
    const DpiAwareness awareness;
    const base::ScopeExit pass([this] { passQuitOn(); }); // once the window is gone
    FormWindow window(m_module, form, boxOwner());
    m_windows.push_back(&window);
    ++m_shown;
    const base::ScopeExit pop([this] {
        --m_shown;
        m_windows.pop_back();
    });
    window.show();
    runLoop(window);
    window.rethrow();
}

void WindowsDesktop::runLoop(const FormWindow& window) {
    while (window.form().shown()) {
        flush();
        m_lastPump = 0; // the next handler's first doEvents looks in any case
        MSG message{};
        if (GetMessageW(&message, nullptr, 0, 0) == 0) {
            quit(static_cast<int>(message.wParam));
        } else {
            dispatch(message);
        }
    }
}

void WindowsDesktop::dispatch(MSG& message) {
    const auto found = std::find_if(m_windows.rbegin(), m_windows.rend(),
                                    [&](const FormWindow* window) { return window->owns(message.hwnd); });
    if (found == m_windows.rend()) {
        if (!previewEmbedded(message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        return;
    }
    FormWindow& window = **found; // stays on the stack of windows until its own loop, further out, ends
    if (!window.preview(message)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    window.trackFocus();
}

bool WindowsDesktop::previewEmbedded(MSG& message) {
    const auto found = std::ranges::find_if(m_embedded, [&](const ControlWindow* w) { return w->owns(message.hwnd); });
    return found != m_embedded.end() && (*found)->preview(message);
}

void WindowsDesktop::doEvents() {
    const ULONGLONG now = GetTickCount64();
    if (now - m_lastPump < kPumpInterval) {
        return;
    }
    if (now - m_lastFlush >= kFlushInterval) {
        flush();
    }
    for (FormWindow* const window : m_windows) {
        window->stayModal();
    }
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            quit(static_cast<int>(message.wParam));
            return;
        }
        dispatch(message);
    }
    m_lastPump = GetTickCount64();
}

void WindowsDesktop::quit(int exitCode) {
    m_quit = exitCode;
    closeForms();
    for (ControlWindow* const window : m_embedded) {
        window->stop();
    }
    passQuitOn();
}

void WindowsDesktop::closeForms(std::size_t left) noexcept {
    for (std::size_t index = m_windows.size(); index > left; --index) {
        m_windows[index - 1]->close();
    }
}

void WindowsDesktop::release(ControlWindow& window) noexcept {
    std::erase(m_embedded, &window);
    if (const auto first = std::ranges::find(m_running, &window, &Running::window); first != m_running.end()) {
        closeForms(first->formsBefore);
    }
}

void WindowsDesktop::leave(ControlWindow& window) noexcept {
    const auto last = std::find_if(m_running.rbegin(), m_running.rend(),
                                   [&](const Running& running) { return running.window == &window; });
    m_running.erase(std::prev(last.base()));
}

void WindowsDesktop::passQuitOn() {
    if (m_quit && m_windows.empty()) {
        PostQuitMessage(*m_quit);
        m_quit.reset();
    }
}

void WindowsDesktop::flush() {
    for (FormWindow* const window : m_windows) {
        window->flush();
    }
    m_lastFlush = GetTickCount64();
}

HWND WindowsDesktop::boxOwner() const noexcept {
    if (m_windows.empty()) {
        return m_running.empty() || m_ownerless != 0 ? nullptr : m_running.back().window->hostWindow();
    }
    return m_windows.back()->visible() ? m_windows.back()->handle() : nullptr;
}

std::shared_ptr<ControlWindow> WindowsDesktop::runningControl() const noexcept {
    return !m_windows.empty() || m_running.empty() ? nullptr : m_running.back().window->shared_from_this();
}

ui::Answer WindowsDesktop::messageBox(std::string_view text, ui::Buttons buttons, ui::Icon icon,
                                      std::string_view title) {
    if (m_quit) {
        return closingAnswer(buttons);
    }
    flush();
    const HostWaits host(runningControl());
    const DpiAwareness awareness;
    const CommonControlsScope styles(m_module);
    const HWND owner = boxOwner();
    DisabledWindows others;
    if (owner != nullptr) {
        others.disable(owner); // a host may have more windows than the one around the control
    }
    switch (MessageBoxW(owner, toWide(text).c_str(), toWide(title).c_str(), styleOf(buttons, icon, owner))) {
    case IDOK: return ui::Answer::Ok;
    case IDYES: return ui::Answer::Yes;
    case IDNO: return ui::Answer::No;
    default: return closingAnswer(buttons);
    }
}

std::string WindowsDesktop::inputBox(std::string_view prompt, std::string_view title, std::string_view initial) {
    InputBox box(*this, prompt, title, initial);
    box.showModal();
    return box.answer();
}

std::string WindowsDesktop::openFile(const ui::OpenFileRequest& request) {
    if (m_quit) {
        return {};
    }
    flush();
    const DpiAwareness awareness;
    const CommonControlsScope styles(m_module);
    const HostWaits host(runningControl());
    const HWND owner = boxOwner();
    DisabledWindows others;
    others.disable(owner); // the dialog itself disables only an owner
    return chooseFile(owner, request);
}

} // namespace windows
