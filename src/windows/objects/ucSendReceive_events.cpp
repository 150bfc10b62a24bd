#include "windows/objects/ucSendReceive_events.h"

#include "windows/com/quorvantisimage.h"
#include "windows/objects/foreign_document.h"
#include "windows/objects/xml_document_object.h"

#include <array>

namespace windows::com {

void SendReceiveEvents::DownloadComplete(std::string& name, const xml::XmlNode& command,
                                         const std::shared_ptr<xml::XmlDocument>& results) {
    EventArgument nameArgument(name);
    const EventArgument commandArgument(makeXmlNode(command));
    const EventArgument resultsArgument(makeXmlDocument(results, m_fileSystem));
    std::array arguments{resultsArgument.byValue(), commandArgument.byValue(), nameArgument.byReference()};
    m_source.fire(qviEventDownloadComplete, arguments);
    name = nameArgument.text();
}

void SendReceiveEvents::DownloadStart(std::string& name, std::shared_ptr<xml::XmlDocument>& request) {
    EventArgument nameArgument(name);
    EventArgument requestArgument(makeXmlDocument(request, m_fileSystem));
    std::array arguments{requestArgument.byReference(), nameArgument.byReference()};
    m_source.fire(qviEventDownloadStart, arguments);
    name = nameArgument.text();
    if (requestArgument.object() != nullptr) {
        request = fromHost(requestArgument.object()).document;
    }
}

void SendReceiveEvents::Cancelled() {
    m_source.fire(qviEventCancelled);
}

void SendReceiveEvents::SendReceiveCompleted() {
    m_source.fire(qviEventSendReceiveCompleted);
}

void SendReceiveEvents::CloseQuorVantis() {
    m_source.fire(qviEventCloseQuorVantis);
}

void SendReceiveEvents::OpenfrmOptions(const std::string& url) {
    m_source.fire(qviEventOpenfrmOptions, EventArgument(url));
}

void SendReceiveEvents::RegisterServer(const std::string& file) {
    m_source.fire(qviEventRegisterServer, EventArgument(file));
}

void SendReceiveEvents::UnregisterServer(const std::string& file) {
    m_source.fire(qviEventUnregisterServer, EventArgument(file));
}

} // namespace windows::com
