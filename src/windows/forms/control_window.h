// A user control in a host's window: the child dialog around its controls, its keys, its focus.
//
// The host runs the message loop: the windows are brought up to date by a message to themselves, and keys come through
// preview(), from the host or, while one of the control's own routines runs, from the desktop's loop.
#pragma once

#include "ui/user_control.h"
#include "windows/base/handles.h"
#include "windows/forms/container_view.h"
#include "windows/forms/focus_watch.h"

#include <memory>
#include <optional>
#include <string>

#include <windows.h>

namespace windows {

class WindowsDesktop;

class ControlWindow final : public std::enable_shared_from_this<ControlWindow>, private ui::ContainerObserver {
public:
    // The host's, where the control's own are not set; none: the platform's.
    struct Colors {
        std::optional<COLORREF> back;
        std::optional<COLORREF> text;
    };

    // Whoever put the window there. May close it, and let go of it, in each of these.
    class Owner {
    public:
        // The keyboard came into the control from outside, or left it.
        virtual void focusMoved(bool inside) noexcept = 0;
        // The letters of mnemonics() are others now.
        virtual void mnemonicsChanged() noexcept = 0;
        // The control shows something modal, or has: what else the host has open is not to be used meanwhile.
        virtual void hostWaits(bool begins) noexcept = 0;
        // A Tab would leave the control. True when the owner took it; it goes on to the host otherwise.
        [[nodiscard]] virtual bool takesTab(MSG& message) noexcept = 0;

    protected:
        ~Owner() = default;
    };

    // One of the control's routines runs as long as this lives: the dialogs that it shows are the host window's.
    class Use {
    public:
        explicit Use(ControlWindow& window);
        ~Use();
        Use(const Use&) = delete;
        Use& operator=(const Use&) = delete;

    private:
        std::shared_ptr<ControlWindow> m_window;
    };

    // A child of `parent` at `place`, made from the control's template in `module`. A routine of the control that runs
    // keeps the window object and `control` alive. `desktop` outlives it; `owner` is asked until close(). Raises 51
    // as FormWindow does.
    [[nodiscard]] static std::shared_ptr<ControlWindow> create(WindowsDesktop& desktop, HINSTANCE module,
                                                               std::shared_ptr<ui::UserControl> control, HWND parent,
                                                               const RECT& place, Owner& owner);
    ~ControlWindow() override;

    // The window goes; the control does not.
    void close() noexcept;
    // What the control is doing ends soon.
    void stop() noexcept { m_control->stop(); }

    // Null once it has gone.
    [[nodiscard]] HWND handle() const noexcept { return m_window.get(); }
    [[nodiscard]] bool owns(HWND window) const noexcept;
    // The host's window around it; null once it has gone.
    [[nodiscard]] HWND hostWindow() const noexcept;
    // See Owner.
    void hostWaits(bool begins) noexcept;
    // Shows as much of the control at `place` as is inside of `clip`; both in the parent's coordinates.
    void setPlace(const RECT& place, const RECT& clip);
    void setColors(const Colors& colors);
    // The keyboard goes to the control that had it last, or, for a Tab that comes in, to the first or the last one.
    void takeFocus(const MSG* key);
    // A message for one of the control's windows, before it is dispatched. True when it is dealt with.
    [[nodiscard]] bool preview(MSG& message);
    // What Alt and a letter press from anywhere in the host's window: the letters, in upper case, and their effect.
    // False for any other letter.
    [[nodiscard]] const std::u16string& mnemonics() const noexcept { return m_mnemonics; }
    [[nodiscard]] bool pressMnemonic(char16_t letter);

private:
    ControlWindow(WindowsDesktop& desktop, std::shared_ptr<ui::UserControl> control, Owner& owner) noexcept;
    void open(HINSTANCE module, HWND parent, const RECT& place);

    void controlChanged(ui::Control& control, ui::Aspect aspect) noexcept override;
    void captionChanged() noexcept override {}
    void hidden() noexcept override {}
    void focusMoved(ui::Control& control) noexcept override;
    void flush();
    void flushLater() noexcept;

    static INT_PTR CALLBACK dialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    [[nodiscard]] INT_PTR handle(UINT message, WPARAM wParam, LPARAM lParam);
    [[nodiscard]] INT_PTR prepareColors(HDC device) const noexcept;
    void focusCrossed(HWND window, HWND other, bool inside) noexcept;

    [[nodiscard]] bool previewKey(ui::Control& focused, char16_t key, bool repeated) noexcept;
    [[nodiscard]] bool previewTab(MSG& message) noexcept;

    template <typename Body>
    void guarded(Body&& body) noexcept;
    void showError();

    static void destroy(HWND window) noexcept;

    WindowsDesktop& m_desktop;
    std::shared_ptr<ui::UserControl> m_control;
    Owner* m_owner; // null once closed
    UniqueResource<HWND, destroy> m_window;
    std::unique_ptr<ContainerView> m_view;
    std::unique_ptr<FocusWatch> m_focusWatch;
    Colors m_colors;
    UniqueBrush m_background; // of the host's colour
    std::u16string m_mnemonics;
    HWND m_lastFocus = nullptr;
    bool m_flushPosted = false;
};

} // namespace windows
