// A host's own document object, as hosts make it with the platform's library: late-bound, with the conventional names.
#pragma once

#include "base/late_bound.h"
#include "ports/file_system.h"
#include "xml/xml_document.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace fakes {

// Has xml, documentElement, createElement and save; nodes have selectSingleNode, appendChild, getAttribute and
// setAttribute. What is not there is Nothing, an absent attribute Null.
class FakeHostDocument final : public base::LateBoundObject {
public:
    // `files` takes what is saved; not owned. Throws std::invalid_argument when the text is no document; "" is an empty
    // one.
    FakeHostDocument(ports::FileSystem& files, std::string_view text);

    [[nodiscard]] std::string text() const { return m_document->xml(); }
    // From now on a member raises: 438 for one that the object lacks (nodes included), or its own error.
    void failOn(std::string_view member, std::int32_t errorNumber) { (*m_failures)[std::string(member)] = errorNumber; }

    // By the names of members.
    using Failures = std::map<std::string, std::int32_t, std::less<>>;

    base::Variant get(std::string_view property) override;
    void put(std::string_view property, const base::Variant& value) override;
    base::Variant call(std::string_view method, const std::vector<base::Variant>& arguments) override;

private:
    std::shared_ptr<xml::XmlDocument> m_document;
    std::shared_ptr<Failures> m_failures = std::make_shared<Failures>();
    ports::FileSystem& m_files;
};

} // namespace fakes
