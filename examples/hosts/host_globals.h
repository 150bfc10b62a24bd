// A host's globals object: what the control asks for by name, and what it tells the host.
#pragma once

#include "host_support.h"

#include <cwchar>

namespace host {

class Globals final : public StackObject {
public:
    // Both outlive it. The folder has its final backslash; the settings are this program's, in the user's registry.
    Globals(const wchar_t* dataFolder, const wchar_t* settingsName)
        : m_texts{{L"gQuorVantisPath", dataFolder},
                  {L"gSettingString", settingsName},
                  {L"gWebService", L"Supplier"},
                  {L"gProfileNumber", L"1001"},
                  {L"Branch", L"B0"},
                  {L"account", L"4711"}} {}

    // The control has started a set-up program: the host ends, so that its files can be replaced.
    [[nodiscard]] bool busyWithUpgrade() const { return m_busyWithUpgrade != VARIANT_FALSE; }

    // Names come in any case. One that is unknown here is "not there" for the control, which does without.
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        ids[0] = idOf(names[0]);
        return ids[0] == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                                     EXCEPINFO*, UINT*) override {
        if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
            return id == kBusyWithUpgrade ? putFlag(arguments, m_busyWithUpgrade) : DISP_E_MEMBERNOTFOUND;
        }
        if (result == nullptr) {
            return S_OK;
        }
        if (id == kBusyWithUpgrade) {
            V_VT(result) = VT_BOOL;
            V_BOOL(result) = m_busyWithUpgrade;
            return S_OK;
        }
        return giveText(id == kGetValue ? optionNamed(arguments) : m_texts[id - 1].value, result);
    }

private:
    struct Named {
        const wchar_t* name;
        const wchar_t* value;
    };
    // The texts have the ids from 1.
    static constexpr DISPID kGetValue = 100;
    static constexpr DISPID kBusyWithUpgrade = 101;

    [[nodiscard]] DISPID idOf(const wchar_t* name) const {
        DISPID id = 0;
        for (const Named& text : m_texts) {
            ++id;
            if (_wcsicmp(text.name, name) == 0) {
                return id;
            }
        }
        return _wcsicmp(name, L"GetValue") == 0           ? kGetValue
               : _wcsicmp(name, L"gBusyWithUpgrade") == 0 ? kBusyWithUpgrade
                                                          : DISPID_UNKNOWN;
    }

    // GetValue(name): the host's options. What it does not say is "NOT_FOUND".
    [[nodiscard]] static const wchar_t* optionNamed(DISPPARAMS* arguments) {
        static constexpr Named kOptions[] = {{L"FrameColor", L"LightBlue"}, {L"ButtonColor", L"LightYellow"}};
        const wchar_t* found = L"NOT_FOUND";
        VARIANT name;
        VariantInit(&name);
        if (arguments->cArgs == 1 && SUCCEEDED(VariantChangeType(&name, &arguments->rgvarg[0], 0, VT_BSTR))) {
            for (const Named& option : kOptions) {
                found = _wcsicmp(option.name, V_BSTR(&name)) == 0 ? option.value : found;
            }
        }
        VariantClear(&name);
        return found;
    }

    static HRESULT giveText(const wchar_t* text, VARIANT* result) {
        V_VT(result) = VT_BSTR;
        V_BSTR(result) = SysAllocString(text);
        return V_BSTR(result) == nullptr ? E_OUTOFMEMORY : S_OK;
    }

    static HRESULT putFlag(DISPPARAMS* arguments, VARIANT_BOOL& flag) {
        VARIANT value;
        VariantInit(&value);
        const HRESULT converted =
            arguments->cArgs == 1 ? VariantChangeType(&value, &arguments->rgvarg[0], 0, VT_BOOL) : DISP_E_BADPARAMCOUNT;
        if (SUCCEEDED(converted)) {
            flag = V_BOOL(&value);
        }
        return converted;
    }

    Named m_texts[6];
    VARIANT_BOOL m_busyWithUpgrade = VARIANT_FALSE;
};

} // namespace host
