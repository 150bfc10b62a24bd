#include "exchange/answer.h"

#include "connection/https_control.h"
#include "exchange/failure.h"
#include "exchange/request_text.h"
#include "fakes/fake_code_page.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace exchange {
namespace {

using namespace std::string_literals;

TEST(Answer, BytesBecomeTextAsTheyAreLabelled) {
    struct Row {
        std::string bytes, contentType, text;
    };
    const std::vector<Row> rows = {
        {"caf\xC3\xA9", "", "caf\xC3\xA9"},
        {"caf\xE9", "", "caf\xC3\xA9"},
        {"\xEF\xBB\xBF<a/>", "", "<a/>"},
        {"\xFF\xFE<\0\xE9\0"s, "", "<\xC3\xA9"},
        {"\xFE\xFF\0<\0\xE9"s, "", "<\xC3\xA9"},
        {"<?xml version='1.0' encoding='iso-8859-1'?>\xC3\xA9", "text/xml; charset=utf-8",
         "<?xml version='1.0' encoding='iso-8859-1'?>\xC3\x83\xC2\xA9"},
        {"\x80", "text/html; charset=\"Windows-1252\"", "\xE2\x82\xAC"},
        {"\xC3\xA9", "text/html; charset=ISO-8859-1; x=y", "\xC3\x83\xC2\xA9"},
    };
    fakes::FakeCodePage ansi;
    for (const Row& row : rows) {
        EXPECT_EQ(answerText(row.bytes, row.contentType, ansi), row.text) << row.bytes;
    }
}

TEST(Answer, ASwitchedOffServiceSaysWhatItHasToSay) {
    const std::string standard = "The Quorvantis server has currently been turned off. Please try again later.";
    struct Row {
        std::string answer, message, note;
    };
    const std::vector<Row> rows = {
        {"<SYSDOWN><message> Back at 5 </message></SYSDOWN>", "Back at 5", "Back at 5"},
        {"<a><SysDown>Closed</SysDown><x><MESSAGE>Stock-taking</MESSAGE></x></a>", "Stock-taking", "Stock-taking"},
        {"<sysdown>Closed</sysdown>", "Closed", "Closed"},
        {"<SYSDOWN></SYSDOWN>", standard, "Message not set"},
        {"<br><SYSDOWN><message>x</message></SYSDOWN>", standard, "Message not set"},
        {"<SYSDOWN><message>Back at", standard, "Not all XML received back"},
    };
    for (const Row& row : rows) {
        const std::optional<SystemDown> down = systemDown(row.answer);
        ASSERT_TRUE(down) << row.answer;
        EXPECT_EQ(down->message, row.message) << row.answer;
        EXPECT_EQ(down->note, row.note) << row.answer;
    }
    EXPECT_FALSE(systemDown("<a>SYSDOWN</a>"));
}

TEST(Answer, TheServersErrorStandsAtTheRootOrRightBelowIt) {
    const std::vector<std::pair<std::string, std::optional<std::string>>> rows = {
        {"<a error='No'><error>later</error></a>", "No"},
        {"<a error=''>text<!-- c --><error>Wrong password</error></a>", "Wrong password"},
        {"<a><error/></a>", ""},
        {"<a><b/><error>x</error></a>", std::nullopt},
        {"<a><Error>x</Error></a>", std::nullopt},
    };
    for (const auto& [answer, error] : rows) {
        xml::XmlDocument results;
        ASSERT_TRUE(results.load(answer));
        EXPECT_EQ(errorIn(results), error) << answer;
    }
}

TEST(Answer, TheReturnCommandIsPostedUnderItsName) {
    xml::XmlDocument request;
    ASSERT_TRUE(request.load("<commands password='a&gt;b' newpassword='c'><command name='Ret_sendorders130'/>"
                             "<x>Ret_sendorders ret_sendorders</x></commands>"));
    EXPECT_EQ(postedText(request.xml()),
              "<commands password=\"a&gt;b\" newpassword=\"c\"><command name=\"sendorders130\"/>"
              "<x>sendorders ret_sendorders</x></commands>");
}

TEST(Answer, TheTraceShowsTheWholeRequestButThePasswords) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"<commands password='a&gt;b' newpassword=''><command password='x' name='Ret_sendorders130'/></commands>",
         "<commands password=\"***\" newpassword=\"***\"><command password=\"x\" "
         "name=\"Ret_sendorders130\"/></commands>"},
        {"<a oldpassword='1' hint='\" password=>' password='\"s&#10;'/>",
         "<a oldpassword=\"1\" hint=\"&quot; password=&gt;\" password=\"***\"/>"},
        {"<a xmlns='x> password=' xmlns:b='\" newpassword=\"' password='s'>t</a>",
         "<a xmlns=\"x> password=\" xmlns:b='\" newpassword=\"' password=\"***\">t</a>"},
        {"<?xml version='1.0' standalone='yes'?><!DOCTYPE a [<!ENTITY e '>'>]><!--<a password=\"c\"--><?p '?>"
         "<a password='s'/><!-- password=\"c\"-->",
         "<?xml version=\"1.0\" standalone=\"yes\"?>\n<!DOCTYPE a [\n<!ENTITY e \">\">\n]>\n"
         "<!--<a password=\"c\"-->\n<?p '?>\n<a password=\"***\"/>\n<!-- password=\"c\"-->"},
        {"<a/>", "<a/>"},
    };
    for (const auto& [source, logged] : rows) {
        xml::XmlDocument request;
        ASSERT_TRUE(request.load(source)) << source;
        EXPECT_EQ(loggedText(request, request.xml()), logged);
    }
    EXPECT_EQ(loggedText(xml::XmlDocument(), ""), "");
}

TEST(Answer, AFailureIsDescribedByTheAnswerOrElseByItsReason) {
    using Kind = Failure::Kind;
    constexpr std::int32_t kNoConnection = connection::https_error::kNoConnection;
    struct Row {
        std::string answer, reason;
        bool proxy;
        Kind kind;
        std::string begins;
        bool settings;
    };
    const std::vector<Row> rows = {
        {"<p>Gateway timed out</p>", "HTTP protocol error. 504", true, Kind::TimedOut, "The server timed out", false},
        {"404", "The operation timed out.", false, Kind::TimedOut, "The server timed out", false},
        {"407 Proxy Authentication Required", "x", true, Kind::Authorisation, "Authorisation error returned.", true},
        {"", "HTTP protocol error. 407 Proxy Authentication Required", true, Kind::Authorisation, "Authorisation",
         true},
        {"401 not authorised", "x", false, Kind::Supplier, "System error on suppliers side", false},
        {"<h1>404</h1>", "x", true, Kind::NotFound, "Error while connecting to [http://s/].", true},
        {"", "HTTP protocol error. 404 Not Found", false, Kind::NotFound, "Error while connecting", true},
        {"Internal error 500", "HTTP protocol error. 404 Not Found", false, Kind::Supplier, "System error", false},
    };
    for (const Row& row : rows) {
        const Failure failure = describeFailure(kNoConnection, row.reason, "http://s/", row.answer, row.proxy);
        EXPECT_EQ(failure.kind, row.kind) << row.answer;
        EXPECT_TRUE(failure.text().starts_with(row.begins)) << failure.text();
        EXPECT_EQ(failure.settingsMayHelp(), row.settings) << row.answer;
        EXPECT_EQ(failure.text().find("\r\n\r\n(" + row.reason + ")") != std::string::npos, row.kind != Kind::Supplier);
    }
    EXPECT_EQ(describeFailure(kNoConnection + 1, "x", "", "404 timed out", true).kind, Kind::NotConnected);
}

} // namespace
} // namespace exchange
