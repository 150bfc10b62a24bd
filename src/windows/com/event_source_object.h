// The base of automation classes with events: the connection point, and the answers by which hosts find it.
#pragma once

#include "windows/com/adopt.h"
#include "windows/com/automation_object.h"
#include "windows/com/connection_point.h"
#include "windows/com/enumerator.h"
#include "windows/com/event_source.h"

#include <ocidl.h>
#include <olectl.h>

namespace windows::com {

// `Dual` is the class's dual interface, `Class` the class itself, `Events` its source interface.
template <typename Dual, typename Class, typename Events>
class EventSourceObject : public AutomationObject<Dual, IConnectionPointContainer, IProvideClassInfo2> {
    using Base = AutomationObject<Dual, IConnectionPointContainer, IProvideClassInfo2>;

public:
    // IConnectionPointContainer
    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) noexcept override {
        return this->give(points, [&] {
            const auto fill = [only = m_connections](std::size_t, IConnectionPoint*& item) {
                item = Microsoft::WRL::ComPtr<IConnectionPoint>(only).Detach();
            };
            return adopt<IEnumConnectionPoints>(new Enumerator<IEnumConnectionPoints, IConnectionPoint*>(1, fill));
        });
    }

    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID events, IConnectionPoint** point) noexcept override {
        if (point == nullptr) {
            return E_POINTER;
        }
        *point = nullptr;
        return events == __uuidof(Events) ? m_connections.CopyTo(point) : CONNECT_E_NOCONNECTION;
    }

    // IProvideClassInfo2
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) noexcept override {
        if (info == nullptr) {
            return E_POINTER;
        }
        *info = nullptr;
        Microsoft::WRL::ComPtr<ITypeInfo> found;
        const HRESULT result = loadTypeInfo(__uuidof(Class), found);
        return FAILED(result) ? result : found.CopyTo(info);
    }

    HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* guid) noexcept override {
        if (guid == nullptr) {
            return E_POINTER;
        }
        const bool isSource = kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID;
        *guid = isSource ? __uuidof(Events) : GUID_NULL;
        return isSource ? S_OK : E_INVALIDARG;
    }

protected:
    EventSourceObject() : m_connections(adopt(new ConnectionPoint(__uuidof(Events), *this))) {}
    ~EventSourceObject() override { closeConnections(); }

    [[nodiscard]] void* find(REFIID iid) noexcept override {
        // The second generation of this interface contains the first.
        return iid == IID_IProvideClassInfo ? static_cast<IProvideClassInfo*>(this) : Base::find(iid);
    }

    // For the class's events; it lives no longer than this object.
    [[nodiscard]] EventSource eventSource() noexcept { return {static_cast<Dual&>(*this), *m_connections.Get()}; }

    [[nodiscard]] ConnectionPoint& connectionPoint() const noexcept { return *m_connections.Get(); }

    // A class that holds objects of hosts does this before it lets go of them: their end must not find the way back to
    // an object that is going.
    void closeConnections() noexcept { m_connections->close(); }

private:
    Microsoft::WRL::ComPtr<ConnectionPoint> m_connections;
};

} // namespace windows::com
