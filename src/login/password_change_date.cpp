#include "login/password_change_date.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace login {
namespace {

constexpr std::string_view kValueName = "PSD";
constexpr std::string_view kDigits = "0123456789abcdef";

std::string toHex(std::string_view bytes) {
    std::string hex;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        hex += kDigits[byte >> 4U];
        hex += kDigits[byte & 0xFU];
    }
    return hex;
}

// Nothing for what toHex() does not make.
std::string fromHex(std::string_view hex) {
    std::string bytes;
    if (hex.size() % 2 != 0 || hex.find_first_not_of(kDigits) != std::string_view::npos) {
        return bytes;
    }
    for (std::size_t i = 0; i < hex.size(); i += 2) {
        bytes += static_cast<char>(kDigits.find(hex[i]) * 16 + kDigits.find(hex[i + 1]));
    }
    return bytes;
}

} // namespace

PasswordChangeDate::PasswordChangeDate(ports::Settings& settings, ports::DataProtection& protection, Login login)
    : m_settings(settings), m_protection(protection), m_login(std::move(login)) {}

std::optional<std::chrono::sys_days> PasswordChangeDate::read() const {
    const std::string kept = m_settings.get(m_login.gSettingString, section(), kValueName);
    const std::optional<std::string> stamp = m_protection.unprotect(fromHex(kept), key());
    return stamp ? base::dayOf(*stamp) : std::nullopt;
}

void PasswordChangeDate::record(const base::DateTime& day) const {
    m_settings.set(m_login.gSettingString, section(), kValueName,
                   toHex(m_protection.protect(base::dateStamp(day), key())));
}

std::string PasswordChangeDate::section() const {
    return m_login.gWebService + m_login.gProfileNumber;
}

// Zeros between the parts, so that no two logins have the same key.
std::string PasswordChangeDate::key() const {
    return m_login.gWebService + '\0' + m_login.account + '\0' + m_login.gProfileNumber;
}

} // namespace login
