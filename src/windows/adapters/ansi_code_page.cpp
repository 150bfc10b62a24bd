#include "windows/adapters/ansi_code_page.h"

#include "base/runtime_error.h"
#include "base/text.h"
#include "windows/base/wide.h"

#include <limits>

#include <windows.h>

namespace windows {

std::string AnsiCodePage::decode(std::string_view ansi) {
    if (ansi.empty()) {
        return {};
    }
    if (ansi.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        throw base::RuntimeError(base::error::kOutOfMemory);
    }
    const int size = static_cast<int>(ansi.size());
    std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, ansi.data(), size, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_ACP, 0, ansi.data(), size, wide.data(), static_cast<int>(wide.size()));
    return fromWide(wide);
}

std::string AnsiCodePage::encode(std::string_view utf8) {
    if (base::isAscii(utf8)) { // the same in every code page that a user can have
        return std::string(utf8);
    }
    const std::wstring wide = toWide(utf8);
    if (wide.empty()) {
        return {};
    }
    // No best fit: a look-alike letter in a product code would be another code.
    const auto convert = [&](char* out, int room) {
        return WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide.data(), static_cast<int>(wide.size()), out, room,
                                   "?", nullptr);
    };
    std::string ansi(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
    convert(ansi.data(), static_cast<int>(ansi.size()));
    return ansi;
}

} // namespace windows
