// What every data protection must do.
#pragma once

#include "ports/data_protection.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace contracts {

class DataProtectionContract : public testing::TestWithParam<std::function<std::unique_ptr<ports::DataProtection>()>> {
protected:
    DataProtectionContract() : m_protection(GetParam()()) {}
    ~DataProtectionContract() override;

    ports::DataProtection& protection() { return *m_protection; }

private:
    std::unique_ptr<ports::DataProtection> m_protection;
};

} // namespace contracts
