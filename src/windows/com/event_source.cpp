#include "windows/com/event_source.h"

#include "windows/com/automation_text.h"
#include "windows/com/dispatch_error.h"
#include "windows/com/foreign_document.h"
#include "windows/com/variant_conversion.h"
#include "windows/com/xml_document_object.h"

#include <array>

namespace windows::com {
namespace {

using Microsoft::WRL::ComPtr;

// An argument whose ownership stays here.
class Argument {
public:
    explicit Argument(const std::string& text) { toVariant(text, m_value); }
    explicit Argument(ComPtr<IDispatch> object) {
        V_DISPATCH(&m_value.get()) = object.Detach();
        V_VT(&m_value.get()) = VT_DISPATCH;
    }

    [[nodiscard]] VARIANT byValue() const noexcept { return m_value.get(); }
    // A sink that changes the argument changes what text() and object() give.
    [[nodiscard]] VARIANT byReference() noexcept {
        VARIANT reference;
        VariantInit(&reference);
        V_VT(&reference) = static_cast<VARTYPE>(V_VT(&m_value.get()) | VT_BYREF);
        V_BYREF(&reference) = &V_BYREF(&m_value.get());
        return reference;
    }

    [[nodiscard]] std::string text() const { return fromBstr(V_BSTR(&m_value.get())); }
    [[nodiscard]] IDispatch* object() const noexcept { return V_DISPATCH(&m_value.get()); }

private:
    ScopedVariant m_value;
};

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

void EventSource::DownloadComplete(std::string& name, const xml::XmlNode& command,
                                   const std::shared_ptr<xml::XmlDocument>& results) {
    Argument nameArgument(name);
    const Argument commandArgument(makeXmlNode(command));
    const Argument resultsArgument(makeXmlDocument(results, m_fileSystem));
    std::array arguments{resultsArgument.byValue(), commandArgument.byValue(), nameArgument.byReference()};
    fire(1, arguments);
    name = nameArgument.text();
}

void EventSource::DownloadStart(std::string& name, std::shared_ptr<xml::XmlDocument>& request) {
    Argument nameArgument(name);
    Argument requestArgument(makeXmlDocument(request, m_fileSystem));
    std::array arguments{requestArgument.byReference(), nameArgument.byReference()};
    fire(2, arguments);
    name = nameArgument.text();
    if (requestArgument.object() != nullptr) {
        request = fromHost(requestArgument.object()).document;
    }
}

void EventSource::Cancelled() {
    fire(3, {});
}

void EventSource::SendReceiveCompleted() {
    fire(4, {});
}

void EventSource::CloseQuorVantis() {
    fire(5, {});
}

void EventSource::OpenfrmOptions(const std::string& url) {
    fireText(6, url);
}

void EventSource::RegisterServer(const std::string& file) {
    fireText(7, file);
}

void EventSource::UnregisterServer(const std::string& file) {
    fireText(8, file);
}

void EventSource::fire(DISPID event, std::span<VARIANT> arguments) {
    const ComPtr<IUnknown> held(&m_owner); // a sink may let go of the control
    for (const ConnectionPoint::Connection& connection : m_connections.connections()) {
        if (m_connections.has(connection.cookie)) {
            notify(*connection.sink.Get(), event, arguments);
        }
    }
}

void EventSource::fireText(DISPID event, const std::string& argument) {
    const Argument text(argument);
    std::array arguments{text.byValue()};
    fire(event, arguments);
}

} // namespace windows::com
