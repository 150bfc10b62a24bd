#include "windows/com/automation_text.h"

#include "base/text.h"

#include <limits>
#include <new>

namespace windows::com {

std::string fromBstr(BSTR text) {
    static_assert(sizeof(OLECHAR) == sizeof(char16_t));
    return base::toUtf8({reinterpret_cast<const char16_t*>(text), SysStringLen(text)});
}

BSTR newBstr(std::string_view utf8) {
    const std::u16string text = base::toUtf16(utf8);
    if (text.size() > std::numeric_limits<UINT>::max() / sizeof(OLECHAR)) {
        throw std::bad_alloc();
    }
    BSTR result = SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()), static_cast<UINT>(text.size()));
    if (result == nullptr) {
        throw std::bad_alloc();
    }
    return result;
}

} // namespace windows::com
