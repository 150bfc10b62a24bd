// The same work with the XML library alone: what the layer over it is measured against. Shares no code with src/.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace baselines {

class BareDocument {
public:
    explicit BareDocument(std::string_view bytes);
    BareDocument(const BareDocument&) = delete;
    BareDocument& operator=(const BareDocument&) = delete;
    ~BareDocument();

    [[nodiscard]] std::string text() const;
    [[nodiscard]] std::size_t count(const std::string& expression) const; // matches of an XPath expression

private:
    void* m_document;
};

} // namespace baselines
