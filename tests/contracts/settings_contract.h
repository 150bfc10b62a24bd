// What every per-user settings store must do.
#pragma once

#include "ports/settings.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace contracts {

// Each test uses an application name of its own, so that a real store needs no clean start.
class SettingsContract : public testing::TestWithParam<std::function<std::unique_ptr<ports::Settings>()>> {
protected:
    SettingsContract() : m_store(GetParam()()) {}
    ~SettingsContract() override;

    ports::Settings& store() { return *m_store; }
    [[nodiscard]] static std::string application();

private:
    std::unique_ptr<ports::Settings> m_store;
};

} // namespace contracts
