// The option table with its oddities: the scan one row past the end and the two kinds of comparison.
#include "host/clsglobals.h"

#include "base/error_number.h"
#include "base/runtime_error.h"
#include "fakes/fake_desktop.h"
#include "xml/xml_document.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using base::Variant;
using namespace std::string_literals;

class clsglobalsTest : public testing::Test {
protected:
    void load(std::string_view options) {
        xml::XmlDocument doc;
        ASSERT_TRUE(doc.loadXml("<configuration>" + std::string(options) + "</configuration>"));
        globals.LoadGlobals(doc);
    }

    fakes::FakeDesktop desktop;
    host::clsglobals globals{desktop};
};

TEST_F(clsglobalsTest, FindsLoadedOptionsWhateverTheCase) {
    load("<options><gfilespath>C:\\files\\</gfilespath><!--note--><days>30</days></options>");
    EXPECT_EQ(globals.count(), 3);
    EXPECT_EQ(globals.GetValue("GFILESPATH"s), "C:\\files\\");
    EXPECT_EQ(globals.GetValue("#comment"s), "note");
    EXPECT_EQ(globals.GetValue("none"s), "NOT_FOUND");
    EXPECT_EQ(globals.GetValue(base::Null{}), "NOT_FOUND");

    globals.SetValue("DAYS"s, "40"s); // case matters here: a second row, which GetValue never reaches
    EXPECT_EQ(globals.count(), 4);
    EXPECT_EQ(globals.GetValue("days"s), "30");
    globals.SetValue("days"s, std::int32_t{50});
    EXPECT_EQ(globals.GetValue("Days"s), "50");
}

TEST_F(clsglobalsTest, AddedOptionsLeaveOneRowEmpty) {
    EXPECT_EQ(globals.GetValue(""s), ""); // row 0 of a fresh table is Empty, which equals ""
    globals.SetValue("a"s, "1"s);
    EXPECT_EQ(globals.count(), 1);
    EXPECT_EQ(globals.GetValue("a"s), "1");

    load("<options><x>1</x><y>2</y><z>3</z></options>");
    globals.SetValue("new"s, "4"s);
    EXPECT_EQ(globals.count(), 4);
    globals.SetValue(""s, "row 3"s); // finds the empty row 3: no new row
    EXPECT_EQ(globals.count(), 4);
    EXPECT_EQ(globals.GetValue("new"s), "4");
}

TEST_F(clsglobalsTest, LoadingWithoutOptionsOrWithNone) {
    globals.SetValue("a"s, "1"s);
    load("<other/>");
    EXPECT_EQ(globals.count(), 1);
    load("<options/>");
    EXPECT_EQ(globals.count(), 0);
    EXPECT_EQ(globals.GetValue("a"s), "NOT_FOUND"); // row 1 is past the scan again, though it keeps its contents
}

TEST_F(clsglobalsTest, AFullTableFails) {
    std::string options = "<options>";
    for (int i = 0; i <= 300; ++i) {
        options += "<o" + std::to_string(i) + ">v</o" + std::to_string(i) + ">";
    }
    EXPECT_EQ(base::errorNumber([&] { load(options + "<last>x</last></options>"); }),
              base::error::kSubscriptOutOfRange);
    EXPECT_EQ(globals.count(), 0); // the rows are written, the count is not
    EXPECT_EQ(globals.GetValue("o0"s), "v");

    load(options + "</options>");
    EXPECT_EQ(globals.count(), 301);
    EXPECT_EQ(globals.GetValue("o300"s), "v");
    EXPECT_EQ(globals.GetValue("none"s), "NOT_FOUND");
    EXPECT_EQ(base::errorNumber([&] { globals.SetValue("o300"s, "w"s); }), 0);
    EXPECT_EQ(base::errorNumber([&] { globals.SetValue("none"s, "w"s); }), base::error::kSubscriptOutOfRange);
    EXPECT_EQ(globals.count(), 301);
}

} // namespace
