// The same work with the document object model that Windows brings along. Shares no code with src/.
#pragma once

#include <cstddef>
#include <string>

namespace baselines {

class PlatformDom {
public:
    PlatformDom();
    PlatformDom(const PlatformDom&) = delete;
    PlatformDom& operator=(const PlatformDom&) = delete;
    ~PlatformDom();

    void load(const std::wstring& text);
    [[nodiscard]] std::size_t textLength() const;
    [[nodiscard]] bool finds(const std::wstring& expression) const;

private:
    void* m_document = nullptr; // IXMLDOMDocument
};

} // namespace baselines
