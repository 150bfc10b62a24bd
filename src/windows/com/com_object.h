// The base of every COM object of this DLL: identity, lifetime, and its part in keeping the DLL loaded.
#pragma once

#include "windows/base/module.h"

#include <windows.h>

#include <unknwn.h>

#include <atomic>

namespace windows::com {

// `First` is the object's identity. All interfaces are unrelated but for IUnknown.
template <typename First, typename... Others>
class ComObject : public First, public Others... {
public:
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override {
        if (object == nullptr) {
            return E_POINTER;
        }
        *object = find(iid);
        if (*object == nullptr) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }

    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++m_references; }

    ULONG STDMETHODCALLTYPE Release() noexcept override {
        const ULONG left = --m_references;
        if (left == 0) {
            m_references = kGoing;
            delete this;
        }
        return left;
    }

protected:
    ComObject() = default;
    virtual ~ComObject() = default;

    // The interface, not counted yet; null for one that the object has not.
    [[nodiscard]] virtual void* find(REFIID iid) noexcept {
        if (iid == __uuidof(First) || iid == IID_IUnknown) {
            return static_cast<First*>(this);
        }
        void* found = nullptr;
        static_cast<void>(((iid == __uuidof(Others) && (found = static_cast<Others*>(this)) != nullptr) || ...));
        return found;
    }

private:
    // Others may hold and release the object in passing while it says goodbye to them.
    static constexpr ULONG kGoing = 0x40000000;

    ModuleUse m_moduleUse;
    std::atomic<ULONG> m_references = 1;
};

} // namespace windows::com
