// Late-bound use of a host's objects: the contract against real automation objects, odd values and odd failures.
#include "contracts/late_bound_contract.h"
#include "contracts/late_bound_subjects.h"
#include "windows/com/com_support.h"
#include "windows/com/dispatch_object.h"
#include "windows/com/host_object.h"
#include "windows/com/variant_conversion.h"

#include "base/error_number.h"
namespace com_test {
namespace {

const ComApartment apartment; // the contract makes its objects before a test's own fixture could

const std::vector<std::wstring> kMembers = {L"Text", L"Flag", L"Number", L"Real", L"Nothing_yet", L"Join", L"Fail"};

std::shared_ptr<base::LateBoundObject> makeDispatch() {
    return std::make_shared<windows::com::DispatchObject>(makeHostObject(contracts::makeFakeHostObject(), kMembers));
}

std::shared_ptr<base::LateBoundObject> makeDeferred() {
    return std::make_shared<windows::com::DispatchObject>(
        makeHostObject(contracts::makeFakeHostObject(), kMembers, Reporting::Deferred));
}

// A script's object, of an engine that lives as long as the program.
std::shared_ptr<base::LateBoundObject> makeScripted() {
    static JScript script;
    return std::make_shared<windows::com::DispatchObject>(
        script.object(L"(function () { return { Text: 'C:\\\\QV\\\\', Flag: true, Number: 12, Real: 2.5,"
                      L" Nothing_yet: undefined, Join: function (a, b) { return a + '+' + b; } }; })()"));
}

} // namespace
} // namespace com_test

namespace contracts {
namespace {

INSTANTIATE_TEST_SUITE_P(Automation, LateBoundContract,
                         testing::Values(LateBoundSubject{"dispatch", com_test::makeDispatch},
                                         LateBoundSubject{"deferred", com_test::makeDeferred},
                                         LateBoundSubject{"script", com_test::makeScripted}),
                         testing::PrintToStringParamName());

INSTANTIATE_TEST_SUITE_P(Automation, LateBoundErrorContract,
                         testing::Values(LateBoundSubject{"dispatch", com_test::makeDispatch},
                                         LateBoundSubject{"deferred", com_test::makeDeferred}),
                         testing::PrintToStringParamName());

} // namespace
} // namespace contracts

namespace com_test {
namespace {

using windows::com::fromVariant;
using windows::com::ScopedVariant;
using windows::com::toVariant;

template <typename Fill>
base::Variant converted(VARTYPE type, Fill&& fill) {
    ScopedVariant value;
    V_VT(&value.get()) = type;
    fill(value.get());
    return fromVariant(value.get());
}

TEST(VariantConversion, NumbersOfEveryKindKeepTheirValue) {
    struct Row {
        const char* name;
        base::Variant value;
        base::Variant expected;
    };
    const Row rows[] = {
        {"I1", converted(VT_I1, [](VARIANT& v) { V_I1(&v) = -128; }), -128},
        {"UI1", converted(VT_UI1, [](VARIANT& v) { V_UI1(&v) = 255; }), 255},
        {"I2", converted(VT_I2, [](VARIANT& v) { V_I2(&v) = -32768; }), -32768},
        {"UI2", converted(VT_UI2, [](VARIANT& v) { V_UI2(&v) = 65535; }), 65535},
        {"UI4 small", converted(VT_UI4, [](VARIANT& v) { V_UI4(&v) = 2147483647; }), 2147483647},
        {"UI4 large", converted(VT_UI4, [](VARIANT& v) { V_UI4(&v) = 2147483648U; }), 2147483648.0},
        {"I8 small", converted(VT_I8, [](VARIANT& v) { V_I8(&v) = -5; }), -5},
        {"I8 large", converted(VT_I8, [](VARIANT& v) { V_I8(&v) = -4294967296LL; }), -4294967296.0},
        {"UI8 large", converted(VT_UI8, [](VARIANT& v) { V_UI8(&v) = 1ULL << 63; }), 9223372036854775808.0},
        {"R4", converted(VT_R4, [](VARIANT& v) { V_R4(&v) = 0.5F; }), 0.5},
        {"CY", converted(VT_CY, [](VARIANT& v) { V_CY(&v).int64 = 12'500; }), 1.25},
        {"BOOL 1", converted(VT_BOOL, [](VARIANT& v) { V_BOOL(&v) = 1; }), true},
        {"omitted", converted(VT_ERROR, [](VARIANT& v) { V_ERROR(&v) = DISP_E_PARAMNOTFOUND; }), base::Empty{}},
        {"null string", converted(VT_BSTR, [](VARIANT& v) { V_BSTR(&v) = nullptr; }), std::string()},
        {"null unknown", converted(VT_UNKNOWN, [](VARIANT& v) { V_UNKNOWN(&v) = nullptr; }), base::ObjectRef()},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.value, row.expected) << row.name;
        EXPECT_EQ(row.value.index(), row.expected.index()) << row.name;
    }
}

TEST(VariantConversion, DecimalsAndDatesBecomeWhatAutomationMakesOfThem) {
    VARIANT decimal;
    VariantInit(&decimal);
    VarDecFromR8(1.5, &V_DECIMAL(&decimal));
    V_VT(&decimal) = VT_DECIMAL;
    EXPECT_EQ(fromVariant(decimal), base::Variant(1.5));

    BSTR expected = nullptr;
    VarBstrFromDate(46348.5, LOCALE_USER_DEFAULT, 0, &expected);
    const base::Variant date = converted(VT_DATE, [](VARIANT& v) { V_DATE(&v) = 46348.5; });
    EXPECT_EQ(base::toText(date), std::string(expected, expected + SysStringLen(expected)));
    SysFreeString(expected);
}

TEST(VariantConversion, ReferencesAreFollowed) {
    VARIANT_BOOL flag = VARIANT_TRUE;
    EXPECT_EQ(converted(VT_BYREF | VT_BOOL, [&](VARIANT& v) { V_BOOLREF(&v) = &flag; }), base::Variant(true));
    VARIANT inner;
    VariantInit(&inner);
    V_VT(&inner) = VT_I2;
    V_I2(&inner) = 7;
    EXPECT_EQ(converted(VT_BYREF | VT_VARIANT, [&](VARIANT& v) { V_VARIANTREF(&v) = &inner; }), base::Variant(7));
}

TEST(VariantConversion, WhatTheCoreHasNoTypeForIsATypeMismatch) {
    const auto errorOf = [](VARTYPE type, auto fill) {
        return base::errorNumber([&] { static_cast<void>(converted(type, fill)); });
    };
    EXPECT_EQ(errorOf(VT_ARRAY | VT_I4, [](VARIANT& v) { V_ARRAY(&v) = SafeArrayCreateVector(VT_I4, 0, 1); }), 13);
    EXPECT_EQ(errorOf(VT_ERROR, [](VARIANT& v) { V_ERROR(&v) = E_FAIL; }), 13);
    ScopedVariant result;
    EXPECT_THROW(toVariant(base::ObjectRef(contracts::makeFakeHostObject()), result), base::RuntimeError);
}

TEST(DispatchObject, AFailingScriptFunctionRaisesWhateverTheEngineTells) {
    JScript script;
    windows::com::DispatchObject object(script.object(L"({ Fail: function () { throw 'no'; } })"));
    EXPECT_THROW(object.call("Fail", {}), base::RuntimeError);
}

TEST(DispatchObject, AnObjectReadFromAHostGoesBackAsTheSameObject) {
    const auto fake = contracts::makeFakeHostObject();
    windows::com::DispatchObject outer(makeHostObject(fake, kMembers));
    const auto inner = makeHostObject(contracts::makeFakeHostObject(), kMembers);
    outer.put("Text", std::make_shared<windows::com::DispatchObject>(inner)); // refuses "by reference", takes the value
    const base::Variant read = outer.get("Text");
    const auto* object = dynamic_cast<const windows::com::DispatchObject*>(std::get<base::ObjectRef>(read).get());
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->dispatch(), inner);
}

} // namespace
} // namespace com_test
