#include "windows/forms/control_window.h"

#include "base/runtime_error.h"
#include "ui/desktop.h"
#include "ui/keys.h"
#include "windows/base/wide.h"
#include "windows/forms/control_dialog.h"
#include "windows/forms/control_ids.h"
#include "windows/forms/dpi.h"
#include "windows/forms/mnemonic.h"
#include "windows/forms/windows_desktop.h"

#include <string>
#include <utility>

namespace windows {
namespace {

constexpr UINT kFlush = WM_APP;
constexpr LPARAM kRepeated = 1 << 30; // of a key message: the key was down before

bool isDown(int key) noexcept {
    return GetKeyState(key) < 0;
}

SIZE sizeOf(const RECT& rect) noexcept {
    return {rect.right - rect.left, rect.bottom - rect.top};
}

} // namespace

std::shared_ptr<ControlWindow> ControlWindow::create(WindowsDesktop& desktop, HINSTANCE module,
                                                     std::shared_ptr<ui::UserControl> control, HWND parent,
                                                     const RECT& place, Owner& owner) {
    const std::shared_ptr<ControlWindow> window(new ControlWindow(desktop, std::move(control), owner));
    window->open(module, parent, place);
    return window;
}

ControlWindow::ControlWindow(WindowsDesktop& desktop, std::shared_ptr<ui::UserControl> control, Owner& owner) noexcept
    : m_desktop(desktop), m_control(std::move(control)), m_owner(&owner) {}

void ControlWindow::open(HINSTANCE module, HWND parent, const RECT& place) {
    m_window = UniqueResource<HWND, destroy>(
        makeControlDialog(module, *m_control, parent, dialogProc, reinterpret_cast<LPARAM>(this)));
    m_view = std::make_unique<ContainerView>(handle(), *m_control, m_control->name());
    m_view->setDpi(dpiOf(handle()));
    flush();
    m_focusWatch = std::make_unique<FocusWatch>(
        handle(), [this](HWND window, HWND other, bool got) { focusCrossed(window, other, got); });
    m_desktop.embed(*this);
    m_control->observe(this);
    const SIZE size = sizeOf(place);
    SetWindowPos(handle(), HWND_TOP, place.left, place.top, size.cx, size.cy, SWP_NOACTIVATE | SWP_SHOWWINDOW);
    m_view->resized();
}

ControlWindow::Use::Use(ControlWindow& window) : m_window(window.shared_from_this()) {
    m_window->m_desktop.enter(window);
}

ControlWindow::Use::~Use() {
    m_window->m_desktop.leave(*m_window);
}

ControlWindow::~ControlWindow() {
    close();
}

void ControlWindow::close() noexcept {
    if (std::exchange(m_owner, nullptr) != nullptr) {
        m_control->observe(nullptr);
        m_desktop.release(*this);
        m_window.reset();
    }
}

// Its last messages find nobody.
void ControlWindow::destroy(HWND window) noexcept {
    SetWindowLongPtrW(window, DWLP_USER, 0);
    DestroyWindow(window);
}

bool ControlWindow::owns(HWND window) const noexcept {
    return handle() != nullptr && (window == handle() || IsChild(handle(), window));
}

HWND ControlWindow::hostWindow() const noexcept {
    return handle() == nullptr ? nullptr : GetAncestor(handle(), GA_ROOT);
}

void ControlWindow::hostWaits(bool begins) noexcept {
    if (m_owner != nullptr) {
        m_owner->hostWaits(begins);
    }
}

void ControlWindow::setPlace(const RECT& place, const RECT& clip) {
    if (handle() == nullptr) {
        return;
    }
    RECT shown{};
    IntersectRect(&shown, &place, &clip);
    OffsetRect(&shown, -place.left, -place.top);
    const SIZE size = sizeOf(place);
    const bool whole = shown.left == 0 && shown.top == 0 && shown.right == size.cx && shown.bottom == size.cy;
    SetWindowRgn(handle(), whole ? nullptr : CreateRectRgnIndirect(&shown), TRUE);
    SetWindowPos(handle(), nullptr, place.left, place.top, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

void ControlWindow::setColors(const Colors& colors) {
    m_colors = colors;
    m_background = UniqueBrush(colors.back ? CreateSolidBrush(*colors.back) : nullptr);
    if (handle() != nullptr) {
        RedrawWindow(handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    }
}

// Null: the platform's.
INT_PTR ControlWindow::prepareColors(HDC device) const noexcept {
    if (!m_background) {
        return FALSE;
    }
    SetBkColor(device, *m_colors.back);
    SetTextColor(device, m_colors.text.value_or(GetSysColor(COLOR_BTNTEXT)));
    return reinterpret_cast<INT_PTR>(m_background.get());
}

void ControlWindow::takeFocus(const MSG* key) {
    if (handle() == nullptr || owns(GetFocus())) {
        return;
    }
    HWND target = GetNextDlgTabItem(handle(), nullptr, FALSE);
    if (key != nullptr && key->message == WM_KEYDOWN && key->wParam == VK_TAB) {
        target = isDown(VK_SHIFT) ? GetNextDlgTabItem(handle(), target, TRUE) : target;
    } else if (owns(m_lastFocus) && IsWindowEnabled(m_lastFocus) && IsWindowVisible(m_lastFocus)) {
        target = m_lastFocus;
    }
    SendMessageW(handle(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(target), TRUE);
}

bool ControlWindow::preview(MSG& message) {
    const auto self = shared_from_this();
    if (!owns(message.hwnd)) {
        return false;
    }
    if (message.message == WM_SYSCHAR) {
        return pressMnemonic(static_cast<char16_t>(message.wParam));
    }
    if (message.message != WM_KEYDOWN) {
        return false;
    }
    switch (message.wParam) {
    case VK_RETURN:
    case VK_ESCAPE:
        if (ui::Control* const focused = m_view->controlOf(message.hwnd)) {
            return previewKey(*focused, static_cast<char16_t>(message.wParam), (message.lParam & kRepeated) != 0);
        }
        return false;
    case VK_TAB: return previewTab(message);
    case VK_LEFT:
    case VK_UP:
    case VK_RIGHT:
    case VK_DOWN: return IsDialogMessageW(handle(), &message) != FALSE; // or a host would take them for its own
    default: return false;
    }
}

// A key held down since before the keyboard came here, say in a message box that it closed, does not count.
bool ControlWindow::previewKey(ui::Control& focused, char16_t key, bool repeated) noexcept {
    bool taken = repeated;
    guarded([&] {
        if (!repeated && m_control->userKey(key) == 0) {
            taken = true;
        } else if (!repeated && key == ui::key::kReturn) {
            taken = true;
            m_control->userReturn(focused);
        }
    });
    return taken;
}

// The dialog manager would go round and round.
bool ControlWindow::previewTab(MSG& message) noexcept {
    if (isDown(VK_CONTROL) || isDown(VK_MENU)) {
        return false;
    }
    const bool backwards = isDown(VK_SHIFT);
    const HWND first = GetNextDlgTabItem(handle(), nullptr, FALSE);
    const HWND next = GetNextDlgTabItem(handle(), message.hwnd, backwards ? TRUE : FALSE);
    if (backwards ? message.hwnd == first : next == first) {
        return m_owner->takesTab(message);
    }
    SendMessageW(handle(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next), TRUE);
    return true;
}

bool ControlWindow::pressMnemonic(char16_t letter) {
    const auto self = shared_from_this();
    const ui::Control* const control = handle() == nullptr ? nullptr : pressedBy(letter, *m_control);
    if (control == nullptr) {
        return false;
    }
    const HWND window = GetDlgItem(handle(), controlId(m_control->name(), control->name()));
    SetFocus(window);
    SendMessageW(window, BM_CLICK, 0, 0);
    return true;
}

void ControlWindow::flush() {
    m_flushPosted = false;
    m_view->flush();
    if (std::u16string now = mnemonicsOf(*m_control); now != m_mnemonics && m_owner != nullptr) {
        m_mnemonics = std::move(now);
        m_owner->mnemonicsChanged();
    }
}

void ControlWindow::controlChanged(ui::Control& control, ui::Aspect aspect) noexcept {
    m_view->mark(control, aspect);
    flushLater();
}

// Not away from what else a person may be doing in the host's window.
void ControlWindow::focusMoved(ui::Control& control) noexcept {
    if (owns(GetFocus())) {
        m_view->moveFocus(control);
        flushLater();
    }
}

void ControlWindow::flushLater() noexcept {
    if (!std::exchange(m_flushPosted, true)) {
        PostMessageW(handle(), kFlush, 0, 0);
    }
}

INT_PTR CALLBACK ControlWindow::dialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(window, DWLP_USER, lParam);
        return FALSE;
    }
    auto* const object = reinterpret_cast<ControlWindow*>(GetWindowLongPtrW(window, DWLP_USER));
    if (object == nullptr || !object->m_view) {
        return FALSE;
    }
    const std::shared_ptr<ControlWindow> self = object->weak_from_this().lock(); // whatever a handler lets go of
    INT_PTR result = FALSE;
    if (self) {
        self->guarded([&] { result = self->handle(message, wParam, lParam); });
    }
    return result;
}

INT_PTR ControlWindow::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case kFlush: flush(); return TRUE;
    case WM_SIZE: m_view->resized(); return TRUE;
    case WM_DESTROY: // with the host's window, without a word
        static_cast<void>(m_window.release());
        close();
        return FALSE;
    case WM_CTLCOLORDLG: return prepareColors(reinterpret_cast<HDC>(wParam));
    case WM_CTLCOLORSTATIC:
        if (const INT_PTR own = m_view->handle(message, wParam, lParam); own != FALSE) {
            return own;
        }
        return prepareColors(reinterpret_cast<HDC>(wParam));
    default: return m_view->handle(message, wParam, lParam);
    }
}

void ControlWindow::focusCrossed(HWND window, HWND other, bool inside) noexcept {
    const std::shared_ptr<ControlWindow> self = weak_from_this().lock();
    m_lastFocus = window;
    if (m_owner != nullptr && !owns(other)) {
        m_owner->focusMoved(inside);
    }
}

template <typename Body>
void ControlWindow::guarded(Body&& body) noexcept {
    try {
        const Use use(*this);
        try {
            body();
        } catch (...) {
            showError();
        }
    } catch (...) {
        MessageBoxW(nullptr, L"Out of memory", toWide(ui::kDefaultTitle).c_str(), MB_ICONERROR | MB_TASKMODAL);
    }
}

// Nobody called whom it could be raised to.
void ControlWindow::showError() {
    try {
        throw;
    } catch (const base::RuntimeError& e) {
        m_desktop.messageBox("Error in " + std::string(m_control->name()) + ":" + e.description());
    }
}

} // namespace windows
