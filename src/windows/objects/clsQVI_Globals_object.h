// host::clsQVI_Globals as hosts see it.
#pragma once

#include "host/clsQVI_Globals.h"
#include "windows/com/automation_object.h"
#include "windows/com/quorvantisimage.h"

namespace windows::com {

class GlobalsObject final : public AutomationObject<::_clsQVI_Globals> {
public:
    HRESULT STDMETHODCALLTYPE get_gProfileNumber(BSTR* value) noexcept override {
        return get(m_globals.gProfileNumber, value);
    }
    HRESULT STDMETHODCALLTYPE put_gProfileNumber(BSTR value) noexcept override {
        return put(m_globals.gProfileNumber, value);
    }
    HRESULT STDMETHODCALLTYPE get_gQuorVantisPath(BSTR* value) noexcept override {
        return get(m_globals.gQuorVantisPath, value);
    }
    HRESULT STDMETHODCALLTYPE put_gQuorVantisPath(BSTR value) noexcept override {
        return put(m_globals.gQuorVantisPath, value);
    }
    HRESULT STDMETHODCALLTYPE get_gWebService(BSTR* value) noexcept override {
        return get(m_globals.gWebService, value);
    }
    HRESULT STDMETHODCALLTYPE put_gWebService(BSTR value) noexcept override {
        return put(m_globals.gWebService, value);
    }
    HRESULT STDMETHODCALLTYPE get_gSettingString(BSTR* value) noexcept override {
        return get(m_globals.gSettingString, value);
    }
    HRESULT STDMETHODCALLTYPE put_gSettingString(BSTR value) noexcept override {
        return put(m_globals.gSettingString, value);
    }

    HRESULT STDMETHODCALLTYPE GetValue(VARIANT* i, VARIANT* value) noexcept override;

private:
    host::clsQVI_Globals m_globals;
};

} // namespace windows::com
