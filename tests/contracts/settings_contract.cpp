#include "contracts/settings_contract.h"

#include "base/error_number.h"

#include <vector>

namespace contracts {

std::string SettingsContract::application() {
    const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
    return "QviContract " + name.substr(0, name.find('/'));
}

SettingsContract::~SettingsContract() = default;

namespace {

TEST_P(SettingsContract, ValuesComeBackUnderNamesInAnyCase) {
    const std::vector<std::string> values = {"Saved",
                                             "",
                                             " blanks  kept ",
                                             "line\r\nbreak",
                                             "\xC3\xA9 \xE4\xBA\xA7 \xF0\x9F\x96\xBC",
                                             "lone surrogate \xED\xA0\x80 here",
                                             std::string(40'000, 'v')};
    for (const std::string& value : values) {
        store().set(application(), "Main", "ImageModify", value);
        EXPECT_EQ(store().get(application(), "Main", "ImageModify", "fallback"), value);
        EXPECT_EQ(store().get(application(), "MAIN", "imagemodify", "fallback"), value);
    }
    store().set(application(), "main", "IMAGEMODIFY", "other spelling");
    EXPECT_EQ(store().get(application(), "Main", "ImageModify"), "other spelling");
    EXPECT_EQ(store().get(application(), "Other", "ImageModify", "none"), "none");

    store().set(application(), "Main", "Cut", std::string("up to\0here", 10)); // as every other reader sees it
    EXPECT_EQ(store().get(application(), "Main", "Cut"), "up to");
}

TEST_P(SettingsContract, MissingNamesReadAsTheFallback) {
    store().set(application(), "Main", "Key", "value");
    struct Row {
        std::string application, section, key;
    };
    const std::vector<Row> rows = {{application(), "Main", "Missing"},
                                   {application(), "Missing", "Key"},
                                   {"No Such Application", "Main", "Key"},
                                   {"", "Main", "Key"},
                                   {application(), "", "Key"},
                                   {application(), "Main", ""},
                                   {"", "", ""},
                                   {application() + "\\", "Main", "Key"},
                                   {application(), std::string(1000, 's'), "Key"}};
    for (const Row& row : rows) {
        EXPECT_EQ(store().get(row.application, row.section, row.key, "fallback"), "fallback")
            << row.application << "|" << row.section << "|" << row.key;
    }
}

TEST_P(SettingsContract, IncompleteNamesAreNotWrittenElsewhereInTheTree) {
    // Without the refusal an empty application would make the section an application of its own.
    store().set("", application(), "Key", "stray");
    store().set("\\", application(), "Key", "stray");
    store().set(application(), "", "Key", "stray");
    store().set(application(), "\\Main", "Key", "stray");
    store().set(application(), "Main", "", "stray");
    EXPECT_EQ(store().get(application(), "Main", "Key", "none"), "none");
    EXPECT_EQ(store().get(application(), "Main", "", "none"), "none");
    EXPECT_EQ(base::errorNumber([&] { store().remove("", application(), "Key"); }), 5);
}

TEST_P(SettingsContract, RemovingTakesOneValueAndMissingOnesRaise5) {
    store().set(application(), "Main", "A", "1");
    store().set(application(), "Main", "B", "2");
    store().remove(application(), "MAIN", "a");
    EXPECT_EQ(store().get(application(), "Main", "A", "none"), "none");
    EXPECT_EQ(store().get(application(), "Main", "B", "none"), "2");
    EXPECT_EQ(base::errorNumber([&] { store().remove(application(), "Main", "A"); }), 5);
    EXPECT_EQ(base::errorNumber([&] { store().remove(application(), "Missing", "A"); }), 5);
    EXPECT_EQ(base::errorNumber([&] { store().remove(application(), "Main", ""); }), 5);
    store().remove(application(), "Main", "B");
}

} // namespace
} // namespace contracts
