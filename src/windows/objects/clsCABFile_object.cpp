#include "windows/objects/clsCABFile_object.h"

#include "entry/QVI_global.h"
#include "windows/app.h"

namespace windows::com {

CabFileObject::CabFileObject()
    : m_cabinet(std::make_shared<cabinet::clsCABFile>(entry::cabinetServices(App::instance().environment()))) {
    m_cabinet->setEvents(&m_events);
}

CabFileObject::~CabFileObject() {
    m_cabinet->setEvents(nullptr);
}

HRESULT CabFileObject::get_FileCount(LONG* value) noexcept {
    return run([&] {
        LONG& count = target(value);
        count = m_cabinet->FileCount();
    });
}

HRESULT CabFileObject::Extract(BSTR fileName, BSTR destFolder, BSTR newName, VARIANT_BOOL* value) noexcept {
    return give(value, [&] { return m_cabinet->Extract(fromBstr(fileName), fromBstr(destFolder), fromBstr(newName)); });
}

HRESULT CabFileObject::GetInfo(BSTR fileName, VARIANT_BOOL* value) noexcept {
    return give(value, [&] { return m_cabinet->GetInfo(fromBstr(fileName)); });
}

HRESULT CabFileObject::GetXML(BSTR fileName, BSTR* value) noexcept {
    return give(value, [&] { return m_cabinet->GetXML(fromBstr(fileName)); });
}

HRESULT CabFileObject::SetuAPIisPresent(VARIANT_BOOL* value) noexcept {
    return give(value, [&] { return m_cabinet->SetuAPIisPresent(); });
}

} // namespace windows::com
