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

    // While it is frozen, no sink hears anything: what happens then is not told later. Freezing counts.
    void freeze(bool frozen) noexcept { m_frozen += frozen ? 1 : m_frozen > 0 ? -1 : 0; }
    [[nodiscard]] bool frozen() const noexcept { return m_frozen != 0; }

    // The control goes: lets go of every sink and takes no more.
    void close() noexcept;

private:
    IID m_events;
    IConnectionPointContainer* m_container; // null once it has gone
    std::vector<Connection> m_connections;
    DWORD m_lastCookie = 0;
    int m_frozen = 0;
};

} // namespace windows::com
