// A list of rows with check boxes, under column headers.
#pragma once

#include "ui/control.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ui {

class ListView : public Control {
public:
    struct Column {
        std::string title;
        int share; // of the list's width, beside the other columns' shares
    };

    // `columns` stay as they are; a row has a cell in each.
    ListView(Container& owner, std::string_view name, std::vector<Column> columns)
        : Control(owner, name), m_columns(std::move(columns)) {}

    // A person ticked or unticked a row. Not for setChecked.
    std::function<void(std::size_t row)> onItemCheck;

    [[nodiscard]] const std::vector<Column>& columns() const noexcept { return m_columns; }

    // Adds an unticked row of empty cells at the end and returns its number. A key that a row has already raises 35602;
    // keys are compared exactly.
    std::size_t addRow(std::string_view key);
    void clear();
    [[nodiscard]] std::size_t rowCount() const noexcept { return m_rows.size(); }
    // None when no row has that key.
    [[nodiscard]] std::optional<std::size_t> find(std::string_view key) const;
    // Rows only grow in number within a generation.
    [[nodiscard]] std::uint64_t generation() const noexcept { return m_generation; }

    // Rows and columns count from 0; one that is not there raises 9.
    [[nodiscard]] const std::string& key(std::size_t row) const { return at(row).key; }
    [[nodiscard]] const std::string& cell(std::size_t row, std::size_t column) const;
    void setCell(std::size_t row, std::size_t column, std::string_view text);
    [[nodiscard]] bool checked(std::size_t row) const { return at(row).checked; }
    void setChecked(std::size_t row, bool checked);
    void userCheck(std::size_t row, bool checked);

private:
    struct Row {
        std::string key;
        std::vector<std::string> cells;
        bool checked = false;
    };

    [[nodiscard]] const Row& at(std::size_t row) const;
    [[nodiscard]] Row& at(std::size_t row) { return const_cast<Row&>(static_cast<const ListView&>(*this).at(row)); }

    std::vector<Column> m_columns;
    std::vector<Row> m_rows;
    std::unordered_map<std::string, std::size_t> m_byKey;
    std::uint64_t m_generation = 0;
};

} // namespace ui
