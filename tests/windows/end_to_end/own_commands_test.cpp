// Runs of a host that has its own commands, globals and settings document (tests/windows/control_host), with a real
// service: what the component's own window never asks of the control.
#include "windows/end_to_end/shop.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

namespace end_to_end {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string environment(const std::string& name) {
    const char* const value = std::getenv(name.c_str());
    EXPECT_NE(value, nullptr) << name << " is not set: is this run beside the service and the peers?";
    return value == nullptr ? "" : value;
}

std::string supplierFile(const std::string& name) {
    std::string path = "Z:" + environment("SUPPLIER_DATA") + "/" + name;
    std::ranges::replace(path, '/', '\\');
    return path;
}

std::string contentsOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string today() {
    const std::time_t now = std::time(nullptr);
    char text[9];
    std::strftime(text, sizeof text, "%Y%m%d", std::localtime(&now));
    return text;
}

const std::string kPrices = "<command name='prices' show='yes' displaytext='Prices' checked='yes'/>";
const std::string kCompleted =
    "DownloadStart prices\r\nDownloadComplete prices\r\nSendReceiveCompleted\r\nCancelled\r\nEND\r\n";

class OwnCommands : public Shop {
protected:
    OwnCommands() {
        webAddress = environment("SUPPLIER_HTTP") + "/";
        setConnection("DialType", "Manual");
        supplierIs(R"(<answer command="prices"/><answer command="orders"/>)");
        std::ofstream(supplierFile("accounts.xml"))
            << R"(<accounts><account profile="1001" password="SECRET"/></accounts>)";
        write("quorvantis.xml", R"(<quorvantis><shop name="Mine"/><accountdates prices="20200131"/></quorvantis>)");
    }
    ~OwnCommands() override { supplierIs(""); }

    // The options are members of a JScript object.
    void startControl(const std::string& commands, const std::string& options = "") {
        write("commands.xml", "<commands profile='1001'>" + commands + "</commands>");
        std::string path = folder();
        for (std::size_t at = path.find('\\'); at != path.npos; at = path.find('\\', at + 2)) {
            path.insert(at, 1, '\\');
        }
        write("globals.js", "({ gQuorVantisPath: '" + path + "', gQuorXMLpath: '" + path +
                                "', gSettingString: 'EndToEnd', gWebService: 'Supplier', gProfileNumber: '1001',"
                                "Branch: 'B0', account: '4711', gdomquorvantis: host, gBusyWithUpgrade: false,"
                                "GetValue: function (name) { var known = {" +
                                options + "}; return known[name] || 'NOT_FOUND'; } })");
        m_logged = logFile().size();
        startProgram("control_host", "\"" + folder() + "\\\" " + webAddress);
        play("wait frmQVI_sendreceive");
    }
    void logIn(const std::string& password = "secret") {
        play("key Enter\nwait frmLogin\ntype txtPassword " + password + "\nkey Enter\n");
    }
    // Closes the window; what the host has heard until then.
    std::string heard() {
        play("wait frmQVI_sendreceive\nkey Escape\n");
        return hostEnds();
    }

    // What the service was asked for since the host started, a line per command with its date and what came of it.
    [[nodiscard]] std::string requests() const {
        constexpr std::string_view kName = "command=";
        constexpr std::string_view kProfile = "profile=1001 ";
        std::istringstream log(logFile().substr(m_logged));
        std::string lines;
        for (std::string line; std::getline(log, line);) {
            if (const std::size_t at = line.find(kName); at != line.npos) {
                line.erase(0, at + kName.size());
                lines += line.erase(line.find(kProfile), kProfile.size()) + "\n";
            }
        }
        return lines;
    }
    static void supplierIs(const std::string& behaviour) {
        std::ofstream(supplierFile("behaviour.xml"), std::ios::binary) << "<behaviour>" << behaviour << "</behaviour>";
    }

private:
    [[nodiscard]] static std::string logFile() { return contentsOf(supplierFile("requests.log")); }

    std::size_t m_logged = 0;
};

TEST_F(OwnCommands, AccountsFailQuietlyAndEveryCommandKeepsItsDate) {
    supplierIs(R"(<answer command="prices"/><fail command="getaccount400" error="No such account."/>)");
    startControl(
        "<command name='getaccount400' show='yes' displaytext='Account' required='yes'/>"
        "<command name='prices' show='yes' displaytext='Prices' checked='yes'/>"
        "<command name='orders' show='yes' displaytext='Orders' checked='yes' lastdateaccountspecific='yes'/>");
    play(R"(expect lvCommands "+getaccount400|Account| | " "+prices|Prices|20200131| " "+orders|Orders| | ")");
    logIn();
    play(R"(
        box "No such account." OK
        wait frmQVI_sendreceive
        expect-enabled cmdOK
        expect lvCommands "+getaccount400|Account| |Busy" "+prices|Prices|20200131| " "+orders|Orders| | "
    )");
    supplierIs(R"(<redo command="prices" times="2"/><answer command="prices"/><answer command="orders"/>)");
    logIn();
    play("wait frmQVI_sendreceive\nexpect-enabled cmdOK\n");
    logIn();
    play("wait frmQVI_sendreceive\nexpect-enabled cmdOK\n");
    const std::string run = "DownloadStart getaccount400\r\nDownloadComplete getaccount400\r\nDownloadStart prices\r\n"
                            "DownloadComplete prices\r\nDownloadComplete prices\r\nDownloadComplete prices\r\n"
                            "DownloadStart orders\r\nDownloadComplete orders\r\nSendReceiveCompleted\r\n";
    EXPECT_EQ(heard(), "DownloadStart getaccount400\r\n" + run + run + "Cancelled\r\nEND\r\n");
    const auto requestsOf = [](const std::string& account, const std::string& prices, const std::string& orders) {
        return "getaccount400 lastdate=" + account + "\nprices lastdate=" + prices +
               " redo\nprices lastdate=" + prices + " redo\nprices lastdate=" + prices + "\norders lastdate=" + orders +
               "\n";
    };
    EXPECT_EQ(requests(), "getaccount400 lastdate=%20 error=No%20such%20account.\n" +
                              requestsOf("%20", "20200131", "%20") + requestsOf(today(), today(), today()));
    EXPECT_THAT(read("quorvantis.xml"),
                HasSubstr("<shop name=\"Mine\"/><accountdates prices=\"" + today() + "\" getaccount400=\"" + today() +
                          "\"><accountdate number=\"B04711\" orders=\"" + today() + "\"/></accountdates>"));
}

TEST_F(OwnCommands, TheAlternateAddressIsOfferedOnceAndCanBeTickedBefore) {
    setSupplier("AltURL", webAddress);
    // A proxy that takes no connection is no hindrance: the alternate address is reached without it.
    setConnection("UseProxy", "1");
    setConnection("FirewallType", "0");
    setConnection("ProxyServer", "127.0.0.1");
    setConnection("ProxyPort", environment("QVI_PEER_REFUSED"));
    startControl(kPrices);
    play("expect-visible cAlternate\ncheck cAlternate on\n");
    logIn();
    play("wait frmQVI_sendreceive\nexpect-enabled cmdOK\n");
    EXPECT_EQ(heard(), kCompleted);

    setConnection("UseProxy", "0");
    webAddress = "http://127.0.0.1:" + environment("QVI_PEER_REFUSED") + "/";
    startControl(kPrices);
    logIn();
    play(R"(
        box "Could not connect, do you want to use the alternate web address?" Yes
        wait frmQVI_sendreceive
        expect-enabled cmdOK
    )");
    EXPECT_EQ(heard(), kCompleted);
    EXPECT_EQ(requests(), "prices lastdate=" + today() + "\n");
}

TEST_F(OwnCommands, APasswordThatIsOverdueIsChangedAtTheServer) {
    startControl(kPrices + "<command name='orders' show='yes' checked='yes'/>",
                 "ForcePasswChange: 'True', PasswChangeDays: '-1'");
    logIn(); // from now on it is overdue
    play("wait frmQVI_sendreceive\nexpect-enabled cmdOK\n");
    play(R"(
        key Enter
        wait frmLogin
        expect chChangePassword on
        check chChangePassword off
        box "You are required to change your password now" OK
        type tnewpassword spring
        type tverifypassword spring
        key Enter
        wait frmQVI_sendreceive
        expect-enabled cmdOK
        expect lvCommands "+prices|Prices|20200131|Done" "+orders|| |Done"
    )");
    EXPECT_THAT(contentsOf(supplierFile("accounts.xml")), HasSubstr(R"(password="SPRING")"));
    EXPECT_THAT(read("quorvantis_sendreceive.txt"), Not(HasSubstr("SPRING")));
    heard();
}

TEST_F(OwnCommands, CancelBetweenTwoCommandsSendsNoMore) {
    startControl("<command name='prices' show='yes' checked='yes' waits='yes'/>"
                 "<command name='orders' show='yes' checked='yes'/>");
    logIn();
    play("host-prints \"DownloadComplete prices\"\n");
    const std::string events = heard();
    EXPECT_THAT(events, HasSubstr("DownloadComplete prices\r\nCancelled\r\n"));
    EXPECT_THAT(events, Not(HasSubstr("SendReceiveCompleted")));
    EXPECT_EQ(requests(), "prices lastdate=20200131\n");
    EXPECT_THAT(read("quorvantis.xml"), HasSubstr("<accountdates prices=\"" + today() + "\"/>"));
}

} // namespace
} // namespace end_to_end
