#include "windows/objects/foreign_document.h"

#include "base/runtime_error.h"
#include "windows/com/dispatch_object.h"
#include "windows/objects/own_node.h"

#include <cstdint>
#include <string>

namespace windows::com {
namespace {

using Microsoft::WRL::ComPtr;

base::LateBoundObject& objectIn(const base::Variant& value) {
    const base::ObjectRef object = base::toObject(value);
    if (!object) {
        throw base::RuntimeError(base::error::kObjectNotSet);
    }
    return *object; // kept by `value`
}

base::Variant itemOf(const base::Variant& list, std::size_t index) {
    return objectIn(list).call("item", {static_cast<std::int32_t>(index)});
}

void setAttribute(const base::Variant& element, std::string_view name, std::string_view value) {
    objectIn(element).call("setAttribute", {std::string(name), std::string(value)});
}

bool isBlank(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

} // namespace

std::shared_ptr<xml::XmlDocument> ForeignDocument::read() const {
    const std::string text = base::toText(m_object->get("xml"));
    auto copy = std::make_shared<xml::XmlDocument>();
    if (!isBlank(text) && !copy->loadXml(text)) {
        throw base::RuntimeError(base::error::kUnspecified, copy->parseError());
    }
    return copy;
}

void ForeignDocument::write(const xml::XmlDocument& content) const {
    const base::Variant taken = m_object->call("loadXML", {content.xml()});
    // Such objects call an empty text a failure, although it leaves them as empty as they should be.
    if (taken == base::Variant(false) && content.rootView()) {
        throw base::RuntimeError(base::error::kUnspecified, "The host's document does not take the XML");
    }
}

void ForeignDocument::setFirstElementAttribute(std::string_view name, std::string_view value) const {
    setAttribute(itemOf(m_object->call("selectNodes", {std::string("/*/*")}), 0), name, value);
}

void ForeignDocument::setRootAttribute(std::string_view name, std::string_view value) {
    setAttribute(m_object->get("documentElement"), name, value);
}

void ForeignDocument::removeRootAttribute(std::string_view name) {
    objectIn(m_object->get("documentElement")).call("removeAttribute", {std::string(name)});
}

void ForeignDocument::setCommandAttribute(std::size_t command, std::string_view name, std::string_view value) {
    setAttribute(itemOf(m_object->call("selectNodes", {std::string("//command")}), command), name, value);
}

HostDocument fromHost(IDispatch* object) {
    if (object == nullptr) {
        return {};
    }
    const ComPtr<IDispatch> dispatch(object);
    ComPtr<OwnDocument> own;
    if (SUCCEEDED(dispatch.As(&own))) {
        return {own->document(), nullptr};
    }
    auto original = std::make_unique<ForeignDocument>(toObjectRef(dispatch));
    auto copy = original->read();
    return {std::move(copy), std::move(original)};
}

} // namespace windows::com
