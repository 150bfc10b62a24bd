#include "contracts/data_protection_contract.h"

#include <string>
#include <vector>

namespace contracts {

DataProtectionContract::~DataProtectionContract() = default;

namespace {

TEST_P(DataProtectionContract, BytesComeBackUnderTheirKeyAlone) {
    using namespace std::string_literals;
    for (const std::string& plain : {"20261115"s, ""s, "\0 and \xFF"s, std::string(100'000, 'p')}) {
        const std::string kept = protection().protect(plain, "key\0of the user"s);
        EXPECT_EQ(protection().unprotect(kept, "key\0of the user"s), plain);
        EXPECT_EQ(protection().unprotect(kept, "key"s), std::nullopt);
        EXPECT_EQ(protection().unprotect(kept, ""s), std::nullopt);
    }
    EXPECT_EQ(protection().unprotect(protection().protect("text", ""), ""), "text");
}

TEST_P(DataProtectionContract, NothingCanBeReadOffTheBytes) {
    const std::string kept = protection().protect("20261115", "key");
    EXPECT_EQ(kept.find("2026"), std::string::npos);
    EXPECT_EQ(kept.find("key"), std::string::npos);
    EXPECT_NE(protection().protect("20261115", "key"), kept);
}

TEST_P(DataProtectionContract, DamagedBytesAreNoticed) {
    const std::string kept = protection().protect("20261115", "key");
    std::vector<std::string> damaged{"", "x", "20261115", kept.substr(0, kept.size() - 1), kept.substr(1)};
    damaged.push_back(kept);
    damaged.back().back() = static_cast<char>(damaged.back().back() ^ 1);
    for (const std::string& bytes : damaged) {
        EXPECT_EQ(protection().unprotect(bytes, "key"), std::nullopt) << bytes.size() << " bytes";
    }
}

} // namespace
} // namespace contracts
