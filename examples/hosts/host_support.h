// What the compiled hosts share: references, texts, objects of their own.
#pragma once

#include <cstdio>

#include <windows.h>

#include <oleauto.h>

namespace host {

// Releases an interface at the end.
template <typename T>
struct Held {
    T* value = nullptr;

    Held() = default;
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    ~Held() {
        if (value != nullptr) {
            value->Release();
        }
    }
    void** out() { return reinterpret_cast<void**>(&value); }
    T* operator->() const { return value; }
};

// A text as automation wants it; freed at the end.
struct Text {
    BSTR value;

    explicit Text(const wchar_t* text) : value(SysAllocString(text)) {}
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    ~Text() { SysFreeString(value); }
};

// Tells which step failed, if it did.
inline bool done(const char* step, HRESULT result) {
    if (FAILED(result)) {
        std::printf("%s failed: %08lX\n", step, static_cast<unsigned long>(result));
    }
    return SUCCEEDED(result);
}

// An automation object of the host, which lives on the stack and so is not counted. It outlives whatever it is given
// to.
class StackObject : public IDispatch {
public:
    // `events`: what a sink answers to besides.
    explicit StackObject(REFIID events = IID_IDispatch) : m_events(events) {}
    virtual ~StackObject() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == m_events;
        *object = known ? static_cast<IDispatch*>(this) : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }

private:
    IID m_events;
};

} // namespace host
