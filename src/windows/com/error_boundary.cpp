#include "windows/com/error_boundary.h"

#include "base/runtime_error.h"
#include "windows/com/automation_text.h"

#include <wrl/client.h>

#include <new>
#include <string_view>

namespace windows::com {
namespace {

using Microsoft::WRL::ComPtr;

// Best effort: a host still gets the number when there is no memory for the words.
void setErrorInfo(REFIID iid, std::string_view source, std::string_view description) noexcept {
    try {
        ComPtr<ICreateErrorInfo> creator;
        if (FAILED(CreateErrorInfo(&creator))) {
            return;
        }
        creator->SetGUID(iid);
        creator->SetSource(Bstr(source).get());
        creator->SetDescription(Bstr(description).get());
        ComPtr<IErrorInfo> info;
        if (SUCCEEDED(creator.As(&info))) {
            SetErrorInfo(0, info.Get());
        }
    } catch (const std::bad_alloc&) {
        SetErrorInfo(0, nullptr);
    }
}

HRESULT toResult(std::int32_t number) noexcept {
    if (number < 0) {
        return number;
    }
    const bool isRuntimeError = number >= 1 && number <= 0xFFFF;
    return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, isRuntimeError ? number : base::error::kInternalError);
}

HRESULT report(REFIID iid, std::int32_t number) noexcept {
    setErrorInfo(iid, base::kComponentName, base::standardText(number));
    return toResult(number);
}

} // namespace

HRESULT reportCurrentException(REFIID iid) noexcept {
    try {
        throw;
    } catch (const base::RuntimeError& error) {
        setErrorInfo(iid, error.source(), error.description());
        return toResult(error.number());
    } catch (const std::bad_alloc&) {
        return report(iid, base::error::kOutOfMemory);
    } catch (const std::exception& error) {
        OutputDebugStringA("QuorvantisImage: internal error: ");
        OutputDebugStringA(error.what());
        OutputDebugStringA("\n");
    } catch (...) {
        OutputDebugStringA("QuorvantisImage: internal error of an unknown kind\n");
    }
    return report(iid, base::error::kInternalError);
}

void failNullPointer() {
    throw base::RuntimeError(E_POINTER, "Invalid pointer");
}

} // namespace windows::com
