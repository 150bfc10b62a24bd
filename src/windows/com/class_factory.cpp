#include "windows/com/class_factory.h"

#include "windows/com/adopt.h"
#include "windows/com/module.h"

#include <atomic>
#include <new>

namespace windows::com {
namespace {

class ClassFactory final : public IClassFactory {
public:
    explicit ClassFactory(const CreatableClass& creatable) noexcept : m_class(creatable) {}
    ClassFactory(const ClassFactory&) = delete;
    ClassFactory& operator=(const ClassFactory&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override {
        if (object == nullptr) {
            return E_POINTER;
        }
        *object = nullptr;
        if (iid != IID_IUnknown && iid != IID_IClassFactory) {
            return E_NOINTERFACE;
        }
        *object = static_cast<IClassFactory*>(this);
        AddRef();
        return S_OK;
    }

    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++m_references; }

    ULONG STDMETHODCALLTYPE Release() noexcept override {
        const ULONG left = --m_references;
        if (left == 0) {
            delete this;
        }
        return left;
    }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) noexcept override {
        if (object == nullptr) {
            return E_POINTER;
        }
        *object = nullptr;
        return outer != nullptr ? CLASS_E_NOAGGREGATION : m_class.create(iid, object);
    }

    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) noexcept override {
        lock ? lockModule() : unlockModule();
        return S_OK;
    }

private:
    ~ClassFactory() = default;

    const CreatableClass& m_class;
    ModuleUse m_moduleUse;
    std::atomic<ULONG> m_references = 1;
};

} // namespace

HRESULT createClassFactory(const CreatableClass& creatable, REFIID iid, void** factory) noexcept {
    const auto created = adopt(new (std::nothrow) ClassFactory(creatable));
    return created ? created->QueryInterface(iid, factory) : E_OUTOFMEMORY;
}

} // namespace windows::com
