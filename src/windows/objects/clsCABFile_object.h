// cabinet::clsCABFile as hosts see it.
#pragma once

#include "cabinet/clsCABFile.h"
#include "windows/com/event_source_object.h"
#include "windows/com/quorvantisimage.h"
#include "windows/objects/clsCABFile_events.h"

#include <memory>

namespace windows::com {

// The callback's slot may keep the reader longer than this object lives, but then it raises no more events, and it does
// not keep the DLL loaded.
class CabFileObject final : public EventSourceObject<::_clsCABFile, ::clsCABFile, ::__clsCABFile> {
public:
    CabFileObject();

    HRESULT STDMETHODCALLTYPE get_CabName(BSTR* value) noexcept override { return get(m_cabinet->CabName, value); }
    HRESULT STDMETHODCALLTYPE put_CabName(BSTR value) noexcept override { return put(m_cabinet->CabName, value); }
    HRESULT STDMETHODCALLTYPE get_FileCount(LONG* value) noexcept override;
    HRESULT STDMETHODCALLTYPE Extract(BSTR fileName, BSTR destFolder, BSTR newName,
                                      VARIANT_BOOL* value) noexcept override;
    HRESULT STDMETHODCALLTYPE GetInfo(BSTR fileName, VARIANT_BOOL* value) noexcept override;
    HRESULT STDMETHODCALLTYPE GetXML(BSTR fileName, BSTR* value) noexcept override;
    HRESULT STDMETHODCALLTYPE SetuAPIisPresent(VARIANT_BOOL* value) noexcept override;

private:
    ~CabFileObject() override;

    std::shared_ptr<cabinet::clsCABFile> m_cabinet;
    CabFileEvents m_events{eventSource()};
};

} // namespace windows::com
