#include "host/modStyles.h"

#include "base/runtime_error.h"

#include <gtest/gtest.h>

namespace host {
namespace {

constexpr std::int32_t kLightEdge = -2147483626; // 0x80000016

TEST(modStyles, NamesMatchInAnyCaseAndEverythingElseGivesTheDefault) {
    const struct {
        base::Variant name;
        std::int32_t color; // with the default 7
    } kRows[] = {
        {"BLACK", 0},
        {"red", 0x0000FF},
        {"Blue", 0xFF0000},
        {"cyan", 0xFFFF00},
        {"LightOrange", 0x80C0FF},
        {"LIGHTBROWN", 0xA8E0EC},
        {"lightgrey", kLightEdge},
        {"Orange", 7},
        {" red", 7},
        {"", 7},
        {base::Empty{}, 7},
        {base::Null{}, 7},
        {255, 7},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(colorFromName(row.name, 7), row.color);
    }
    EXPECT_EQ(colorFromName("Orange"), kLightEdge);
    EXPECT_THROW(static_cast<void>(colorFromName(base::ObjectRef())), base::RuntimeError);
}

} // namespace
} // namespace host
