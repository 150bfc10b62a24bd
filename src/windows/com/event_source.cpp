#include "windows/com/event_source.h"

#include "windows/com/automation_date.h"
#include "windows/com/automation_text.h"
#include "windows/com/dispatch_error.h"

namespace windows::com {
namespace {

using Microsoft::WRL::ComPtr;

// The sink has no handler for the event, or its program has ended.
bool isUnhandled(HRESULT result) noexcept {
    return result == DISP_E_MEMBERNOTFOUND || result == E_NOTIMPL || result == RPC_E_DISCONNECTED;
}

void notify(IDispatch& sink, DISPID event, std::span<VARIANT> arguments) {
    DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    ScopedVariant ignored; // some sinks write a result without looking whether one is wanted
    Exception exception;
    UINT argumentError = 0;
    const HRESULT result = sink.Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                       &ignored.get(), exception.out(), &argumentError);
    if (FAILED(result) && !isUnhandled(result)) {
        exception.raise(result);
    }
}

} // namespace

EventArgument::EventArgument(const base::DateTime& date) {
    V_DATE(&m_value.get()) = automationDate(date);
    V_VT(&m_value.get()) = VT_DATE;
}

EventArgument::EventArgument(ComPtr<IDispatch> object) {
    V_DISPATCH(&m_value.get()) = object.Detach();
    V_VT(&m_value.get()) = VT_DISPATCH;
}

VARIANT EventArgument::byReference() noexcept {
    VARIANT reference;
    VariantInit(&reference);
    V_VT(&reference) = static_cast<VARTYPE>(V_VT(&m_value.get()) | VT_BYREF);
    V_BYREF(&reference) = &V_BYREF(&m_value.get());
    return reference;
}

std::string EventArgument::text() const {
    return fromBstr(V_BSTR(&m_value.get()));
}

void EventSource::fire(DISPID event, std::span<VARIANT> arguments) {
    if (m_connections.frozen()) {
        return;
    }
    const ComPtr<IUnknown> held(&m_owner); // a sink may let go of it
    for (const ConnectionPoint::Connection& connection : m_connections.connections()) {
        if (m_connections.has(connection.cookie)) {
            notify(*connection.sink.Get(), event, arguments);
        }
    }
}

void EventSource::fire(DISPID event, const EventArgument& only) {
    VARIANT argument = only.byValue();
    fire(event, {&argument, 1});
}

} // namespace windows::com
