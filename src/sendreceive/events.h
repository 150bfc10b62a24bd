// What the send/receive control tells whoever shows it.
#pragma once

#include "xml/xml_document.h"

#include <memory>
#include <string>

namespace sendreceive {

// In the order of their numbers as automation events; there is no number 0. A handler that raises ends the routine
// that raised the event. A handler may release the control, or leave or join its listeners.
class Events {
public:
    Events() = default;
    Events(const Events&) = delete;
    Events& operator=(const Events&) = delete;
    virtual ~Events() = default;

    // 1: the server has answered a command. `command` is the command document's own element.
    virtual void DownloadComplete(std::string& name, const xml::XmlNode& command,
                                  const std::shared_ptr<xml::XmlDocument>& results) = 0;
    // 2: a command is about to be sent; the handler may extend the request or put another in its place. A changed name
    // is ignored.
    virtual void DownloadStart(std::string& name, std::shared_ptr<xml::XmlDocument>& request) = 0;
    // 3
    virtual void Cancelled() = 0;
    // 4
    virtual void SendReceiveCompleted() = 0;
    // 5: never raised.
    virtual void CloseQuorVantis() = 0;
    // 6: the user asks for the host's options screen, for want of a connection to `url`.
    virtual void OpenfrmOptions(const std::string& url) = 0;
    // 7: a downloaded library (.dll, .ocx) is in its place, and may be registered. 8: one is about to be replaced.
    virtual void RegisterServer(const std::string& file) = 0;
    virtual void UnregisterServer(const std::string& file) = 0;
};

} // namespace sendreceive
