// entry::clsQVI_Link as hosts see it.
#pragma once

#include "entry/clsQVI_Link.h"
#include "windows/com/automation_object.h"
#include "windows/com/quorvantisimage.h"

namespace windows::com {

class LinkObject final : public AutomationObject<::_clsQVI_Link> {
public:
    LinkObject();

    HRESULT STDMETHODCALLTYPE get_ProductCode(BSTR* value) noexcept override { return get(m_link.ProductCode, value); }
    HRESULT STDMETHODCALLTYPE put_ProductCode(BSTR value) noexcept override { return put(m_link.ProductCode, value); }
    HRESULT STDMETHODCALLTYPE get_ImagesFile(BSTR* value) noexcept override { return get(m_link.ImagesFile, value); }
    HRESULT STDMETHODCALLTYPE put_ImagesFile(BSTR value) noexcept override { return put(m_link.ImagesFile, value); }
    HRESULT STDMETHODCALLTYPE get_DeleteLink(VARIANT_BOOL* value) noexcept override {
        return get(m_link.DeleteLink, value);
    }
    HRESULT STDMETHODCALLTYPE put_DeleteLink(VARIANT_BOOL value) noexcept override {
        return put(m_link.DeleteLink, value);
    }
    HRESULT STDMETHODCALLTYPE get_NewImageFile(BSTR* value) noexcept override {
        return get(m_link.NewImageFile, value);
    }
    HRESULT STDMETHODCALLTYPE put_NewImageFile(BSTR value) noexcept override { return put(m_link.NewImageFile, value); }
    HRESULT STDMETHODCALLTYPE get_gQuorVantisPath(BSTR* value) noexcept override {
        return get(m_link.gQuorVantisPath, value);
    }
    HRESULT STDMETHODCALLTYPE put_gQuorVantisPath(BSTR value) noexcept override {
        return put(m_link.gQuorVantisPath, value);
    }
    HRESULT STDMETHODCALLTYPE get_gWebAddress(BSTR* value) noexcept override { return get(m_link.gWebAddress, value); }
    HRESULT STDMETHODCALLTYPE put_gWebAddress(BSTR value) noexcept override { return put(m_link.gWebAddress, value); }
    HRESULT STDMETHODCALLTYPE get_gProfileNumber(BSTR* value) noexcept override {
        return get(m_link.gProfileNumber, value);
    }
    HRESULT STDMETHODCALLTYPE put_gProfileNumber(BSTR value) noexcept override {
        return put(m_link.gProfileNumber, value);
    }
    HRESULT STDMETHODCALLTYPE get_gSettingString(BSTR* value) noexcept override {
        return get(m_link.gSettingString, value);
    }
    HRESULT STDMETHODCALLTYPE put_gSettingString(BSTR value) noexcept override {
        return put(m_link.gSettingString, value);
    }

    HRESULT STDMETHODCALLTYPE ShowForm() noexcept override;
    HRESULT STDMETHODCALLTYPE ShowFormSendReceive() noexcept override;

private:
    entry::clsQVI_Link m_link;
};

} // namespace windows::com
