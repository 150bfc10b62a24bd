#include "windows/forms/control_ids.h"

#include <algorithm>
#include <array>

namespace windows {
namespace {

struct FormId {
    std::string_view form;
    int id;
};

#include "resource_names.inc" // kForms and kControls, generated from resource.h

} // namespace

std::span<const ControlId> allControlIds() noexcept {
    return kControls;
}

int formId(std::string_view form) noexcept {
    const auto* const found =
        std::find_if(kForms.begin(), kForms.end(), [&](const FormId& entry) { return entry.form == form; });
    return found == kForms.end() ? 0 : found->id;
}

int controlId(std::string_view form, std::string_view control) noexcept {
    const auto* const found = std::find_if(kControls.begin(), kControls.end(), [&](const ControlId& entry) {
        return entry.form == form && entry.control == control;
    });
    return found == kControls.end() ? 0 : found->id;
}

std::string_view controlName(std::string_view form, int id) noexcept {
    const auto* const found = std::find_if(kControls.begin(), kControls.end(), [&](const ControlId& entry) {
        return entry.form == form && entry.id == id;
    });
    return found == kControls.end() ? std::string_view() : found->control;
}

} // namespace windows
