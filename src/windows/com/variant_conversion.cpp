#include "windows/com/variant_conversion.h"

#include "base/runtime_error.h"
#include "windows/com/automation_text.h"
#include "windows/com/dispatch_object.h"

#include <wrl/client.h>

#include <cstdint>
#include <limits>
#include <new>
#include <utility>

namespace windows::com {
namespace {

using Microsoft::WRL::ComPtr;

[[noreturn]] void failConversion() {
    throw base::RuntimeError(base::error::kTypeMismatch);
}

void check(HRESULT result) {
    if (result == E_OUTOFMEMORY) {
        throw std::bad_alloc();
    }
    if (FAILED(result)) {
        failConversion();
    }
}

template <typename Integer>
base::Variant fromInteger(Integer value) {
    if (std::in_range<std::int32_t>(value)) {
        return static_cast<std::int32_t>(value);
    }
    return static_cast<double>(value);
}

// The character of a VT_I1 is a number, whatever the compiler makes of char.
base::Variant fromSignedByte(CHAR value) {
    return fromInteger(static_cast<std::int32_t>(value));
}

base::Variant fromObject(IUnknown* object) {
    ComPtr<IDispatch> dispatch;
    if (object != nullptr) {
        check(object->QueryInterface(IID_PPV_ARGS(&dispatch)));
    }
    return toObjectRef(std::move(dispatch));
}

base::Variant fromDate(DATE value) {
    Bstr text;
    check(VarBstrFromDate(value, LOCALE_USER_DEFAULT, 0, text.out()));
    return text.text();
}

base::Variant fromCurrency(CY value) {
    double number = 0;
    check(VarR8FromCy(value, &number));
    return number;
}

base::Variant fromDecimal(const DECIMAL& value) {
    double number = 0;
    check(VarR8FromDec(const_cast<DECIMAL*>(&value), &number)); // declared without const by older headers
    return number;
}

base::Variant fromError(SCODE code) {
    if (code != DISP_E_PARAMNOTFOUND) {
        failConversion();
    }
    return base::Empty{};
}

} // namespace

VARIANT ScopedVariant::release() noexcept {
    const VARIANT value = m_value;
    VariantInit(&m_value);
    return value;
}

base::Variant fromVariant(const VARIANT& value) {
    if ((V_VT(&value) & VT_BYREF) != 0) {
        ScopedVariant copy;
        check(VariantCopyInd(&copy.get(), const_cast<VARIANT*>(&value)));
        return fromVariant(copy.get());
    }
    switch (V_VT(&value)) {
    case VT_EMPTY: return base::Empty{};
    case VT_NULL: return base::Null{};
    case VT_BOOL: return V_BOOL(&value) != VARIANT_FALSE;
    case VT_I1: return fromSignedByte(V_I1(&value));
    case VT_UI1: return fromInteger(V_UI1(&value));
    case VT_I2: return fromInteger(V_I2(&value));
    case VT_UI2: return fromInteger(V_UI2(&value));
    case VT_I4: return fromInteger(V_I4(&value));
    case VT_UI4: return fromInteger(V_UI4(&value));
    case VT_INT: return fromInteger(V_INT(&value));
    case VT_UINT: return fromInteger(V_UINT(&value));
    case VT_I8: return fromInteger(V_I8(&value));
    case VT_UI8: return fromInteger(V_UI8(&value));
    case VT_R4: return static_cast<double>(V_R4(&value));
    case VT_R8: return V_R8(&value);
    case VT_CY: return fromCurrency(V_CY(&value));
    case VT_DATE: return fromDate(V_DATE(&value));
    case VT_DECIMAL: return fromDecimal(V_DECIMAL(&value));
    case VT_BSTR: return fromBstr(V_BSTR(&value));
    case VT_DISPATCH: return fromObject(V_DISPATCH(&value));
    case VT_UNKNOWN: return fromObject(V_UNKNOWN(&value));
    case VT_ERROR: return fromError(V_ERROR(&value));
    default: failConversion();
    }
}

void toVariant(const base::Variant& value, ScopedVariant& result) {
    struct Visitor {
        VARIANT& out;
        void operator()(base::Empty) const {}
        void operator()(base::Null) const { V_VT(&out) = VT_NULL; }
        void operator()(bool flag) const {
            V_BOOL(&out) = toVariantBool(flag);
            V_VT(&out) = VT_BOOL;
        }
        void operator()(std::int32_t number) const {
            V_I4(&out) = number;
            V_VT(&out) = VT_I4;
        }
        void operator()(double number) const {
            V_R8(&out) = number;
            V_VT(&out) = VT_R8;
        }
        void operator()(const std::string& text) const {
            V_BSTR(&out) = newBstr(text);
            V_VT(&out) = VT_BSTR;
        }
        void operator()(const base::ObjectRef& object) const {
            V_DISPATCH(&out) = toDispatch(object).Detach();
            V_VT(&out) = VT_DISPATCH;
        }
    };
    std::visit(Visitor{result.get()}, value);
}

} // namespace windows::com
