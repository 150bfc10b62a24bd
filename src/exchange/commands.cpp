#include "exchange/commands.h"

#include <utility>

namespace exchange {

Commands::Commands(std::shared_ptr<xml::XmlDocument> document, std::unique_ptr<HostCommandDocument> original)
    : m_document(std::move(document)), m_original(std::move(original)) {}

void Commands::refresh() {
    if (m_original) {
        m_document = m_original->read();
    }
}

void Commands::setRootAttribute(std::string_view name, std::string_view value) {
    m_document->documentElement().setAttribute(name, value);
    if (m_original) {
        m_original->setRootAttribute(name, value);
    }
}

void Commands::removeRootAttribute(std::string_view name) {
    if (m_document->documentElement().hasAttribute(name)) {
        m_document->documentElement().removeAttribute(name);
        if (m_original) {
            m_original->removeRootAttribute(name);
        }
    }
}

void Commands::setCommandAttribute(xml::XmlNode& command, std::size_t index, std::string_view name,
                                   std::string_view value) {
    command.setAttribute(name, value);
    if (m_original) {
        m_original->setCommandAttribute(index, name, value);
    }
}

} // namespace exchange
