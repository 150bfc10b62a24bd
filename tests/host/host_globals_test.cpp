#include "host/host_globals.h"

#include "base/error_number.h"
#include "base/runtime_error.h"
#include "fakes/fake_late_bound.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>

namespace host {
namespace {

TEST(HostGlobals, PropertiesReadAsTextAndMissingOnesRaise) {
    const auto object = std::make_shared<fakes::FakeLateBound>();
    object->addProperty("gProfileNumber", std::int32_t{17});
    object->addProperty("gWebService", base::Empty{});
    object->addProperty("gQuorXMLpath", base::Null{});
    const HostGlobals globals(object);
    EXPECT_EQ(globals.text("gprofilenumber"), "17");
    EXPECT_EQ(globals.text("gWebService"), "");
    EXPECT_EQ(globals.text("gQuorXMLpath"), "");
    EXPECT_EQ(base::errorNumber([&] { static_cast<void>(globals.text("gfilespath")); }), base::error::kNoSuchMember);
    EXPECT_EQ(globals.valueIfPresent("gfilespath"), base::Variant{});
    EXPECT_EQ(base::errorNumber([] { static_cast<void>(HostGlobals().text("gfilespath")); }),
              base::error::kObjectNotSet);
}

TEST(HostGlobals, AnOptionIsAbsentInEveryWayThatHostsSayNothing) {
    const auto object = std::make_shared<fakes::FakeLateBound>();
    base::Variant answer;
    EXPECT_EQ(HostGlobals(object).option("FrameColor"), std::nullopt); // has no GetValue
    object->addMethod("GetValue", [&](const auto&) { return answer; });
    const HostGlobals globals(object);
    for (const base::Variant& nothing :
         {base::Variant(), base::Variant(base::Null{}), base::Variant("NOT_FOUND"), base::Variant(base::ObjectRef{})}) {
        answer = nothing;
        EXPECT_EQ(globals.option("FrameColor"), std::nullopt);
    }
    answer = std::int32_t{30};
    EXPECT_EQ(globals.option("PasswChangeDays"), "30");
    object->failOn("GetValue", base::error::kOverflow);
    EXPECT_EQ(base::errorNumber([&] { static_cast<void>(globals.option("FrameColor")); }), base::error::kOverflow);
}

} // namespace
} // namespace host
