#include "windows/com/ucSendReceive_events.h"

#include "windows/com/foreign_document.h"
#include "windows/com/xml_document_object.h"

#include <array>

namespace windows::com {

void SendReceiveEvents::DownloadComplete(std::string& name, const xml::XmlNode& command,
                                         const std::shared_ptr<xml::XmlDocument>& results) {
    EventArgument nameArgument(name);
    const EventArgument commandArgument(makeXmlNode(command));
    const EventArgument resultsArgument(makeXmlDocument(results, m_fileSystem));
    std::array arguments{resultsArgument.byValue(), commandArgument.byValue(), nameArgument.byReference()};
    m_source.fire(1, arguments);
    name = nameArgument.text();
}

void SendReceiveEvents::DownloadStart(std::string& name, std::shared_ptr<xml::XmlDocument>& request) {
    EventArgument nameArgument(name);
    EventArgument requestArgument(makeXmlDocument(request, m_fileSystem));
    std::array arguments{requestArgument.byReference(), nameArgument.byReference()};
    m_source.fire(2, arguments);
    name = nameArgument.text();
    if (requestArgument.object() != nullptr) {
        request = fromHost(requestArgument.object()).document;
    }
}

void SendReceiveEvents::Cancelled() {
    m_source.fire(3);
}

void SendReceiveEvents::SendReceiveCompleted() {
    m_source.fire(4);
}

void SendReceiveEvents::CloseQuorVantis() {
    m_source.fire(5);
}

void SendReceiveEvents::OpenfrmOptions(const std::string& url) {
    m_source.fire(6, EventArgument(url));
}

void SendReceiveEvents::RegisterServer(const std::string& file) {
    m_source.fire(7, EventArgument(file));
}

void SendReceiveEvents::UnregisterServer(const std::string& file) {
    m_source.fire(8, EventArgument(file));
}

} // namespace windows::com
