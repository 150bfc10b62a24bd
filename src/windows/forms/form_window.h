// A form on the screen: the top-level window around its controls, its keys, its close box.
//
// Handlers run from inside window procedures, which no exception may cross: what they raise is kept, the form is
// hidden, and whoever runs the modal loop raises it again.
#pragma once

#include "ui/form.h"
#include "windows/base/handles.h"
#include "windows/forms/container_view.h"
#include "windows/forms/disabled_windows.h"
#include "windows/forms/form_icon.h"
#include "windows/forms/window_class.h"

#include <exception>
#include <memory>
#include <optional>

#include <windows.h>

namespace windows {

class FormWindow final : private ui::ContainerObserver {
public:
    // Makes the window, still invisible, from the form's template in `module`, and observes the form from here on.
    // Raises 51 when there is no such template or it does not match the form's controls.
    FormWindow(HINSTANCE module, ui::Form& form, HWND owner);
    ~FormWindow() override;

    [[nodiscard]] ui::Form& form() const noexcept { return m_form; }
    [[nodiscard]] HWND handle() const noexcept { return m_window.get(); }
    [[nodiscard]] bool visible() const noexcept { return m_visible; }
    [[nodiscard]] bool owns(HWND window) const noexcept;

    // Disables the thread's other windows, shows this one in front of them.
    void show();
    // A form that hid itself gave the other windows back; while its handler goes on and handles messages they must
    // not take input all the same.
    void stayModal();
    // Brings the windows up to date with the form.
    void flush();

    // A message for this window or one of its controls, before it is dispatched. True when it is dealt with.
    [[nodiscard]] bool preview(MSG& message);
    // Tells the form where the focus went.
    void trackFocus();
    // As a click on the close box, but the form does not stay.
    void close() noexcept;

    // Raises what a handler raised, if one did.
    void rethrow() const;

private:
    void controlChanged(ui::Control& control, ui::Aspect aspect) noexcept override;
    void captionChanged() noexcept override { m_captionDirty = true; }
    void hidden() noexcept override;
    void focusMoved(ui::Control& control) noexcept override;

    static INT_PTR CALLBACK dialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    [[nodiscard]] INT_PTR handle(UINT message, WPARAM wParam, LPARAM lParam);
    void limitSize(MINMAXINFO& limits) const;
    void resolutionChanged(UINT dpi, const RECT& place);
    void fitToDesign();
    void growToTexts();
    void setFirstFocus();

    // form_window_keys.cpp
    [[nodiscard]] bool previewTabKey(const MSG& message) noexcept;
    [[nodiscard]] bool previewKeyDown(const MSG& message) noexcept;
    [[nodiscard]] bool previewCharacter(MSG& message) noexcept;
    [[nodiscard]] bool pressInside(HWND focus) noexcept;
    [[nodiscard]] char16_t feed(char16_t key) noexcept;

    template <typename Body>
    void guarded(Body&& body) noexcept {
        try {
            body();
        } catch (...) {
            keepError();
        }
    }
    void keepError() noexcept;

    // Detaches the window from this object before it goes, so that its last messages find nobody.
    static void destroy(HWND window) noexcept;

    ui::Form& m_form;
    WindowClass m_class;
    FormIcon m_icon;
    UniqueResource<HWND, destroy> m_window;
    std::unique_ptr<ContainerView> m_view;
    DisabledWindows m_others;
    HWND m_previousActive = nullptr;
    HWND m_focus = nullptr;
    std::exception_ptr m_error;
    std::optional<char16_t> m_fedKey; // seen by the form on the key's way down; its character is not to be seen again
    bool m_captionDirty = true;
    bool m_visible = false;
};

} // namespace windows
