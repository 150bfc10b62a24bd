#include "windows/forms/container_view.h"

#include "base/runtime_error.h"
#include "windows/forms/control_ids.h"
#include "windows/forms/peer_factory.h"

#include <algorithm>
#include <string>
#include <utility>

namespace windows {
namespace {

[[noreturn]] void refuse(std::string_view name, const std::string& reason) {
    throw base::RuntimeError(base::error::kInternalError, "Template " + std::string(name) + ": " + reason);
}

bool isEnabled(HWND window) noexcept {
    return (GetWindowLongW(window, GWL_STYLE) & WS_DISABLED) == 0;
}

// Unlike IsWindowVisible, whatever the dialog's own state.
bool isShown(HWND window) noexcept {
    return (GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) != 0;
}

} // namespace

ContainerView::ContainerView(HWND dialog, const ui::Container& container, std::string_view name)
    : m_dialog(dialog), m_layout(dialog) {
    bind(container, name);
    refuseUnboundWindows(name);
    markAll();
}

void ContainerView::bind(const ui::Container& container, std::string_view name) {
    for (ui::Control* const control : container.controls()) {
        const int id = controlId(name, control->name());
        const HWND window = id == 0 ? nullptr : GetDlgItem(m_dialog, id);
        if (window == nullptr) {
            refuse(name, "no window for the control " + std::string(control->name()));
        }
        m_entries.push_back({makePeer(window, *control), {}});
        ControlPeer& peer = *m_entries.back().peer;
        m_layout.add(peer.window(), control->anchors,
                     peer.content() == nullptr ? Layout::Margin::Usual : Layout::Margin::None);
    }
}

void ContainerView::refuseUnboundWindows(std::string_view name) const {
    for (HWND child = GetWindow(m_dialog, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        if (controlOf(child) == nullptr) {
            const int id = GetDlgCtrlID(child);
            refuse(name,
                   "no control object for the window " + std::to_string(id) + " " + std::string(controlName(name, id)));
        }
    }
}

void ContainerView::setDpi(UINT dpi) {
    m_layout.setDpi(dpi);
    for (const Entry& entry : m_entries) {
        entry.peer->fontChanged(dpi);
    }
}

void ContainerView::resized() {
    m_layout.arrange();
    for (const Entry& entry : m_entries) {
        entry.peer->resized();
    }
}

void ContainerView::mark(const ui::Control& control, ui::Aspect aspect) noexcept {
    if (Entry* const entry = entryOf(control)) {
        entry->dirty.add(aspect);
        m_dirty = true;
    }
}

void ContainerView::markAll() noexcept {
    for (Entry& entry : m_entries) {
        entry.dirty = Aspects::all();
    }
    m_dirty = true;
}

void ContainerView::moveFocus(const ui::Control& control) noexcept {
    m_focusTo = &control;
    m_dirty = true;
}

// Windows come to life before the focus moves, and go dead after it: else the keyboard would end up nowhere.
void ContainerView::flush() {
    for (const Entry& entry : m_entries) {
        if (ContainerView* const inner = entry.peer->content()) {
            inner->flush();
        }
    }
    if (!std::exchange(m_dirty, false)) {
        return;
    }
    bool unfinished = false;
    std::vector<const ControlPeer*> leaving;
    for (Entry& entry : m_entries) {
        const Aspects dirty = std::exchange(entry.dirty, {});
        if (!dirty.any()) {
            continue;
        }
        const ControlPeer& peer = *entry.peer;
        entry.peer->update(dirty);
        unfinished = unfinished || peer.unfinished();
        if (!peer.control().enabled() || !peer.control().visible()) {
            leaving.push_back(&peer);
        } else {
            enable(peer);
            show(peer);
        }
    }
    if (const ui::Control* const target = std::exchange(m_focusTo, nullptr)) {
        if (const Entry* const entry = entryOf(*target); entry != nullptr && entry->peer->control().enabled()) {
            SendMessageW(m_dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(entry->peer->window()), TRUE);
        }
    }
    for (const ControlPeer* const peer : leaving) {
        leave(peer->window());
        enable(*peer);
        show(*peer);
    }
    if (unfinished) {
        goOnLater();
    }
}

// A timer speaks up only when there is neither a key nor anything to paint.
void ContainerView::goOnLater() noexcept {
    SetTimer(m_dialog, reinterpret_cast<UINT_PTR>(this), USER_TIMER_MINIMUM, goOn);
}

void CALLBACK ContainerView::goOn(HWND dialog, UINT /*message*/, UINT_PTR self, DWORD /*time*/) noexcept {
    KillTimer(dialog, self);
    auto& view = *reinterpret_cast<ContainerView*>(self);
    for (const Entry& entry : view.m_entries) {
        if (entry.peer->unfinished()) {
            view.mark(entry.peer->control(), ui::Aspect::Text);
        }
    }
}

INT_PTR ContainerView::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_COMMAND: command(reinterpret_cast<HWND>(lParam), HIWORD(wParam)); return TRUE;
    case WM_NOTIFY: notify(*reinterpret_cast<NMHDR*>(lParam)); return TRUE;
    case WM_DRAWITEM: draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)); return TRUE;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORLISTBOX: return prepareColors(reinterpret_cast<HWND>(lParam), reinterpret_cast<HDC>(wParam));
    default: return FALSE;
    }
}

void ContainerView::command(HWND window, WORD notification) {
    if (ControlPeer* const peer = peerOf(window)) {
        peer->command(notification);
    }
}

void ContainerView::notify(NMHDR& header) {
    if (ControlPeer* const peer = peerOf(header.hwndFrom)) {
        peer->notify(header);
    }
}

void ContainerView::draw(const DRAWITEMSTRUCT& item) {
    if (ControlPeer* const peer = peerOf(item.hwndItem)) {
        peer->draw(item);
    }
}

INT_PTR ContainerView::prepareColors(HWND window, HDC device) const {
    ControlPeer* const peer = peerOf(window);
    return peer == nullptr ? FALSE : reinterpret_cast<INT_PTR>(peer->prepareColors(device));
}

int ContainerView::missingHeight() const {
    int missing = 0;
    for (const Entry& entry : m_entries) {
        missing = std::max(missing, entry.peer->missingHeight());
    }
    return missing;
}

ControlPeer* ContainerView::peerOf(HWND window) const noexcept {
    for (const Entry& entry : m_entries) {
        if (entry.peer->window() == window) {
            return entry.peer.get();
        }
        if (const ContainerView* const inner = entry.peer->content()) {
            if (ControlPeer* const peer = inner->peerOf(window)) {
                return peer;
            }
        }
    }
    return nullptr;
}

ui::Control* ContainerView::controlOf(HWND window) const noexcept {
    const ControlPeer* const peer = peerOf(window);
    return peer == nullptr ? nullptr : &peer->control();
}

ContainerView::Entry* ContainerView::entryOf(const ui::Control& control) noexcept {
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&](const Entry& entry) { return &entry.peer->control() == &control; });
    return found == m_entries.end() ? nullptr : &*found;
}

// A window about to be disabled or hidden hands the focus to the next one in tab order.
void ContainerView::leave(HWND window) {
    if (GetFocus() == window) {
        SendMessageW(m_dialog, WM_NEXTDLGCTL, 0, FALSE);
    }
}

void ContainerView::enable(const ControlPeer& peer) {
    if (peer.control().enabled() != isEnabled(peer.window())) {
        EnableWindow(peer.window(), peer.control().enabled() ? TRUE : FALSE);
    }
}

void ContainerView::show(const ControlPeer& peer) {
    if (peer.control().visible() != isShown(peer.window())) {
        ShowWindow(peer.window(), peer.control().visible() ? SW_SHOWNA : SW_HIDE);
    }
}

} // namespace windows
