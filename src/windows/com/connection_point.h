// Where event sinks connect to a control: the standard connection point, apart from what the events say.
#pragma once

#include "windows/com/com_object.h"

#include <ocidl.h>
#include <wrl/client.h>

#include <vector>

namespace windows::com {

// An object of its own, since a container object may have a second interface with methods of the same names. A client
// may keep it longer than the control lives.
class ConnectionPoint final : public ComObject<IConnectionPoint> {
public:
    struct Connection {
        DWORD cookie;
        Microsoft::WRL::ComPtr<IDispatch> sink;
    };

    // `events`: the dispatch interface of the events. `container` outlives the time until close().
    ConnectionPoint(REFIID events, IConnectionPointContainer& container) noexcept
        : m_events(events), m_container(&container) {}

    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) noexcept override;
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) noexcept override;
    // Takes a sink that answers to the interface of the events or to plain IDispatch.
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) noexcept override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) noexcept override;
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) noexcept override;

    // In the order in which they connected.
    [[nodiscard]] std::vector<Connection> connections() const { return m_connections; }
    [[nodiscard]] bool has(DWORD cookie) const noexcept;

    // The control goes: lets go of every sink and takes no more.
    void close() noexcept;

private:
    IID m_events;
    IConnectionPointContainer* m_container; // null once it has gone
    std::vector<Connection> m_connections;
    DWORD m_lastCookie = 0;
};

} // namespace windows::com
