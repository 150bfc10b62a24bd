// Text at the automation boundary: UTF-8 inside, counted UTF-16 strings (BSTR) outside. Embedded zeros and lone
// surrogates survive both ways; a null BSTR is the empty string.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>
#include <string_view>

namespace windows::com {

[[nodiscard]] std::string fromBstr(BSTR text);

// A new BSTR, never null. The caller owns it. Raises 7.
[[nodiscard]] BSTR newBstr(std::string_view utf8);

// Owns a BSTR.
class Bstr {
public:
    Bstr() = default;
    explicit Bstr(std::string_view utf8) : m_text(newBstr(utf8)) {}
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;
    ~Bstr() { SysFreeString(m_text); }

    [[nodiscard]] BSTR get() const noexcept { return m_text; }
    // For a function that hands a string out; only on an empty object.
    [[nodiscard]] BSTR* out() noexcept { return &m_text; }
    [[nodiscard]] std::string text() const { return fromBstr(m_text); }

private:
    BSTR m_text = nullptr;
};

} // namespace windows::com
