#include "ui/list_view.h"

#include "base/runtime_error.h"

namespace ui {

std::size_t ListView::addRow(std::string_view key) {
    const std::size_t row = m_rows.size();
    if (!m_byKey.emplace(key, row).second) {
        throw base::RuntimeError(base::error::kKeyNotUnique);
    }
    m_rows.push_back({std::string(key), std::vector<std::string>(m_columns.size())});
    changed(Aspect::Items);
    return row;
}

void ListView::clear() {
    m_rows.clear();
    m_byKey.clear();
    ++m_generation;
    changed(Aspect::Items);
}

std::optional<std::size_t> ListView::find(std::string_view key) const {
    const auto found = m_byKey.find(std::string(key));
    return found == m_byKey.end() ? std::nullopt : std::optional(found->second);
}

const std::string& ListView::cell(std::size_t row, std::size_t column) const {
    const Row& r = at(row);
    if (column >= r.cells.size()) {
        throw base::RuntimeError(base::error::kSubscriptOutOfRange);
    }
    return r.cells[column];
}

void ListView::setCell(std::size_t row, std::size_t column, std::string_view text) {
    if (cell(row, column) != text) {
        m_rows[row].cells[column] = text;
        changed(Aspect::Text);
    }
}

void ListView::setChecked(std::size_t row, bool checked) {
    if (at(row).checked != checked) {
        at(row).checked = checked;
        changed(Aspect::Value);
    }
}

void ListView::userCheck(std::size_t row, bool checked) {
    if (usable() && row < m_rows.size() && m_rows[row].checked != checked) {
        setChecked(row, checked);
        if (const auto handler = onItemCheck) {
            handler(row);
        }
    }
}

const ListView::Row& ListView::at(std::size_t row) const {
    if (row >= m_rows.size()) {
        throw base::RuntimeError(base::error::kSubscriptOutOfRange);
    }
    return m_rows[row];
}

} // namespace ui
