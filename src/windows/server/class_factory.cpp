#include "windows/server/class_factory.h"

#include "windows/com/adopt.h"
#include "windows/com/com_object.h"

#include <new>

namespace windows::com {
namespace {

class ClassFactory final : public ComObject<IClassFactory> {
public:
    explicit ClassFactory(const CreatableClass& creatable) noexcept : m_class(creatable) {}

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
    const CreatableClass& m_class;
};

} // namespace

HRESULT createClassFactory(const CreatableClass& creatable, REFIID iid, void** factory) noexcept {
    const auto created = adopt(new (std::nothrow) ClassFactory(creatable));
    return created ? created->QueryInterface(iid, factory) : E_OUTOFMEMORY;
}

} // namespace windows::com
