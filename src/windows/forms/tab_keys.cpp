#include "windows/forms/tab_keys.h"

#include "base/text.h"

#include <string>

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

// In upper case; "" when the title marks none.
std::u16string mnemonicOf(const std::string& title) {
    const std::u16string text = base::toUtf16(base::upperCase(title));
    const std::size_t mark = text.find(u'&');
    return mark == std::u16string::npos ? std::u16string() : text.substr(mark + 1, 1);
}

} // namespace

std::optional<std::size_t> tabAskedFor(const MSG& message, const ui::TabStrip& strip) {
    const std::size_t count = strip.tabs().size();
    if (message.message == WM_KEYDOWN && isDown(VK_CONTROL) && count != 0) {
        if (const int step = stepOf(message.wParam); step != 0) {
            return (strip.selected() + count + static_cast<std::size_t>(step)) % count;
        }
    } else if (message.message == WM_SYSCHAR) {
        const std::u16string letter(1, static_cast<char16_t>(message.wParam));
        for (std::size_t index = 0; index < count; ++index) {
            if (mnemonicOf(strip.tabs()[index].title) == base::toUtf16(base::upperCase(base::toUtf8(letter)))) {
                return index;
            }
        }
    }
    return {};
}

} // namespace windows
