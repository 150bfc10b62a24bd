// The example web service from outside: what a client sends and gets, and what is in the data folder afterwards.
#include <gtest/gtest.h>
#include <httplib.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

constexpr const char* kXml = "text/xml; charset=utf-8";
const std::string kNoPayload;

class Supplier : public testing::Test {
protected:
    void SetUp() override { ASSERT_NE(environment("SUPPLIER_HTTP"), "") << "run it by with_supplier"; }
    void TearDown() override { behave(""); }

    // Posts one command for profile 1001 and returns the answer's body.
    std::string send(const std::string& command, const std::string& payload = kNoPayload,
                     const std::string& login = R"(password="SECRET")") {
        return post("<commands profile=\"1001\" " + login + "><command name=\"" + command + "\" lastdate=\"7\">" +
                    payload + "</command></commands>");
    }

    std::string post(const std::string& body) {
        const httplib::Result answer = m_client.Post("/", body, kXml);
        status = answer ? answer->status : 0;
        return answer ? answer->body : httplib::to_string(answer.error());
    }

    static void behave(const std::string& rules) { write("behaviour.xml", "<behaviour>" + rules + "</behaviour>"); }

    static void write(const std::string& name, const std::string& bytes) {
        std::ofstream(environment("SUPPLIER_DATA") + "/" + name, std::ios::binary) << bytes;
    }

    static std::string stored(const std::string& name) {
        std::ifstream file(environment("SUPPLIER_DATA") + "/" + name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    httplib::Client m_client{environment("SUPPLIER_HTTP")};
    int status = 0;
};

TEST_F(Supplier, AnswersAConnectionTestOverBothSchemesAndLogsIt) {
    httplib::Client secure(environment("SUPPLIER_HTTPS"));
    secure.set_ca_cert_path(environment("SUPPLIER_CA").c_str());
    for (httplib::Client* client : {&m_client, &secure}) {
        const httplib::Result page = client->Get("/");
        ASSERT_TRUE(page) << httplib::to_string(page.error());
        EXPECT_EQ(page->status, 200);
        EXPECT_NE(page->body.find("is running"), std::string::npos);
    }
    EXPECT_NE(stored("requests.log").find(" https GET / bytes=0 status=200\n"), std::string::npos);
}

TEST_F(Supplier, LetsOnlyAccountsWithTheirPasswordIn) {
    EXPECT_NE(send("getaccount130").find("<account profile=\"1001\"/>"), std::string::npos);
    const std::string refused = R"(<results error="The profile or the password is not correct."/>)";
    EXPECT_EQ(send("getaccount130", kNoPayload, R"(password="WRONG")"), refused);
    EXPECT_EQ(send("getaccount130", kNoPayload, ""), refused);

    for (const char* command : {"getaccount130", "sendproductgroups210"}) { // a run names both passwords to its end
        EXPECT_NE(send(command, kNoPayload, R"(password="SECRET" newpassword="NEXT")"), refused);
    }
    EXPECT_EQ(send("getaccount130"), refused);
    EXPECT_NE(send("getaccount130", kNoPayload, R"(password="NEXT" newpassword="SECRET")"), refused);
    EXPECT_EQ(stored("requests.log").find("SECRET"), std::string::npos);
}

TEST_F(Supplier, KeepsWhatIsSentAsTheMarksSay) {
    send("SendImageLinksAll210", R"(<images><p f1="A" f2="a.jpg"/><p f1="B" f2="b.jpg" f3="deleted"/></images>)");
    EXPECT_EQ(stored("images-1001.xml"), R"(<images><p f1="A" f2="a.jpg"/></images>)");

    EXPECT_EQ(send("sendimagelinks210",
                   R"(<images><p f1="C" f2="c.jpg" f3="created"/><p f1="A" f2="a.jpg" f3="deleted"/></images>)"),
              R"(<results><command name="sendimagelinks210" redo="false">)"
              R"(<accepted created="1" deleted="1" stored="1"/></command></results>)");
    EXPECT_EQ(stored("images-1001.xml"), R"(<images><p f1="C" f2="c.jpg"/></images>)");

    send("sendproductgroups210", R"(<productgroups kind="x"><group>Oil</group></productgroups>)");
    EXPECT_EQ(stored("productgroups-1001.xml"), R"(<productgroups kind="x"><group>Oil</group></productgroups>)");
    EXPECT_NE(stored("requests.log").find(" command=sendimagelinks210 profile=1001 lastdate=7"), std::string::npos);
}

TEST_F(Supplier, BehavesAsTheFileSaysFromTheNextRequestOn) {
    behave(R"(<redo command="getaccount130" times="2"/><fail command="getaccount400" error="Not today."/>)");
    std::string repetitions;
    for (int i = 0; i < 4; ++i) {
        repetitions += send("getaccount130").find(R"(redo="true")") != std::string::npos ? 'r' : '-';
    }
    EXPECT_EQ(repetitions, "rr-r");
    EXPECT_EQ(send("getaccount400"), "<results><error>Not today.</error></results>");

    behave(
        R"(<answer command="upgrade100" latestversion="7.2"><file webname="files/a.exe" filename="a.exe"/></answer>)");
    EXPECT_EQ(send("upgrade100"), R"(<results><command name="upgrade100" redo="false" latestversion="7.2">)"
                                  R"(<file webname="files/a.exe" filename="a.exe"/></command></results>)");

    behave(R"(<off message="Back at noon."/>)");
    EXPECT_EQ(send("getaccount130"), "<SYSDOWN><message>Back at noon.</message></SYSDOWN>");
    EXPECT_EQ(status, 503);
    behave("<off/>");
    EXPECT_EQ(send("getaccount130"), "<SYSDOWN></SYSDOWN>");
}

TEST_F(Supplier, SendsFilesAndPartsOfTheVersionThatTheClientKnows) {
    write("files/setup.exe", "0123456789");
    const httplib::Result whole = m_client.Get("/files/setup.exe");
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->body, "0123456789");
    const std::string etag = whole->get_header_value("ETag");

    const struct {
        const char* name;
        httplib::Headers headers;
        const char* body;
        int status;
    } rows[] = {
        {"the rest", {{"Range", "bytes=4-"}}, "456789", 206},
        {"the rest of this version", {{"Range", "bytes=4-"}, {"If-Range", etag}}, "456789", 206},
        {"the rest of another version", {{"Range", "bytes=4-"}, {"If-Range", "\"old\""}}, "0123456789", 200},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const httplib::Result part = m_client.Get("/files/setup.exe", row.headers);
        EXPECT_EQ(part->status, row.status);
        EXPECT_EQ(part->body, row.body);
    }
    EXPECT_EQ(m_client.Get("/files/setup.exe", {{"Range", "bytes=20-"}})->status, 416);

    behave(R"(<cut file="setup.exe" after="4"/>)");
    std::string beginning;
    const auto receive = [&](const char* bytes, std::size_t count) {
        beginning.append(bytes, count);
        return true;
    };
    EXPECT_FALSE(m_client.Get("/files/setup.exe", receive)) << "it breaks off";
    EXPECT_EQ(beginning, "0123");
    EXPECT_EQ(m_client.Get("/files/setup.exe", rows[1].headers)->body, "456789");
    behave("");
    for (const char* outside : {"/files/../accounts.xml", "/files/%2e%2e/accounts.xml", "/files/..%5Caccounts.xml",
                                "/files//etc/passwd", "/files/", "/accounts.xml"}) {
        EXPECT_EQ(m_client.Get(outside)->status, 404) << outside;
    }
}

TEST_F(Supplier, AnswersWhatIsWrongClearlyAndGoesOn) {
    const struct {
        const char* body;
        const char* answer;
        int status;
    } rows[] = {
        {"", "The request is no XML", 400},
        {"<commands><command/>", "The request is no XML", 400},
        {"<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><commands><command>&e;</command></commands>", "no XML",
         400},
        {"<results/>", "exactly one command", 400},
        {"<commands><command/><command/></commands>", "exactly one command", 400},
        {R"(<commands profile="../1001" password="SECRET"><command name="getaccount130"/></commands>)", "not correct",
         200},
        {R"(<commands profile="1001" password="SECRET"><command name="x'y"/></commands>)", "does not know", 200},
        {R"(<commands profile="1001" password="SECRET"><command name="sendimagelinks210"/></commands>)", "no images",
         200},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.body);
        EXPECT_NE(post(row.body).find(row.answer), std::string::npos);
        EXPECT_EQ(status, row.status);
    }
    post(std::string(65 << 20, 'x'));
    EXPECT_EQ(status, 413);
    write("behaviour.xml", "<behaviour");
    EXPECT_NE(send("getaccount130").find("behaviour.xml: "), std::string::npos);
    EXPECT_EQ(status, 500);
    EXPECT_EQ(m_client.Get("/nothing")->status, 404);
}

} // namespace
