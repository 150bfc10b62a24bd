// Automation values between VARIANT and base::Variant.
#pragma once

#include "base/variant.h"

#include <windows.h>

#include <oleauto.h>

namespace windows::com {

[[nodiscard]] constexpr VARIANT_BOOL toVariantBool(bool flag) noexcept {
    return flag ? VARIANT_TRUE : VARIANT_FALSE;
}

// Owns a VARIANT and what it holds.
class ScopedVariant {
public:
    ScopedVariant() noexcept { VariantInit(&m_value); }
    ScopedVariant(const ScopedVariant&) = delete;
    ScopedVariant& operator=(const ScopedVariant&) = delete;
    ~ScopedVariant() { VariantClear(&m_value); }

    [[nodiscard]] VARIANT& get() noexcept { return m_value; }
    [[nodiscard]] const VARIANT& get() const noexcept { return m_value; }
    // Hands the content to the caller.
    [[nodiscard]] VARIANT release() noexcept;

private:
    VARIANT m_value;
};

// References are followed. Integers of any width become Integer where they fit, else Double; Currency and Decimal
// become Double; a Date becomes the text that the user's locale gives it; an omitted argument is Empty. What the core
// has no type for (arrays, records, objects that are no automation objects) raises 13.
[[nodiscard]] base::Variant fromVariant(const VARIANT& value);

// Fills an empty `result`. An object that did not come from a host raises 13.
void toVariant(const base::Variant& value, ScopedVariant& result);

} // namespace windows::com
