// A container of controls, written from what the platform documents: one window with one control between two fields.
#pragma once

#include "windows/com/com_object.h"

#include <windows.h>

#include <ocidl.h>
#include <wrl/client.h>

#include <functional>
#include <string>
#include <vector>

namespace container_test {

using Calls = std::vector<std::string>;

class Site;

class Container {
public:
    // A window of 800 by 600 pixels, with the control at (50, 40) and 700 by 500 pixels wide and high.
    explicit Container(Microsoft::WRL::ComPtr<IUnknown> control);
    ~Container();
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;

    static constexpr RECT kPlace{50, 40, 750, 540};

    // What the control was told to do with it, and what it then told the container.
    Calls calls;
    // How the container answers; by name of the method, S_OK for those that are not there.
    std::function<HRESULT(const std::string& method)> answer;
    // What it does when it hears of something, after it has written it down.
    std::function<void(const std::string& call)> onCall;
    // The ambient colours.
    std::uint32_t backColor = 0x80000005; // the system's window
    std::uint32_t foreColor = 0x000000FF;

    [[nodiscard]] HWND window() const noexcept { return m_window; }
    [[nodiscard]] HWND fieldBefore() const noexcept { return m_before; }
    [[nodiscard]] HWND fieldBehind() const noexcept { return m_behind; }
    // The control's own; null while it is not active.
    [[nodiscard]] HWND controlWindow() const;
    [[nodiscard]] IOleInPlaceActiveObject* activeObject() const noexcept { return m_active.Get(); }

    HRESULT doVerb(LONG verb, MSG* message = nullptr);
    // Lets go of the control, after closing it or without a word.
    void close();
    void letGo();
    // Handles messages as a container's loop does, until `done`, at most ten seconds.
    void runUntil(const std::function<bool()>& done);

    // For the site and the frame.
    HRESULT note(const std::string& method, const std::string& details = {});
    void setActive(IOleInPlaceActiveObject* active) { m_active = active; }

    Microsoft::WRL::ComPtr<IOleObject> object;
    Microsoft::WRL::ComPtr<IOleClientSite> site;

private:
    HWND m_window;
    HWND m_before;
    HWND m_behind;
    Microsoft::WRL::ComPtr<IOleInPlaceActiveObject> m_active;
};

} // namespace container_test
