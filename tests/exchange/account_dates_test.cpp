// The dates of last exchanges, in the settings document that a host holds.
#include "exchange/account_dates.h"

#include "base/runtime_error.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_file_system.h"
#include "fakes/fake_host_document.h"
#include "fakes/fake_late_bound.h"
#include "fakes/scripted_watcher.h"

#include <gtest/gtest.h>

#include <string>

namespace exchange {
namespace {

constexpr std::string_view kDates =
    R"(<settings><other><accountdates orders="19990101"/></other><accountdates prices="20261101" empty="">)"
    R"(<accountdate number="B1" orders="20261102"/><accountdate number="B2" orders="20261103"/></accountdates>)"
    R"(<accountdates prices="19990101"><accountdate number="B3" orders="20261104"/></accountdates></settings>)";

class AccountDatesTest : public testing::Test {
protected:
    AccountDatesTest() {
        files.addFolder("C:\\xml");
        globals->addProperty("gQuorXMLpath", "C:\\xml\\");
        globals->addProperty("gProfileNumber", "4711");
        use("<settings/>");
        setAccount("B", "1");
    }
    void use(std::string_view text) {
        document = std::make_shared<fakes::FakeHostDocument>(files, text);
        globals->addProperty("gdomquorvantis", base::ObjectRef(document));
    }
    void setAccount(const char* branch, const char* number) {
        account = std::make_shared<fakes::FakeLateBound>();
        account->addProperty("Branch", branch);
        account->addProperty("account", number);
    }
    [[nodiscard]] AccountDates dates() {
        Session session;
        session.Globals = globals;
        session.Account = account;
        return {watcher, watcher, clock, session};
    }
    std::string get(std::string_view name, std::string_view specific) { return dates().GetLastDate(name, specific); }
    [[nodiscard]] std::string saved() const { return files.contents("C:\\xml\\quorvantis.xml"); }

    fakes::ScriptedWatcher watcher;
    fakes::FakeFileSystem files;
    fakes::FakeClock clock;
    std::shared_ptr<fakes::FakeLateBound> globals = std::make_shared<fakes::FakeLateBound>();
    std::shared_ptr<fakes::FakeLateBound> account;
    std::shared_ptr<fakes::FakeHostDocument> document;
};

TEST_F(AccountDatesTest, ADateIsFoundWhereItsCommandKeepsIt) {
    use(kDates);
    const struct {
        const char *name, *specific, *branch, *account, *date;
    } kRows[] = {
        {"prices", "no", "B", "1", "20261101"},
        {"prices", "", "B", "1", "20261101"},
        {"prices", "Yes", "B", "1", "20261101"}, // only "yes" means yes
        {"orders", "no", "B", "1", " "},
        {"empty", "no", "B", "1", " "},
        {"orders", "yes", "B", "1", "20261102"},
        {"orders", "yes", "B", "2", "20261103"},
        {"orders", "yes", "", "B3", "20261104"},
        {"orders", "yes", "C", "1", " "}, // another branch's account of the same number
        {"prices", "yes", "B", "1", " "},
        {"orders", "yes", "B'", "\"", " "},
    };
    for (const auto& row : kRows) {
        setAccount(row.branch, row.account);
        EXPECT_EQ(get(row.name, row.specific), row.date) << row.name << row.specific << row.branch << row.account;
    }
    EXPECT_EQ(document->text(), kDates);
}

TEST_F(AccountDatesTest, TheFirstDatesMakeTheirPlaceAndLaterOnesFindIt) {
    dates().SetLastDate("prices", "no");
    dates().SetLastDate("orders", "yes");
    setAccount("C", "1");
    dates().SetLastDate("orders", "yes");
    clock.advance(std::chrono::hours{24});
    dates().SetLastDate("prices", "no");
    dates().SetLastDate("orders", "yes");
    dates().SetLastDate("invoices", "yes");
    EXPECT_EQ(saved(), R"(<settings><accountdates prices="20261116"><accountdate number="B1" orders="20261115"/>)"
                       R"(<accountdate number="C1" orders="20261116" invoices="20261116"/></accountdates></settings>)");
    EXPECT_EQ(get("prices", "no"), "20261116");
    setAccount("B", "1");
    EXPECT_EQ(get("orders", "yes"), "20261115");

    use("<settings/>");
    dates().SetLastDate("orders", "yes"); // the account's element comes first
    EXPECT_EQ(saved(),
              R"(<settings><accountdates><accountdate number="B1" orders="20261116"/></accountdates></settings>)");
    use(kDates);
    setAccount("B", "3");
    dates().SetLastDate("orders", "yes"); // below the second accountdates
    EXPECT_EQ(get("orders", "yes"), "20261116");
}

TEST_F(AccountDatesTest, WithoutAnAccountObjectTheGlobalsAreAskedAndTheProfileNumberStandsIn) {
    account.reset();
    dates().SetLastDate("orders", "yes");
    EXPECT_NE(saved().find("number=\"4711\""), std::string::npos);
    globals->addProperty("account", std::int32_t{12});
    globals->addProperty("Branch", "X");
    dates().SetLastDate("orders", "yes");
    EXPECT_NE(saved().find("number=\"X12\""), std::string::npos);
}

TEST_F(AccountDatesTest, AnApostropheInTheAccountIsPartOfIt) {
    setAccount("O'", "1");
    dates().SetLastDate("orders", "yes");
    dates().SetLastDate("invoices", "yes");
    EXPECT_EQ(get("orders", "yes"), "20261115");
    EXPECT_EQ(saved(), R"(<settings><accountdates><accountdate number="O'1" orders="20261115" invoices="20261115"/>)"
                       "</accountdates></settings>");
}

TEST_F(AccountDatesTest, AHostWithoutTheDocumentIsLeftInPeace) {
    const std::string line = "Error in SetLastDate:Object variable or With block variable not set";
    for (const base::Variant& nothing :
         {base::Variant(), base::Variant(base::Null{}), base::Variant(base::ObjectRef())}) {
        globals->addProperty("gdomquorvantis", nothing);
        EXPECT_EQ(get("prices", "no"), "");
        dates().SetLastDate("prices", "no");
        EXPECT_EQ(watcher.traced, line + "\n");
        watcher.traced.clear();
    }
    globals = std::make_shared<fakes::FakeLateBound>(); // has no such property
    EXPECT_EQ(get("orders", "yes"), "");
    dates().SetLastDate("orders", "yes");
    globals.reset();
    EXPECT_EQ(get("prices", "no"), "");
    dates().SetLastDate("prices", "no");
    EXPECT_EQ(watcher.traced, line + "\n" + line + "\n");
    EXPECT_TRUE(files.files().empty());
}

TEST_F(AccountDatesTest, NamesThatWouldSpoilTheFileAreRefused) {
    for (const char* const name : {"", "1st", "a b", "a:b", "xmlns", "a\"b", "<a/>"}) {
        watcher.whenReported("Error in SetLastDate:Invalid procedure call or argument");
        dates().SetLastDate(name, "no");
        EXPECT_EQ(document->text(), "<settings/>") << name;
        EXPECT_EQ(get(name, "no"), " ");
    }
    EXPECT_TRUE(files.files().empty());
}

TEST_F(AccountDatesTest, FaultsOfTheDocumentAreShown) {
    const struct {
        const char* member;
        std::int32_t error;
        const char *reading, *writing; // null: unaffected
    } kRows[] = {
        {"xml", 438, "Object doesn't support this property or method", nullptr},
        {"documentElement", 438, nullptr, "Object doesn't support this property or method"},
        {"selectSingleNode", base::error::kUnspecified, nullptr, "Application-defined or object-defined error"},
        {"createElement", 438, nullptr, "Object doesn't support this property or method"},
        {"appendChild", 438, nullptr, "Object doesn't support this property or method"},
        {"setAttribute", 438, nullptr, "Object doesn't support this property or method"},
        {"save", base::error::kPermissionDenied, nullptr, "Permission denied"},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.member);
        use("<settings/>");
        document->failOn(row.member, row.error);
        if (row.reading != nullptr) {
            watcher.whenReported("Error in GetLastDate:" + std::string(row.reading));
        }
        EXPECT_EQ(get("prices", "no"), row.reading != nullptr ? "" : " ");
        if (row.writing != nullptr) {
            watcher.whenReported("Error in SetLastDate:" + std::string(row.writing));
        }
        dates().SetLastDate("prices", "no");
    }
    files.lock("C:\\xml\\quorvantis.xml");
    use("<settings/>");
    watcher.whenReported("Error in SetLastDate:Permission denied");
    dates().SetLastDate("prices", "no");

    use(""); // no root
    EXPECT_EQ(get("prices", "no"), " ");
    watcher.whenReported("Error in SetLastDate:Object variable or With block variable not set");
    dates().SetLastDate("prices", "no");
}

TEST_F(AccountDatesTest, OddAnswersOfTheHostAreShown) {
    globals->addProperty("gdomquorvantis", "a text");
    watcher.whenReported("Error in GetLastDate:Type mismatch");
    EXPECT_EQ(get("prices", "no"), "");
    watcher.whenReported("Error in SetLastDate:Type mismatch");
    dates().SetLastDate("prices", "no");

    const auto odd = std::make_shared<fakes::FakeLateBound>();
    globals->addProperty("gdomquorvantis", base::ObjectRef(odd));
    odd->addProperty("xml", "<settings");
    watcher.whenReported("Error in GetLastDate:" + [] {
        xml::XmlDocument broken;
        EXPECT_FALSE(broken.loadXml("<settings"));
        return broken.parseError();
    }());
    EXPECT_EQ(get("prices", "no"), "");
    odd->addProperty("documentElement", 7);
    watcher.whenReported("Error in SetLastDate:Type mismatch");
    dates().SetLastDate("prices", "no");

    use(kDates);
    globals->failOn("gQuorXMLpath", base::error::kOverflow);
    watcher.whenReported("Error in SetLastDate:Overflow");
    dates().SetLastDate("prices", "no");
}

TEST_F(AccountDatesTest, AWholeListIsAnsweredFromOneReading) {
    use(kDates);
    LastDates reading = dates().read();
    dates().SetLastDate("prices", "no");
    EXPECT_EQ(reading.GetLastDate("prices", "no"), "20261101") << "as it stood then";
    EXPECT_EQ(reading.GetLastDate("orders", "yes"), "20261102");
    EXPECT_EQ(account->operations().size(), 2U);
    EXPECT_EQ(reading.GetLastDate("orders", "yes"), "20261102");
    EXPECT_EQ(account->operations().size(), 2U) << "the account is asked for once";

    account->failOn("Branch", base::error::kOverflow);
    LastDates failing = dates().read();
    EXPECT_EQ(failing.GetLastDate("prices", "no"), "20261115");
    watcher.whenReported("Error in GetLastDate:Overflow");
    EXPECT_EQ(failing.GetLastDate("orders", "yes"), "");
    EXPECT_EQ(failing.GetLastDate("prices", "no"), "20261115");
}

} // namespace
} // namespace exchange
