#include "windows/forms/tab_keys.h"

#include "windows/forms/mnemonic.h"

namespace windows {
namespace {

bool isDown(int key) noexcept {
    return GetKeyState(key) < 0;
}

// How many tabs further; 0: the key does not switch.
int stepOf(WPARAM key) noexcept {
    switch (key) {
    case VK_TAB: return isDown(VK_SHIFT) ? -1 : 1;
    case VK_PRIOR: return -1;
    case VK_NEXT: return 1;
    default: return 0;
    }
}

} // namespace

std::optional<std::size_t> tabAskedFor(const MSG& message, const ui::TabStrip& strip) {
    const std::size_t count = strip.tabs().size();
    if (message.message == WM_KEYDOWN && isDown(VK_CONTROL) && count != 0) {
        if (const int step = stepOf(message.wParam); step != 0) {
            return (strip.selected() + count + static_cast<std::size_t>(step)) % count;
        }
    } else if (message.message == WM_SYSCHAR) {
        const char16_t letter = upperCase(static_cast<char16_t>(message.wParam));
        for (std::size_t index = 0; index < count; ++index) {
            if (letter != 0 && mnemonicOf(strip.tabs()[index].title) == letter) {
                return index;
            }
        }
    }
    return {};
}

} // namespace windows
