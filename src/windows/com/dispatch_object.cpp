#include "windows/com/dispatch_object.h"

#include "base/runtime_error.h"
#include "windows/com/automation_text.h"
#include "windows/com/dispatch_error.h"
#include "windows/com/variant_conversion.h"

#include <dispex.h>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace windows::com {
namespace {

using Microsoft::WRL::ComPtr;

// One late-bound call's outcome.
struct Outcome {
    HRESULT result = S_OK;
    Exception exception;
    ScopedVariant value;
};

void invoke(IDispatch& object, DISPID id, WORD flags, DISPPARAMS parameters, Outcome& outcome) {
    // Neither a put's result nor the position of a bad argument is of use.
    VARIANT* value = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0 ? nullptr : &outcome.value.get();
    UINT argumentError = 0;
    outcome.result = object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, value,
                                   outcome.exception.out(), &argumentError);
}

base::Variant valueOf(Outcome& outcome) {
    if (FAILED(outcome.result)) {
        outcome.exception.raise(outcome.result);
    }
    return fromVariant(outcome.value.get());
}

bool isObject(const base::Variant& value) {
    return std::holds_alternative<base::ObjectRef>(value);
}

} // namespace

DISPID DispatchObject::find(std::string_view member) const {
    const Bstr name(member);
    LPOLESTR names = name.get();
    DISPID id = DISPID_UNKNOWN;
    if (SUCCEEDED(m_dispatch->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id))) {
        return id;
    }
    // Script objects tell upper from lower case unless they are asked in this way.
    ComPtr<IDispatchEx> script;
    if (SUCCEEDED(m_dispatch.As(&script)) && SUCCEEDED(script->GetDispID(names, fdexNameCaseInsensitive, &id))) {
        return id;
    }
    throw base::RuntimeError(base::error::kNoSuchMember);
}

base::Variant DispatchObject::get(std::string_view property) {
    // Without DISPATCH_METHOD: a script object would take the property for a function to call.
    Outcome outcome;
    invoke(*m_dispatch.Get(), find(property), DISPATCH_PROPERTYGET, DISPPARAMS{}, outcome);
    return valueOf(outcome);
}

void DispatchObject::put(std::string_view property, const base::Variant& value) {
    const DISPID id = find(property);
    ScopedVariant argument;
    toVariant(value, argument);
    DISPID putId = DISPID_PROPERTYPUT;
    const DISPPARAMS parameters{&argument.get(), &putId, 1, 1};
    if (isObject(value)) {
        Outcome byReference;
        invoke(*m_dispatch.Get(), id, DISPATCH_PROPERTYPUTREF, parameters, byReference);
        if (SUCCEEDED(byReference.result)) {
            return;
        }
        if (byReference.result != DISP_E_MEMBERNOTFOUND) {
            byReference.exception.raise(byReference.result);
        }
    }
    Outcome outcome;
    invoke(*m_dispatch.Get(), id, DISPATCH_PROPERTYPUT, parameters, outcome);
    if (FAILED(outcome.result)) {
        outcome.exception.raise(outcome.result);
    }
}

base::Variant DispatchObject::call(std::string_view method, const std::vector<base::Variant>& arguments) {
    const DISPID id = find(method);
    std::vector<ScopedVariant> values(arguments.size()); // the last argument first, as automation wants them
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        toVariant(arguments[i], values[arguments.size() - 1 - i]);
    }
    static_assert(sizeof(ScopedVariant) == sizeof(VARIANT));
    const DISPPARAMS parameters{reinterpret_cast<VARIANT*>(values.data()), nullptr, static_cast<UINT>(values.size()),
                                0};
    Outcome outcome;
    invoke(*m_dispatch.Get(), id, DISPATCH_METHOD, parameters, outcome);
    if (outcome.result == DISP_E_MEMBERNOTFOUND && !arguments.empty()) {
        // Some hosts declare such a member as a property with parameters.
        Outcome asProperty;
        invoke(*m_dispatch.Get(), id, DISPATCH_PROPERTYGET, parameters, asProperty);
        return valueOf(asProperty);
    }
    return valueOf(outcome);
}

base::ObjectRef toObjectRef(ComPtr<IDispatch> dispatch) {
    return dispatch ? std::make_shared<DispatchObject>(std::move(dispatch)) : nullptr;
}

ComPtr<IDispatch> toDispatch(const base::ObjectRef& object) {
    const auto* const host = dynamic_cast<const DispatchObject*>(object.get());
    if (object != nullptr && host == nullptr) {
        throw base::RuntimeError(base::error::kTypeMismatch);
    }
    return host == nullptr ? nullptr : host->dispatch();
}

} // namespace windows::com
