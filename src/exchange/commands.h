// The command document, and the host's own where that is another object: what is set in one is set in both.
#pragma once

#include "exchange/host_command_document.h"
#include "xml/xml_document.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace exchange {

class Commands {
public:
    // `original`: a host's own document of which `document` is a copy; null when there is none.
    explicit Commands(std::shared_ptr<xml::XmlDocument> document, std::unique_ptr<HostCommandDocument> original = {});

    [[nodiscard]] const std::shared_ptr<xml::XmlDocument>& document() const noexcept { return m_document; }
    // Copies the host's once more: it fills it at leisure.
    void refresh();

    void setRootAttribute(std::string_view name, std::string_view value);
    void removeRootAttribute(std::string_view name);
    // Of the element that is the document's "//command" of this index, from 0.
    void setCommandAttribute(xml::XmlNode& command, std::size_t index, std::string_view name, std::string_view value);

private:
    std::shared_ptr<xml::XmlDocument> m_document;
    std::unique_ptr<HostCommandDocument> m_original;
};

} // namespace exchange
