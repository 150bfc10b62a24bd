// The port to a host's own command document, which the control keeps in step with its copy.
// Real: windows/objects, over the host's document object.
#pragma once

#include "xml/xml_document.h"

#include <cstddef>
#include <memory>
#include <string_view>

namespace exchange {

// The control works on a copy of the document; what it writes there it also writes here, right after. All methods
// raise what the host's object raises.
class HostCommandDocument {
public:
    HostCommandDocument() = default;
    HostCommandDocument(const HostCommandDocument&) = delete;
    HostCommandDocument& operator=(const HostCommandDocument&) = delete;
    virtual ~HostCommandDocument() = default;

    // A copy of what the document holds now: the host may have filled it after it handed it over.
    [[nodiscard]] virtual std::shared_ptr<xml::XmlDocument> read() const = 0;

    virtual void setRootAttribute(std::string_view name, std::string_view value) = 0;
    virtual void removeRootAttribute(std::string_view name) = 0;
    // `command` counts the document's "//command" elements, from 0.
    virtual void setCommandAttribute(std::size_t command, std::string_view name, std::string_view value) = 0;
};

} // namespace exchange
