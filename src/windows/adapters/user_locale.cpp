#include "windows/adapters/user_locale.h"

#include "windows/base/wide.h"
#include "windows/com/automation_date.h"

#include <memory>
#include <type_traits>

#include <windows.h>

#include <oleauto.h>

namespace windows {
namespace {

struct FreeString {
    void operator()(OLECHAR* text) const noexcept { SysFreeString(text); }
};
using UniqueString = std::unique_ptr<std::remove_pointer_t<BSTR>, FreeString>;

// Months have consecutive numbers from January on.
constexpr LCTYPE kFirstShortMonth = LOCALE_SABBREVMONTHNAME1;

} // namespace

std::string UserLocale::shortMonthName(int month) {
    wchar_t name[80] = {};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, kFirstShortMonth + static_cast<LCTYPE>(month - 1), name, std::size(name));
    return fromWide(name);
}

std::string UserLocale::generalDate(const base::DateTime& time) {
    BSTR text = nullptr;
    if (FAILED(VarBstrFromDate(automationDate(time), LOCALE_USER_DEFAULT, 0, &text))) {
        return {};
    }
    const UniqueString owner(text);
    return fromWide({text, SysStringLen(text)});
}

bool UserLocale::equalIgnoringCase(std::string_view left, std::string_view right) {
    const std::wstring a = toWide(left);
    const std::wstring b = toWide(right);
    return CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, a.data(), static_cast<int>(a.size()), b.data(),
                          static_cast<int>(b.size())) == CSTR_EQUAL;
}

} // namespace windows
