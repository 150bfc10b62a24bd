// A host's own document object, of whatever XML library. The component works on a copy of it: this is the one place
// that takes the copy and that writes back.
#pragma once

#include "base/late_bound.h"
#include "exchange/host_command_document.h"
#include "xml/xml_document.h"

#include <windows.h>

#include <oaidl.h>

#include <memory>
#include <string_view>
#include <utility>

namespace windows::com {

// Reached late-bound, by the conventional names: xml, loadXML, documentElement, selectNodes, item, setAttribute,
// removeAttribute. Every method raises what the object raises, 438 for an object that lacks the member, 13 for one that
// answers with something else, and 91 where there is no such node.
class ForeignDocument final : public exchange::HostCommandDocument {
public:
    // `object` is not null.
    explicit ForeignDocument(base::ObjectRef object) noexcept : m_object(std::move(object)) {}

    // Text that is not well-formed raises base::error::kUnspecified with the reason; an empty document has an empty
    // copy.
    [[nodiscard]] std::shared_ptr<xml::XmlDocument> read() const override;

    // Makes the document hold what `content` holds. Raises base::error::kUnspecified when it refuses.
    void write(const xml::XmlDocument& content) const;

    // Of the first element inside the root.
    void setFirstElementAttribute(std::string_view name, std::string_view value) const;

    void setRootAttribute(std::string_view name, std::string_view value) override;
    void removeRootAttribute(std::string_view name) override;
    void setCommandAttribute(std::size_t command, std::string_view name, std::string_view value) override;

private:
    base::ObjectRef m_object;
};

// A document that a host handed over.
struct HostDocument {
    std::shared_ptr<xml::XmlDocument> document; // null for Nothing
    std::unique_ptr<ForeignDocument> original;  // null when `document` is no copy: Nothing, or a document of ours
};

[[nodiscard]] HostDocument fromHost(IDispatch* object);

} // namespace windows::com
