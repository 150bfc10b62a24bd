#include "windows/forms/mnemonic.h"

#include "base/text.h"
#include "ui/controls.h"

#include <algorithm>

namespace windows {
namespace {

char16_t letterOf(const ui::Control& control) {
    const bool isButton =
        dynamic_cast<const ui::Button*>(&control) != nullptr || dynamic_cast<const ui::CheckBox*>(&control) != nullptr;
    return isButton && control.visible() && control.enabled() ? mnemonicOf(control.text()) : u'\0';
}

} // namespace

char16_t mnemonicOf(std::string_view text) {
    const std::u16string upper = base::toUtf16(base::upperCase(text));
    const std::size_t mark = upper.find(u'&');
    return mark == std::u16string::npos || mark + 1 == upper.size() ? u'\0' : upper[mark + 1];
}

std::u16string mnemonicsOf(const ui::Container& container) {
    std::u16string letters;
    for (const ui::Control* const control : container.controls()) {
        if (const char16_t letter = letterOf(*control)) {
            letters += letter;
        }
    }
    return letters;
}

const ui::Control* pressedBy(char16_t letter, const ui::Container& container) {
    const char16_t wanted = upperCase(letter);
    const auto& controls = container.controls();
    const auto found = std::ranges::find_if(
        controls, [&](const ui::Control* control) { return wanted != 0 && letterOf(*control) == wanted; });
    return found == controls.end() ? nullptr : *found;
}

char16_t upperCase(char16_t letter) {
    return base::toUtf16(base::upperCase(base::toUtf8(std::u16string(1, letter)))).front();
}

} // namespace windows
