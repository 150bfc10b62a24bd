// The control's events as hosts hear them.
#pragma once

#include "ports/file_system.h"
#include "sendreceive/events.h"
#include "windows/com/event_source.h"

namespace windows::com {

class SendReceiveEvents final : public sendreceive::Events {
public:
    // `fileSystem` outlives the documents that the sinks keep.
    SendReceiveEvents(EventSource source, ports::FileSystem& fileSystem) noexcept
        : m_source(source), m_fileSystem(fileSystem) {}

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
    EventSource m_source;
    ports::FileSystem& m_fileSystem;
};

} // namespace windows::com
