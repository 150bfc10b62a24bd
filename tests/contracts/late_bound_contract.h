// What every base::LateBoundObject must do, run against the fake and against real automation objects.
//
// The object under test has the properties Text "C:\QV\", Flag true, Number 12, Real 2.5 and Nothing_yet (Empty), the
// method Join(a, b), which returns a & "+" & b, and for the error contract the method Fail, which
// raises error 1234 of the source "Host" with the description "Host says no".
#pragma once

#include "base/error_number.h"
#include "base/late_bound.h"
#include "base/runtime_error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace contracts {

struct LateBoundSubject {
    std::string name;
    std::function<std::shared_ptr<base::LateBoundObject>()> make;
};

inline std::ostream& operator<<(std::ostream& out, const LateBoundSubject& subject) {
    return out << subject.name;
}

class LateBoundContract : public testing::TestWithParam<LateBoundSubject> {
protected:
    std::shared_ptr<base::LateBoundObject> object = GetParam().make();
};

TEST_P(LateBoundContract, ReadsEachTypeOfValueByNameInAnyCase) {
    EXPECT_EQ(object->get("Text"), base::Variant(std::string("C:\\QV\\")));
    EXPECT_EQ(object->get("tEXT"), base::Variant(std::string("C:\\QV\\")));
    EXPECT_EQ(object->get("Flag"), base::Variant(true));
    EXPECT_EQ(object->get("NUMBER"), base::Variant(12));
    EXPECT_EQ(object->get("Real"), base::Variant(2.5));
    EXPECT_EQ(object->get("Nothing_yet"), base::Variant(base::Empty{}));
}

TEST_P(LateBoundContract, ReadsBackWhatItWrote) {
    using namespace std::string_literals;
    const base::Variant values[] = {
        "caf\xC3\xA9 \xE2\x82\xAC \xF0\x9D\x84\x9E"s, "a\0b"s, ""s, false, -7, 0.125, base::Null{}};
    for (const base::Variant& value : values) {
        object->put("text", value);
        EXPECT_EQ(object->get("Text"), value);
    }
}

TEST_P(LateBoundContract, KeepsTheIdentityOfObjects) {
    const base::ObjectRef none;
    object->put("Text", none);
    const base::Variant read = object->get("Text");
    ASSERT_TRUE(std::holds_alternative<base::ObjectRef>(read));
    EXPECT_EQ(std::get<base::ObjectRef>(read), nullptr);
}

TEST_P(LateBoundContract, PassesArgumentsInOrder) {
    EXPECT_EQ(object->call("join", {std::string("a"), std::string("b")}), base::Variant(std::string("a+b")));
}

TEST_P(LateBoundContract, AMissingMemberIsError438) {
    EXPECT_EQ(base::errorNumber([&] { static_cast<void>(object->get("Absent")); }), base::error::kNoSuchMember);
    EXPECT_EQ(base::errorNumber([&] { object->put("Absent", 1); }), base::error::kNoSuchMember);
    EXPECT_EQ(base::errorNumber([&] { object->call("Absent", {}); }), base::error::kNoSuchMember);
}

// Apart, because a script engine tells errors of its objects to its own host only.
class LateBoundErrorContract : public LateBoundContract {};

TEST_P(LateBoundErrorContract, TheObjectsOwnErrorPassesThrough) {
    try {
        object->call("Fail", {});
        FAIL() << "nothing raised";
    } catch (const base::RuntimeError& error) {
        EXPECT_EQ(error.number(), 1234);
        EXPECT_EQ(error.source(), "Host");
        EXPECT_EQ(error.description(), "Host says no");
    }
}

} // namespace contracts
