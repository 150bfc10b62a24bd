#include "windows/base/wide.h"

#include "base/text.h"

namespace windows {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

std::wstring toWide(std::string_view utf8) {
    const std::u16string units = base::toUtf16(utf8);
    return {units.begin(), units.end()};
}

std::string fromWide(std::wstring_view utf16) {
    return base::toUtf8(std::u16string(utf16.begin(), utf16.end()));
}

} // namespace windows
