// The members that documents and nodes have in common, under the conventional names of the Document Object Model.
#pragma once

#include "windows/com/automation_object.h"
#include "windows/com/quorvantisimage.h"
#include "windows/objects/own_node.h"

#include <wrl/client.h>

namespace windows::com {

// Nothing (null) for no node.
[[nodiscard]] Microsoft::WRL::ComPtr<::_XmlNode> makeXmlNode(const xml::XmlNode& node);
[[nodiscard]] Microsoft::WRL::ComPtr<::_XmlNodeList> makeXmlNodeList(xml::XmlNodeList nodes);

// The node inside an object; no node for Nothing. Raises 13 for an object that is not one of ours.
[[nodiscard]] xml::XmlNode nodeOf(IUnknown* object);

template <typename Dual, typename... Others>
class XmlNodeMembers : public AutomationObject<Dual, OwnNode, Others...> {
public:
    HRESULT STDMETHODCALLTYPE get_nodeName(BSTR* value) noexcept override {
        return this->give(value, [&] { return this->node().nodeName(); });
    }
    HRESULT STDMETHODCALLTYPE get_text(BSTR* value) noexcept override {
        return this->give(value, [&] { return this->node().text(); });
    }
    HRESULT STDMETHODCALLTYPE put_text(BSTR value) noexcept override {
        return this->run([&] { this->node().setText(fromBstr(value)); });
    }
    HRESULT STDMETHODCALLTYPE get_xml(BSTR* value) noexcept override {
        return this->give(value, [&] { return this->node().xml(); });
    }
    HRESULT STDMETHODCALLTYPE get_parentNode(::_XmlNode** value) noexcept override {
        return this->give(value, [&] { return makeXmlNode(this->node().parentNode()); });
    }
    HRESULT STDMETHODCALLTYPE get_childNodes(::_XmlNodeList** value) noexcept override {
        return this->give(value, [&] { return makeXmlNodeList(this->node().childNodes()); });
    }
    HRESULT STDMETHODCALLTYPE selectSingleNode(BSTR expression, ::_XmlNode** value) noexcept override {
        return this->give(value, [&] { return makeXmlNode(this->node().selectSingleNode(fromBstr(expression))); });
    }
    HRESULT STDMETHODCALLTYPE selectNodes(BSTR expression, ::_XmlNodeList** value) noexcept override {
        return this->give(value, [&] { return makeXmlNodeList(this->node().selectNodes(fromBstr(expression))); });
    }
    HRESULT STDMETHODCALLTYPE appendChild(::_XmlNode* child, ::_XmlNode** value) noexcept override {
        return this->give(value, [&] { return makeXmlNode(this->node().appendChild(nodeOf(child))); });
    }
    HRESULT STDMETHODCALLTYPE removeChild(::_XmlNode* child, ::_XmlNode** value) noexcept override {
        return this->give(value, [&] { return makeXmlNode(this->node().removeChild(nodeOf(child))); });
    }
};

} // namespace windows::com
