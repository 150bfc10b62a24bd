// Places a dialog's controls: by their anchors when its size changes, and scaled when its resolution changes.
#pragma once

#include "ui/control.h"
#include "windows/base/handles.h"

#include <cstdint>
#include <vector>

#include <windows.h>

namespace windows {

class Layout {
public:
    // Takes the dialog as the template made it for the design.
    explicit Layout(HWND dialog);

    // The margin that a template keeps to its right and bottom edge, or none: a control that fills its container.
    enum class Margin : std::uint8_t { Usual, None };

    // The window keeps the distances to its container's edges that it has now.
    void add(HWND window, const ui::Anchors& anchors, Margin margin = Margin::Usual);

    // The resolution the dialog is laid out for.
    [[nodiscard]] UINT dpi() const noexcept { return m_dpi; }
    // Lays out for another resolution, fonts included; the caller then sizes the dialog.
    void setDpi(UINT dpi);

    // Places every control for the dialog's present size.
    void arrange() const;

    // The size in pixels of the dialog's client area by design, at the present resolution. Nothing fits in less.
    [[nodiscard]] SIZE designSize() const noexcept;
    // The size of the whole window around that.
    [[nodiscard]] SIZE minimumWindowSize() const noexcept;

private:
    struct Item {
        HWND window;
        ui::Anchors anchors;
        RECT design;
    };

    [[nodiscard]] int scaled(int length) const noexcept;
    [[nodiscard]] RECT placeOf(const Item& item, SIZE growth) const noexcept;

    HWND m_dialog;
    std::vector<Item> m_items;
    SIZE m_designSize{};
    LOGFONTW m_designFont{};
    UINT m_designDpi;
    UINT m_dpi;
    UniqueFont m_font; // at another resolution than the design's
};

} // namespace windows
