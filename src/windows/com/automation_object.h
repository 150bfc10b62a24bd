// The base of every automation class: late-bound calls by way of the type library, errors with their words.
#pragma once

#include "windows/com/automation_text.h"
#include "windows/com/com_object.h"
#include "windows/com/error_boundary.h"
#include "windows/com/type_library.h"
#include "windows/com/variant_conversion.h"

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <memory>
#include <string>
#include <utility>

namespace windows::com {

// `Dual` is the class's dual interface, `Others` what it offers besides. A script host that finds IObjectWithSite on an
// object refuses to create it, so that one is never among them.
template <typename Dual, typename... Others>
class AutomationObject : public ComObject<Dual, ISupportErrorInfo, Others...> {
public:
    // IDispatch
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) noexcept override {
        if (count == nullptr) {
            return E_POINTER;
        }
        *count = 1;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) noexcept override {
        if (info == nullptr) {
            return E_POINTER;
        }
        *info = nullptr;
        if (index != 0) {
            return DISP_E_BADINDEX;
        }
        const HRESULT result = needTypeInfo();
        return FAILED(result) ? result : m_typeInfo.CopyTo(info);
    }

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID,
                                            DISPID* ids) noexcept override {
        if (iid != IID_NULL) {
            return DISP_E_UNKNOWNINTERFACE;
        }
        const HRESULT result = needTypeInfo();
        return FAILED(result) ? result : m_typeInfo->GetIDsOfNames(names, count, ids);
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* value,
                                     EXCEPINFO* exception, UINT* argumentError) noexcept override {
        if (iid != IID_NULL) {
            return DISP_E_UNKNOWNINTERFACE;
        }
        const HRESULT result = needTypeInfo();
        if (FAILED(result)) {
            return result;
        }
        SetErrorInfo(0, nullptr); // or an older error's words would be taken for this call's
        return m_typeInfo->Invoke(static_cast<Dual*>(this), id, flags, parameters, value, exception, argumentError);
    }

    // ISupportErrorInfo
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) noexcept override {
        return iid == __uuidof(Dual) ? S_OK : S_FALSE;
    }

protected:
    [[nodiscard]] void* find(REFIID iid) noexcept override {
        return iid == IID_IDispatch ? static_cast<Dual*>(this)
                                    : ComObject<Dual, ISupportErrorInfo, Others...>::find(iid);
    }

    // The body of a method. The object holds itself meanwhile: a host may let go of it while a form is open.
    template <typename Body>
    HRESULT run(Body&& body) noexcept {
        const Microsoft::WRL::ComPtr<Dual> self(this);
        return guarded(__uuidof(Dual), [&] {
            const std::shared_ptr<void> held = heldByCalls();
            body();
        });
    }

    // What lives as long as a method runs.
    [[nodiscard]] virtual std::shared_ptr<void> heldByCalls() { return nullptr; }

    // The body of a method with one result, which `make` gives: a text, a Boolean or an object.
    template <typename Make>
    HRESULT give(BSTR* value, Make&& make) noexcept {
        return run([&] {
            BSTR& result = target(value);
            result = newBstr(make());
        });
    }
    template <typename Make>
    HRESULT give(VARIANT_BOOL* value, Make&& make) noexcept {
        return run([&] {
            VARIANT_BOOL& result = target(value);
            result = toVariantBool(make());
        });
    }
    template <typename Interface, typename Make>
    HRESULT give(Interface** value, Make&& make) noexcept {
        return run([&] {
            Interface*& result = target(value);
            result = make().Detach();
        });
    }

    // The accessors of a text and of a Boolean property.
    HRESULT get(const std::string& property, BSTR* value) noexcept {
        return give(value, [&]() -> const std::string& { return property; });
    }
    HRESULT put(std::string& property, BSTR value) noexcept {
        return run([&] { property = fromBstr(value); });
    }
    HRESULT get(bool property, VARIANT_BOOL* value) noexcept {
        return give(value, [&] { return property; });
    }
    HRESULT put(bool& property, VARIANT_BOOL value) noexcept {
        property = value != VARIANT_FALSE;
        return S_OK;
    }

private:
    // Not at creation: an early-bound host never needs it.
    HRESULT needTypeInfo() noexcept { return m_typeInfo ? S_OK : loadTypeInfo(__uuidof(Dual), m_typeInfo); }

    Microsoft::WRL::ComPtr<ITypeInfo> m_typeInfo;
};

} // namespace windows::com
