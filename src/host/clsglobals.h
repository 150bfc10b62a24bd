// A name/value table of options, filled from the "options" element of a configuration document.
//
// Look-ups and changes scan the rows from 0 to the option count INCLUSIVE, one row past the last loaded one, and an
// added option goes into the row after that one; the two belong together: a look-up
// finds what was added because it looks one row too far.
#pragma once

#include "base/variant.h"

#include <array>
#include <cstdint>
#include <string>

namespace ui {
class Desktop;
}
namespace xml {
class XmlDocument;
}

namespace host {

class clsglobals {
public:
    // `desktop` (yielded to while loading) outlives the table.
    explicit clsglobals(ui::Desktop& desktop) : m_desktop(desktop) {}

    // Rows 0.. become the children of "configuration/options": name and text. Rows beyond keep what they held. Without
    // that element nothing changes. A child too many raises 9: the rows written stay, the count keeps its old value.
    void LoadGlobals(const xml::XmlDocument& doc);

    // The value of the first row whose name equals `name` in upper case, or "NOT_FOUND". Never raises (but 7).
    [[nodiscard]] std::string GetValue(const base::Variant& name) const;

    // Changes the first row whose name equals `name` exactly (another case makes another row, which GetValue then
    // does not find), or adds one. Raises 9 when the table is full; the count stays increased.
    void SetValue(const base::Variant& name, const base::Variant& value);

    [[nodiscard]] std::int16_t count() const noexcept { return m_count; }

private:
    static constexpr int kLastRow = 300;
    struct Row {
        base::Variant name;
        base::Variant value;
    };

    // Raises 9 for a row past the end.
    [[nodiscard]] Row& row(int index);
    [[nodiscard]] const Row& row(int index) const;

    ui::Desktop& m_desktop;
    std::array<Row, kLastRow + 1> m_rows;
    std::int16_t m_count = 0;
};

} // namespace host
