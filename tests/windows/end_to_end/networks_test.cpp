// Whole runs by every way to a supplier that the connection settings offer, each first with something wrong about the
// way. So it is known to be taken, and what the person sets right counts at the next OK.
#include "peers/internet_options.h"
#include "peers/trusted_authority.h"
#include "windows/end_to_end/upload.h"

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

namespace end_to_end {
namespace {

struct Way {
    std::string name; // and its picture's
    std::function<void()> wrong;
    std::function<void()> right;
    std::string text; // what the person is told of what is wrong
    bool offersSettings = false;
};

class Networks : public Upload {
protected:
    Networks() { peers::forgetProxyVariables(); }
    ~Networks() override { peers::setSystemProxy(""); }

    static void useWinInet(bool used) { setConnection("UseWinInet", used ? "1" : "0"); }

    void expectAll(const std::vector<Way>& ways) {
        startHost({"GEAR"});
        for (const Way& way : ways) {
            SCOPED_TRACE(way.name);
            const std::string picture = way.name + ".jpg";
            link(picture);
            way.wrong();
            send();
            static_cast<void>(expectMessage(way.text, way.offersSettings));
            expectStillToBeSent(picture);
            way.right();
            sendAgain();
            expectCompleted();
            expectSent(picture);
        }
        leave();
    }

    // A way through one of the peers.
    static std::function<void()> with(const char* type, const char* server, const char* password = "") {
        return [=] { goThrough(type, peer(server), password); };
    }
    static Way httpProxy() {
        return {"proxy", with("0", "PROXY_LOGIN", "wrong"), with("0", "PROXY_LOGIN", "se_cret"),
                "Authorisation error returned. This is most likely from your proxy server. Press 'Settings' to "
                "configure proxy settings now.\r\n\r\n(HTTP protocol error. 401 Unauthorized)",
                true};
    }
};

TEST_F(Networks, ProxiesAndFirewalls) {
    expectAll({
        httpProxy(),
        {"socks4", with("1", "REFUSED"), with("1", "SOCKS4"), kSupplierFault},
        {"socks5", with("2", "SOCKS5_LOGIN", "wrong"), with("2", "SOCKS5_LOGIN", "se:cret"),
         kNoConnection + "(User was rejected by the SOCKS5 server (1 2).)", true},
        {"tunnel", with("4", "PROXY_LOGIN", "wrong"), with("4", "PROXY_LOGIN", "se_cret"), kSupplierFault},
    });
}

TEST_F(Networks, WinInet) {
    useWinInet(true);
    // The system's Internet options count where the settings name no proxy.
    const std::string nobody = "127.0.0.1:" + peer("REFUSED");
    expectAll({{"options", [&] { peers::setSystemProxy(nobody); }, [] { peers::setSystemProxy(""); }, kSupplierFault}});
    // From a host of its own: in Wine the library shares connections among requests that go different ways. A refused
    // login is no test: the library tells nothing of a refusal that comes before the body has gone out.
    expectAll({{"proxy", with("0", "REFUSED"), with("0", "PROXY_LOGIN", "se_cret"), kSupplierFault}});
}

TEST_F(Networks, AServerThatAsksForALogin) {
    webAddress = "http://127.0.0.1:" + peer("HTTP") + "/login";
    startHost({"GEAR"});
    link("a.jpg");
    goThrough("3", "", "wrong");
    send();
    EXPECT_EQ(expectMessage(kSupplierFault, false), "Authentication required\r\n");
    goThrough("3", "", "se:cret");
    sendAgain();
    expectCompleted();
    leave();
    EXPECT_EQ(modified(), "");
}

TEST_F(Networks, NothingGoesToAServerThatNobodyVouchesFor) {
    webAddress = "https://localhost:" + peer("UNKNOWN") + "/results";
    const std::string requests = contentsOf(peer("LOG"));
    upload();
    EXPECT_EQ(expectMessage(
                  kNoConnection + "(The certificate of localhost was refused: its authority is unknown here.)", true),
              "");
    expectStillToBeSent();
    EXPECT_EQ(contentsOf(peer("LOG")), requests);
    play("key Escape");
    leave();
}

TEST_F(Networks, ASecretServer) {
    webAddress = environment("SUPPLIER_HTTPS") + "/";
    const peers::TrustedAuthority trusted(environment("SUPPLIER_CA"));
    upload();
    expectCompleted();
    expectSent();
    link("wininet.jpg");
    useWinInet(true);
    send();
    expectCompleted();
    expectSent("wininet.jpg");
    leave();
    useWinInet(false);
    expectAll({httpProxy()});
}

} // namespace
} // namespace end_to_end
