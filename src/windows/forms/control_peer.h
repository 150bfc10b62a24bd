// One control's window: brings it up to date with the control object, and tells the object what the person did.
#pragma once

#include "ui/control.h"
#include "windows/base/handles.h"

#include <cstdint>

#include <windows.h>

namespace windows {

class ContainerView;

// A set of aspects that wait to be shown.
class Aspects {
public:
    [[nodiscard]] static Aspects all() noexcept { return Aspects(~0U); }
    Aspects() = default;

    void add(ui::Aspect aspect) noexcept { m_bits |= bit(aspect); }
    [[nodiscard]] bool has(ui::Aspect aspect) const noexcept { return (m_bits & bit(aspect)) != 0; }
    [[nodiscard]] bool any() const noexcept { return m_bits != 0; }

private:
    explicit Aspects(std::uint32_t bits) noexcept : m_bits(bits) {}
    [[nodiscard]] static std::uint32_t bit(ui::Aspect aspect) noexcept { return 1U << static_cast<unsigned>(aspect); }

    std::uint32_t m_bits = 0;
};

// A kind of control is one class derived from this, and one line in peer_factory.cpp. The window belongs to its dialog.
class ControlPeer {
public:
    ControlPeer(HWND window, ui::Control& control) noexcept : m_window(window), m_control(control) {}
    ControlPeer(const ControlPeer&) = delete;
    ControlPeer& operator=(const ControlPeer&) = delete;
    virtual ~ControlPeer() = default;

    [[nodiscard]] HWND window() const noexcept { return m_window; }
    [[nodiscard]] ui::Control& control() const noexcept { return m_control; }

    // Shows the given aspects, except for being enabled and visible: the view orders those across controls.
    virtual void update(Aspects aspects);
    // A part of its text is left for another update, soon.
    [[nodiscard]] virtual bool unfinished() const { return false; }
    // A notification code that the window sent with WM_COMMAND. May run the form's handlers, which may raise.
    virtual void command(WORD notification) { static_cast<void>(notification); }
    // What the window told its dialog with WM_NOTIFY. May run handlers, as command().
    virtual void notify(NMHDR& header) { static_cast<void>(header); }
    // The window has another font, because it is laid out for this resolution now.
    virtual void fontChanged(UINT dpi) { static_cast<void>(dpi); }
    // The window has another size.
    virtual void resized() {}
    // How many pixels the window is too low for a text that must be seen in full.
    [[nodiscard]] virtual int missingHeight() const { return 0; }
    // Prepares a window that the platform draws, in its own or the control's colours. Null: no colour is wanted.
    [[nodiscard]] HBRUSH prepareColors(HDC device);
    // Owner-drawn windows only.
    virtual void draw(const DRAWITEMSTRUCT& item) { static_cast<void>(item); }
    // The controls inside, of a control that is a container itself; else null.
    [[nodiscard]] virtual ContainerView* content() noexcept { return nullptr; }

protected:
    // Sends the control's text to the window unless it is there already.
    virtual void updateText();

private:
    HWND m_window;
    ui::Control& m_control;
    UniqueBrush m_background; // of a colour that is none of the system's
};

} // namespace windows
