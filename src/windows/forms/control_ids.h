// The ids of forms and controls by their names, from the one table in resource.h. Needs no Windows headers.
#pragma once

#include <span>
#include <string_view>

namespace windows {

struct ControlId {
    std::string_view form;
    std::string_view control;
    int id;
};

// Every control of every form's template, in the table's order.
[[nodiscard]] std::span<const ControlId> allControlIds() noexcept;

// The id of the form's dialog template; 0 when there is no such form.
[[nodiscard]] int formId(std::string_view form) noexcept;

// The id of a control in its form's window; 0 when there is no such control.
[[nodiscard]] int controlId(std::string_view form, std::string_view control) noexcept;

// The name of the control with that id; empty when the form has none.
[[nodiscard]] std::string_view controlName(std::string_view form, int id) noexcept;

// A form's window class is this prefix and the form's name.
inline constexpr std::string_view kFormClassPrefix = "QVI_";

} // namespace windows
