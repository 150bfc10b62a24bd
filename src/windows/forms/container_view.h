// The windows of one container's controls, bound by name and kept in step with the control objects.
//
// Changes are only marked; flush() shows them in one go. It is the part of the presenter that does not care whether the
// container is a form in a window of its own or a user control inside another one.
#pragma once

#include "ui/container.h"
#include "windows/forms/control_peer.h"
#include "windows/forms/layout.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include <windows.h>

namespace windows {

class ContainerView {
public:
    // Binds the dialog's windows to the container's controls, by the ids listed under `name`. Raises 51 when either
    // side has one that the other lacks: a template and its form always change together.
    ContainerView(HWND dialog, const ui::Container& container, std::string_view name);

    [[nodiscard]] const Layout& layout() const noexcept { return m_layout; }
    // The dialog has another size: places its controls anew.
    void resized();
    // Lays out for another resolution; the caller then sizes the dialog and arranges.
    void setDpi(UINT dpi);

    void mark(const ui::Control& control, ui::Aspect aspect) noexcept;
    void markAll() noexcept;
    // The focus goes there with the next flush.
    void moveFocus(const ui::Control& control) noexcept;
    void flush();

    // What the controls' windows tell their dialog: what a person did (the handlers it runs may raise), and what is to
    // be painted. The result of the dialog's procedure; FALSE for other messages.
    INT_PTR handle(UINT message, WPARAM wParam, LPARAM lParam);

    // How much higher the dialog must be, for texts that must be seen in full.
    [[nodiscard]] int missingHeight() const;

    // Null when the window is none of the controls', nor of those inside them.
    [[nodiscard]] ControlPeer* peerOf(HWND window) const noexcept;
    [[nodiscard]] ui::Control* controlOf(HWND window) const noexcept;

private:
    struct Entry {
        std::unique_ptr<ControlPeer> peer;
        Aspects dirty;
    };

    void bind(const ui::Container& container, std::string_view name);
    void refuseUnboundWindows(std::string_view name) const;
    void command(HWND window, WORD notification);
    void notify(NMHDR& header);
    void draw(const DRAWITEMSTRUCT& item);
    [[nodiscard]] INT_PTR prepareColors(HWND window, HDC device) const;
    [[nodiscard]] Entry* entryOf(const ui::Control& control) noexcept;
    void goOnLater() noexcept;
    static void CALLBACK goOn(HWND dialog, UINT message, UINT_PTR self, DWORD time) noexcept;
    void leave(HWND window);
    void enable(const ControlPeer& peer);
    void show(const ControlPeer& peer);

    HWND m_dialog;
    Layout m_layout;
    std::vector<Entry> m_entries;
    const ui::Control* m_focusTo = nullptr;
    bool m_dirty = false;
};

} // namespace windows
