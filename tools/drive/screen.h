// What a person would see: the visible top-level windows, their texts and controls.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace drive {

// Sends a message that must be answered within five seconds; throws Failure when the window's thread does not.
LRESULT ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

// Caption or content, by message: controls of another process give their text no other way.
[[nodiscard]] std::string textOf(HWND window);
[[nodiscard]] std::string classOf(HWND window);
// All windows inside, at any depth, in their order.
[[nodiscard]] std::vector<HWND> descendantsOf(HWND window);

enum class DialogKind : std::uint8_t { None, MessageBox, InputBox, FileDialog };
[[nodiscard]] DialogKind dialogKindOf(HWND window);

class Screen {
public:
    // Looks at this process's windows alone; 0: at everybody's.
    void onlyProcess(DWORD process) { m_process = process; }

    // Visible top-level windows, topmost first.
    [[nodiscard]] std::vector<HWND> windows() const;
    // The shown form of this name; null when there is none.
    [[nodiscard]] HWND form(std::string_view name) const;
    // The topmost dialog of this kind that can be used; null when there is none.
    [[nodiscard]] HWND dialog(DialogKind kind) const;
    // The window a person's keys would go to: the topmost one that is enabled; null when there is none.
    [[nodiscard]] HWND active() const;

    // All of it in words, for the log of a failure.
    [[nodiscard]] std::string describe() const;

private:
    DWORD m_process = 0;
};

} // namespace drive
