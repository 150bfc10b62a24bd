#include "windows/forms/form_window.h"

#include "base/runtime_error.h"
#include "windows/base/wide.h"
#include "windows/forms/common_controls.h"
#include "windows/forms/control_ids.h"
#include "windows/forms/dpi.h"

#include <algorithm>
#include <string>
#include <utility>

namespace windows {
namespace {

constexpr UINT kDpiChanged = 0x02E0; // WM_DPICHANGED, newer than the oldest system we run on

bool canBeActivated(HWND window) noexcept {
    return window != nullptr && IsWindow(window) && IsWindowVisible(window) && IsWindowEnabled(window);
}

std::wstring className(const ui::Form& form) {
    return toWide(std::string(kFormClassPrefix) + std::string(form.name()));
}

HWND makeDialog(HINSTANCE module, const ui::Form& form, HWND owner, DLGPROC proc, LPARAM parameter) {
    const CommonControlsScope styles(module);
    return CreateDialogParamW(module, MAKEINTRESOURCEW(formId(form.name())), owner, proc, parameter);
}

} // namespace

FormWindow::FormWindow(HINSTANCE module, ui::Form& form, HWND owner)
    : m_form(form),
      m_class(module, className(form)),
      m_window(makeDialog(module, form, owner, dialogProc, reinterpret_cast<LPARAM>(this))) {
    if (!m_window) {
        throw base::RuntimeError(base::error::kInternalError, "No window for the form " + std::string(form.name()) +
                                                                  ": Windows error " + std::to_string(GetLastError()));
    }
    disableSystemDialogScaling(handle());
    m_view = std::make_unique<ContainerView>(handle(), form, form.name());
    fitToDesign();
    m_form.observe(this);
}

FormWindow::~FormWindow() {
    m_form.observe(nullptr);
    m_others.enable();
    // While it was disabled the window beneath may have lost the keyboard.
    if (GetFocus() == nullptr && canBeActivated(m_previousActive) && GetActiveWindow() == m_previousActive) {
        SetFocus(m_previousActive);
    }
}

void FormWindow::destroy(HWND window) noexcept {
    SetWindowLongPtrW(window, DWLP_USER, 0);
    DestroyWindow(window);
}

bool FormWindow::owns(HWND window) const noexcept {
    return handle() != nullptr && (window == handle() || IsChild(handle(), window));
}

void FormWindow::show() {
    m_previousActive = GetActiveWindow();
    m_others.disable(handle());
    m_view->markAll();
    if (ui::Control* const focused = m_form.focused()) {
        m_view->moveFocus(*focused);
    }
    flush();
    growToTexts();
    m_icon.show(handle(), m_form.iconFile());
    m_visible = true;
    ShowWindow(handle(), SW_SHOW);
    SetForegroundWindow(handle());
    setFirstFocus();
    UpdateWindow(handle());
}

void FormWindow::setFirstFocus() {
    const HWND focus = GetFocus();
    if (m_form.focused() == nullptr && (focus == nullptr || !IsChild(handle(), focus))) {
        if (const HWND first = GetNextDlgTabItem(handle(), nullptr, FALSE)) {
            SendMessageW(handle(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(first), TRUE);
        }
    }
    trackFocus();
}

void FormWindow::stayModal() {
    if (!m_visible) {
        m_others.disable(handle());
    }
}

void FormWindow::flush() {
    if (std::exchange(m_captionDirty, false)) {
        SetWindowTextW(handle(), toWide(m_form.caption()).c_str());
    }
    m_view->flush();
    trackFocus(); // a control that was disabled has handed it on
}

void FormWindow::trackFocus() {
    const HWND focus = GetFocus();
    if (std::exchange(m_focus, focus) != focus) {
        if (ui::Control* const control = m_view->controlOf(focus)) {
            m_form.userFocus(*control);
        }
    }
}

void FormWindow::close() noexcept {
    if (m_form.shown()) {
        guarded([&] { m_form.userClose(); });
        m_form.hide();
    }
}

void FormWindow::rethrow() const {
    if (m_error) {
        std::rethrow_exception(m_error);
    }
}

void FormWindow::keepError() noexcept {
    if (!m_error) {
        m_error = std::current_exception();
    }
    m_form.hide();
}

void FormWindow::controlChanged(ui::Control& control, ui::Aspect aspect) noexcept {
    m_view->mark(control, aspect);
}

// The other windows come back first: hiding the active window while none of the thread's takes input would activate
// another program.
void FormWindow::hidden() noexcept {
    if (!std::exchange(m_visible, false)) {
        return;
    }
    m_others.enable();
    if (GetActiveWindow() == handle() && canBeActivated(m_previousActive)) {
        SetActiveWindow(m_previousActive);
    }
    ShowWindow(handle(), SW_HIDE);
}

void FormWindow::focusMoved(ui::Control& control) noexcept {
    m_view->moveFocus(control);
}

INT_PTR CALLBACK FormWindow::dialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(window, DWLP_USER, lParam);
        return FALSE; // the focus is set when the form is shown
    }
    auto* const self = reinterpret_cast<FormWindow*>(GetWindowLongPtrW(window, DWLP_USER));
    if (self == nullptr || !self->m_view) {
        return FALSE;
    }
    INT_PTR result = FALSE;
    self->guarded([&] { result = self->handle(message, wParam, lParam); });
    return result;
}

INT_PTR FormWindow::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_COMMAND:
    case WM_NOTIFY: return m_form.shown() ? m_view->handle(message, wParam, lParam) : TRUE;
    case WM_DESTROY: // with the host's window that owns it
        static_cast<void>(m_window.release());
        close();
        return TRUE;
    case WM_CLOSE:
        if (m_form.shown()) {
            m_form.userClose();
        }
        return TRUE;
    case WM_SIZE:
        if (wParam != SIZE_MINIMIZED) {
            m_view->resized();
        }
        return TRUE;
    case WM_GETMINMAXINFO: limitSize(*reinterpret_cast<MINMAXINFO*>(lParam)); return TRUE;
    case kDpiChanged: resolutionChanged(HIWORD(wParam), *reinterpret_cast<const RECT*>(lParam)); return TRUE;
    default: return m_view->handle(message, wParam, lParam);
    }
}

void FormWindow::limitSize(MINMAXINFO& limits) const {
    const SIZE minimum = m_view->layout().minimumWindowSize();
    limits.ptMinTrackSize = {minimum.cx, minimum.cy};
    limits.ptMaxTrackSize = {std::max(limits.ptMaxTrackSize.x, minimum.cx),
                             std::max(limits.ptMaxTrackSize.y, minimum.cy)};
}

// Not smaller than the design: the system's proposal counts on a title bar that is scaled too, which it is not with the
// older kind of awareness.
void FormWindow::resolutionChanged(UINT dpi, const RECT& place) {
    m_view->setDpi(dpi);
    const SIZE minimum = m_view->layout().minimumWindowSize();
    SetWindowPos(handle(), nullptr, place.left, place.top, std::max(place.right - place.left, minimum.cx),
                 std::max(place.bottom - place.top, minimum.cy), SWP_NOZORDER | SWP_NOACTIVATE);
    m_view->resized();
    growToTexts();
}

// Around the same middle, as far as the screen goes.
void FormWindow::growToTexts() {
    const int missing = m_view->missingHeight();
    if (missing == 0) {
        return;
    }
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(handle(), MONITOR_DEFAULTTONEAREST), &monitor);
    const RECT& screen = monitor.rcWork;
    RECT place{};
    GetWindowRect(handle(), &place);
    const LONG height = std::min(place.bottom - place.top + missing, screen.bottom - screen.top);
    const LONG top = std::clamp(place.top - missing / 2, screen.top, screen.bottom - height);
    SetWindowPos(handle(), nullptr, place.left, top, place.right - place.left, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

// Older systems lay a template out for the main monitor, wherever the window opens; and no system makes a window that
// can be sized larger than the screen, though one that sticks out can at least be moved.
void FormWindow::fitToDesign() {
    m_view->setDpi(dpiOf(handle()));
    RECT place{};
    GetWindowRect(handle(), &place);
    resolutionChanged(m_view->layout().dpi(), place);
}

} // namespace windows
