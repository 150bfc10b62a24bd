// What the compiled hosts need to call automation objects by name.
#pragma once

#include <cstdio>

#include <windows.h>

#include <oleauto.h>

namespace late_bound {

// Releases an interface at the end.
template <typename T>
struct Held {
    T* value = nullptr;
    ~Held() {
        if (value != nullptr) {
            value->Release();
        }
    }
    void** out() { return reinterpret_cast<void**>(&value); }
    T* operator->() const { return value; }
};

// A method with at most one argument, or a property.
inline HRESULT invoke(IDispatch* object, const wchar_t* member, WORD flags, VARIANT* argument, VARIANT* result) {
    LPOLESTR name = const_cast<LPOLESTR>(member);
    DISPID id = 0;
    const HRESULT found = object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(found)) {
        return found;
    }
    DISPID putId = DISPID_PROPERTYPUT;
    const bool isPut = (flags & DISPATCH_PROPERTYPUT) != 0;
    DISPPARAMS arguments{argument, isPut ? &putId : nullptr, argument != nullptr ? 1U : 0U, isPut ? 1U : 0U};
    return object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &arguments, result, nullptr, nullptr);
}

inline HRESULT putText(IDispatch* object, const wchar_t* property, const wchar_t* text) {
    VARIANT value;
    V_VT(&value) = VT_BSTR;
    V_BSTR(&value) = SysAllocString(text);
    const HRESULT result = invoke(object, property, DISPATCH_PROPERTYPUT, &value, nullptr);
    VariantClear(&value);
    return result;
}

// Tells which step failed, if it did.
inline bool done(const char* step, HRESULT result) {
    if (FAILED(result)) {
        std::printf("%s failed: %08lX\n", step, static_cast<unsigned long>(result));
    }
    return SUCCEEDED(result);
}

inline HRESULT putObject(IDispatch* object, const wchar_t* property, IDispatch* value) {
    VARIANT argument;
    V_VT(&argument) = VT_DISPATCH;
    V_DISPATCH(&argument) = value;
    return invoke(object, property, DISPATCH_PROPERTYPUT, &argument, nullptr);
}

inline HRESULT create(const wchar_t* progId, IDispatch** object) {
    CLSID clsid{};
    const HRESULT found = CLSIDFromProgID(progId, &clsid);
    return FAILED(found) ? found
                         : CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                            reinterpret_cast<void**>(object));
}

} // namespace late_bound
