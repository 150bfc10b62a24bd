// The control's events on their way to the sinks of hosts.
#pragma once

#include "ports/file_system.h"
#include "sendreceive/events.h"
#include "windows/com/connection_point.h"

#include <windows.h>

#include <oleauto.h>

#include <span>

namespace windows::com {

// Every sink hears every event, in the order in which they connected; one that leaves meanwhile is not called any more,
// one that joins waits for the next event. A sink without a handler is passed over; any other failure of one is raised,
// with the sink's own number and words, and the sinks after it do not hear of the event.
class EventSource final : public sendreceive::Events {
public:
    // `owner` is the control's automation object and holds this one. All outlive it; `fileSystem` also outlives the
    // documents that the sinks keep.
    EventSource(IUnknown& owner, ConnectionPoint& connections, ports::FileSystem& fileSystem) noexcept
        : m_owner(owner), m_connections(connections), m_fileSystem(fileSystem) {}

    void DownloadComplete(std::string& name, const xml::XmlNode& command,
                          const std::shared_ptr<xml::XmlDocument>& results) override;
    // A request that the handler puts in the place of ours is read when all have returned; Nothing leaves ours.
    void DownloadStart(std::string& name, std::shared_ptr<xml::XmlDocument>& request) override;
    void Cancelled() override;
    void SendReceiveCompleted() override;
    void CloseQuorVantis() override;
    void OpenfrmOptions(const std::string& url) override;
    void RegisterServer(const std::string& file) override;
    void UnregisterServer(const std::string& file) override;

private:
    // `event` is its number in the type library; `arguments` are as automation wants them, the last one first. A sink
    // may end this object's life: nothing of it is used afterwards.
    void fire(DISPID event, std::span<VARIANT> arguments);
    void fireText(DISPID event, const std::string& argument);

    IUnknown& m_owner;
    ConnectionPoint& m_connections;
    ports::FileSystem& m_fileSystem;
};

} // namespace windows::com
