// A borrowed look at one element, for code that walks hundreds of thousands of them: it costs a pointer and owns
// nothing.
#pragma once

#include <optional>
#include <string>
#include <string_view>

struct _xmlNode; // NOLINT(bugprone-reserved-identifier): the library's own name, so that no header of it is needed here

namespace xml {

// Valid for as long as the tree that it was taken from; texts that it gives out, until that element changes.
class ElementView {
public:
    constexpr ElementView() noexcept = default;

    [[nodiscard]] constexpr explicit operator bool() const noexcept { return m_node != nullptr; }
    friend constexpr bool operator==(ElementView, ElementView) noexcept = default;

    // The element has this name and no namespace: what a bare name in an XPath expression asks for.
    [[nodiscard]] bool isNamed(std::string_view name) const noexcept;

    // The value of the attribute of this name and no namespace. `scratch` holds the value in the rare case that the
    // tree has it in pieces.
    [[nodiscard]] std::optional<std::string_view> attribute(std::string_view name, std::string& scratch) const;

    // The element around this one; nothing for the root and for a detached element.
    [[nodiscard]] ElementView parent() const noexcept;

    // The next element in document order inside `top`; nothing after the last. From `top` itself: its first descendant.
    [[nodiscard]] ElementView nextInside(ElementView top) const noexcept;

private:
    friend class XmlDocument;
    explicit constexpr ElementView(_xmlNode* node) noexcept : m_node(node) {}

    _xmlNode* m_node = nullptr;
};

} // namespace xml
