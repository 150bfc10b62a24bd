#include "windows/server/class_table.h"

#include "windows/com/adopt.h"
#include "windows/com/error_boundary.h"
#include "windows/com/quorvantisimage.h"
#include "windows/objects/clsCABFile_object.h"
#include "windows/objects/clsQVI_Globals_object.h"
#include "windows/objects/clsQVI_Link_object.h"
#include "windows/objects/ucSendReceive_object.h"

#include <wrl/client.h>

#include <algorithm>

namespace windows::com {
namespace {

template <typename Object>
HRESULT createObject(REFIID iid, void** object) noexcept {
    Microsoft::WRL::ComPtr<Object> created;
    const HRESULT result = guarded(IID_IClassFactory, [&] { created = adopt(new Object); });
    return FAILED(result) ? result : created->QueryInterface(iid, object);
}

} // namespace

std::span<const CreatableClass> creatableClasses() noexcept {
    static const CreatableClass kClasses[] = {
        {__uuidof(::clsQVI_Link), L"QuorvantisImage.clsQVI_Link", L"QuorvantisImage.clsQVI_Link",
         createObject<LinkObject>},
        {__uuidof(::clsQVI_Globals), L"QuorvantisImage.clsQVI_Globals", L"QuorvantisImage.clsQVI_Globals",
         createObject<GlobalsObject>},
        {__uuidof(::ucSendReceive), L"QuorvantisImage.ucSendReceive", L"QuorvantisImage.ucSendReceive",
         createObject<SendReceiveObject>, ControlEmbedding::kMiscStatus},
        {__uuidof(::clsCABFile), L"QuorvantisImage.clsCABFile", L"QuorvantisImage.clsCABFile",
         createObject<CabFileObject>},
    };
    return kClasses;
}

const CreatableClass* findClass(REFCLSID clsid) noexcept {
    const auto classes = creatableClasses();
    const auto found = std::ranges::find_if(classes, [&](const CreatableClass& c) { return c.clsid == clsid; });
    return found == classes.end() ? nullptr : &*found;
}

} // namespace windows::com
