#include "baselines/platform_dom.h"

#include <windows.h>

#include <msxml2.h>
#include <oleauto.h>
#include <stdexcept>

namespace baselines {
namespace {

void require(HRESULT result, const char* what) {
    if (result != S_OK) {
        throw std::runtime_error(what);
    }
}

IXMLDOMDocument* document(void* pointer) {
    return static_cast<IXMLDOMDocument*>(pointer);
}

} // namespace

PlatformDom::PlatformDom() {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    CLSID id;
    require(CLSIDFromProgID(L"Msxml2.DOMDocument", &id), "no Msxml2.DOMDocument");
    require(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument, &m_document),
            "Msxml2.DOMDocument cannot be created");
    document(m_document)->put_async(VARIANT_FALSE);
}

PlatformDom::~PlatformDom() {
    document(m_document)->Release();
    CoUninitialize();
}

void PlatformDom::load(const std::wstring& text) {
    BSTR source = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    VARIANT_BOOL loaded = VARIANT_FALSE;
    document(m_document)->loadXML(source, &loaded);
    SysFreeString(source);
    require(loaded == VARIANT_TRUE ? S_OK : S_FALSE, "the platform's DOM does not load the document");
}

std::size_t PlatformDom::textLength() const {
    BSTR text = nullptr;
    require(document(m_document)->get_xml(&text), "no text");
    const std::size_t length = SysStringLen(text);
    SysFreeString(text);
    return length;
}

bool PlatformDom::finds(const std::wstring& expression) const {
    BSTR query = SysAllocStringLen(expression.data(), static_cast<UINT>(expression.size()));
    IXMLDOMNode* node = nullptr;
    document(m_document)->selectSingleNode(query, &node);
    SysFreeString(query);
    if (node != nullptr) {
        node->Release();
    }
    return node != nullptr;
}

} // namespace baselines
