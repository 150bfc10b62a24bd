#include "windows/com/connection_point.h"

#include "windows/com/enumerator.h"
#include "windows/com/error_boundary.h"

#include <olectl.h>

#include <algorithm>
#include <utility>

namespace windows::com {

using Microsoft::WRL::ComPtr;

HRESULT ConnectionPoint::GetConnectionInterface(IID* iid) noexcept {
    if (iid == nullptr) {
        return E_POINTER;
    }
    *iid = m_events;
    return S_OK;
}

HRESULT ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) noexcept {
    if (container == nullptr) {
        return E_POINTER;
    }
    *container = nullptr;
    return m_container == nullptr ? RPC_E_DISCONNECTED : m_container->QueryInterface(IID_PPV_ARGS(container));
}

HRESULT ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) noexcept {
    if (sink == nullptr || cookie == nullptr) {
        return E_POINTER;
    }
    *cookie = 0;
    ComPtr<IDispatch> dispatch;
    const auto ask = [&](REFIID iid) {
        return SUCCEEDED(sink->QueryInterface(iid, reinterpret_cast<void**>(dispatch.ReleaseAndGetAddressOf())));
    };
    if (m_container == nullptr || !(ask(m_events) || ask(IID_IDispatch))) {
        return CONNECT_E_CANNOTCONNECT;
    }
    return guarded(IID_IConnectionPoint, [&] {
        m_connections.push_back({m_lastCookie + 1, std::move(dispatch)});
        *cookie = ++m_lastCookie;
    });
}

HRESULT ConnectionPoint::Unadvise(DWORD cookie) noexcept {
    const auto found = std::ranges::find(m_connections, cookie, &Connection::cookie);
    if (found == m_connections.end()) {
        return CONNECT_E_NOCONNECTION;
    }
    const ComPtr<IDispatch> leaving = std::move(found->sink); // its end may call back
    m_connections.erase(found);
    return S_OK;
}

HRESULT ConnectionPoint::EnumConnections(IEnumConnections** connections) noexcept {
    return guarded(IID_IConnectionPoint, [&] {
        IEnumConnections*& result = target(connections);
        const auto fill = [all = m_connections](std::size_t index, CONNECTDATA& item) {
            item.dwCookie = all[index].cookie;
            item.pUnk = ComPtr<IUnknown>(all[index].sink).Detach();
        };
        result = new Enumerator<IEnumConnections, CONNECTDATA>(m_connections.size(), fill);
    });
}

bool ConnectionPoint::has(DWORD cookie) const noexcept {
    return std::ranges::find(m_connections, cookie, &Connection::cookie) != m_connections.end();
}

void ConnectionPoint::close() noexcept {
    m_container = nullptr;
    const std::vector<Connection> leaving = std::exchange(m_connections, {});
}

} // namespace windows::com
