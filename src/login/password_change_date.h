// The day of the user's last password change, kept in the user's settings so that only this user's programs can read
// it.
#pragma once

#include "base/date_time.h"
#include "ports/data_protection.h"
#include "ports/settings.h"

#include <chrono>
#include <optional>
#include <string>

namespace login {

class PasswordChangeDate {
public:
    // Which of the user's logins it is about.
    struct Login {
        std::string gSettingString; // the settings' application; empty: nothing is kept
        std::string gWebService;
        std::string gProfileNumber;
        std::string account;
    };

    // The ports outlive the object.
    PasswordChangeDate(ports::Settings& settings, ports::DataProtection& protection, Login login);

    // None when none was recorded, or what was recorded cannot be read: damaged, or copied from another user or login.
    [[nodiscard]] std::optional<std::chrono::sys_days> read() const;

    // Raises what the ports raise.
    void record(const base::DateTime& day) const;

private:
    [[nodiscard]] std::string section() const;
    [[nodiscard]] std::string key() const;

    ports::Settings& m_settings;
    ports::DataProtection& m_protection;
    Login m_login;
};

} // namespace login
