#include "windows/adapters/ansi_code_page.h"

#include "base/runtime_error.h"
#include "windows/adapters/wide.h"

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

} // namespace windows
