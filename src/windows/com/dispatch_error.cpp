#include "windows/com/dispatch_error.h"

#include "base/runtime_error.h"
#include "windows/com/automation_text.h"

#include <cstdint>
#include <new>
#include <string>
#include <utility>

namespace windows::com {
namespace {

// Undoes what an error boundary does to run-time errors on their way out.
std::int32_t toNumber(HRESULT result) noexcept {
    return HRESULT_SEVERITY(result) == SEVERITY_ERROR && HRESULT_FACILITY(result) == FACILITY_CONTROL
               ? HRESULT_CODE(result)
               : result;
}

std::string systemText(HRESULT result) {
    wchar_t buffer[512];
    DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, static_cast<DWORD>(result),
                       0, buffer, static_cast<DWORD>(std::size(buffer)), nullptr);
    while (length > 0 && (buffer[length - 1] == L'\r' || buffer[length - 1] == L'\n')) {
        --length;
    }
    if (length == 0) {
        return std::string(base::standardText(result));
    }
    Bstr text;
    *text.out() = SysAllocStringLen(buffer, length);
    return text.text();
}

} // namespace

Exception::~Exception() {
    SysFreeString(m_info.bstrSource);
    SysFreeString(m_info.bstrDescription);
    SysFreeString(m_info.bstrHelpFile);
}

void Exception::raise(HRESULT result) {
    using base::RuntimeError;
    switch (result) {
    case DISP_E_EXCEPTION: raiseOwn();
    case DISP_E_MEMBERNOTFOUND:
    case DISP_E_UNKNOWNNAME: throw RuntimeError(base::error::kNoSuchMember);
    case DISP_E_TYPEMISMATCH:
    case DISP_E_BADVARTYPE: throw RuntimeError(base::error::kTypeMismatch);
    case DISP_E_OVERFLOW: throw RuntimeError(base::error::kOverflow);
    case DISP_E_BADINDEX: throw RuntimeError(base::error::kSubscriptOutOfRange);
    case DISP_E_DIVBYZERO: throw RuntimeError(base::error::kDivisionByZero);
    case DISP_E_PARAMNOTOPTIONAL: throw RuntimeError(base::error::kArgumentNotOptional);
    case DISP_E_BADPARAMCOUNT: throw RuntimeError(base::error::kWrongNumberOfArguments);
    case E_OUTOFMEMORY: throw std::bad_alloc();
    default: break;
    }
    const std::int32_t number = toNumber(result);
    throw number > 0 ? RuntimeError(number) : RuntimeError(number, systemText(result));
}

void Exception::raiseOwn() {
    if (m_info.pfnDeferredFillIn != nullptr) {
        m_info.pfnDeferredFillIn(&m_info);
    }
    // An object gives either a number of its own or an HRESULT.
    std::int32_t number = m_info.wCode != 0 ? m_info.wCode : toNumber(m_info.scode);
    if (number == 0) {
        number = base::error::kUnspecified;
    }
    std::string description = fromBstr(m_info.bstrDescription);
    if (description.empty()) {
        description = base::standardText(number);
    }
    throw base::RuntimeError(number, fromBstr(m_info.bstrSource), std::move(description));
}

} // namespace windows::com
