// An upload of 200,000 image links, from the command to the server's answer, and whether a host that runs command after
// command keeps memory. Runs among the peers of the tests:
//
//     tests/peers/with_peers [tools/wine_run] exchange_bench FOLDER [rounds]
//
// The folder exists; images.xml and the trace are written there. All but the user, the settings and the host is real.
#include "baselines/bare_curl.h"
#include "baselines/bare_libxml2.h"
#include "fakes/fake_code_page.h"
#include "fakes/send_receive_services.h"
#include "host/late_bound_globals.h"
#include "measure.h"
#include "sendreceive_form/command_document.h"
#include "sendreceive_form/frmQVI_sendreceive.h"

#ifdef _WIN32
#include "windows/adapters/ansi_code_page.h"
#include "windows/adapters/windows_file_system.h"
#include "windows/network/windows_network.h"
#else
#include "adapters/curl/curl_https.h"
#include "adapters/posix/posix_file_system.h"
#endif

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr unsigned kLinks = 200'000;

#ifdef _WIN32
using CodePage = windows::AnsiCodePage;
using Network = windows::WindowsNetwork;

struct Disk {
    explicit Disk(const std::string& folder) : dataFolder(folder + "\\") {}
    windows::WindowsFileSystem files;
    std::string dataFolder;
};
#else
using CodePage = fakes::FakeCodePage;

class Network final : public ports::Network {
public:
    std::unique_ptr<ports::Https> createHttps() override { return std::make_unique<adapters::CurlHttps>(); }
    std::unique_ptr<ports::Dialer> createDialer() override { return m_noLine.createDialer(); }
    ports::SocketLayer socketLayer() override { return m_noLine.socketLayer(); }

private:
    fakes::FakeNetwork m_noLine;
};

struct Disk {
    explicit Disk(const std::string& folder) : files(folder) {}
    adapters::PosixFileSystem files;
    std::string dataFolder = "C:\\";
};
#endif

void require(bool condition, const char* what) {
    if (!condition) {
        std::printf("%s\n", what);
        std::exit(1);
    }
}

// The control, and the form whose uploads fill its requests; the marks stay, so that every round sends the same.
class Shop final : private sendreceive::Events {
public:
    Shop(const std::string& folder, const std::string& address) : m_disk(folder) {
        m_control->session.sWebAddress = address;
        auto globals = std::make_shared<host::LateBoundGlobals>();
        globals->values.gProfileNumber = "1001";
        globals->values.gQuorVantisPath = m_disk.dataFolder;
        m_control->session.Globals = std::move(globals);
        m_control->session.bLoginNotRequired = true;
        m_control->advise(*this);
    }
    ~Shop() { m_control->unadvise(*this); }

    void writeLinks(const std::string& text) { m_disk.files.replaceFile(m_disk.dataFolder + "images.xml", text); }

    // A request as the control makes it, with the command's payload.
    [[nodiscard]] std::shared_ptr<xml::XmlDocument> request(std::string_view command) {
        auto document = std::make_shared<xml::XmlDocument>();
        require(document->loadXml(commands(command)), "the request does not load");
        fill(command, *document);
        return document;
    }

    // From the press of OK to the answer of the server; seconds. Raises when there is none.
    double run(std::string_view command) {
        auto document = std::make_shared<xml::XmlDocument>();
        require(document->loadXml(commands(command)), "the commands do not load");
        m_control->setDomCommands(std::move(document));
        m_control->LoadCommands();
        m_answered.reset();
        const auto start = Clock::now();
        m_control->cmdOK.userClick();
        require(m_answered.has_value(), "the exchange failed");
        return std::chrono::duration<double>(*m_answered - start).count();
    }

private:
    using Clock = std::chrono::steady_clock;

    static std::string commands(std::string_view name) {
        return R"(<commands profile="1001" password="SECRET"><command name=")" + std::string(name) +
               R"(" show="yes" checked="yes"/></commands>)";
    }
    void fill(std::string_view command, xml::XmlDocument& document) {
        if (command == sendreceive::command::kSendImageLinks) {
            m_form.AppendImagestoCommand(document);
        } else if (command == sendreceive::command::kSendAllImageLinks) {
            m_form.AppendAllImagestoCommand(document);
        }
    }

    void DownloadStart(std::string& name, std::shared_ptr<xml::XmlDocument>& document) override {
        fill(name, *document);
    }
    void DownloadComplete(std::string&, const xml::XmlNode&, const std::shared_ptr<xml::XmlDocument>&) override {
        m_answered = Clock::now();
    }
    void Cancelled() override {}
    void SendReceiveCompleted() override {}
    void CloseQuorVantis() override {}
    void OpenfrmOptions(const std::string&) override {}
    void RegisterServer(const std::string&) override {}
    void UnregisterServer(const std::string&) override {}

    Disk m_disk;
    CodePage m_ansi;
    Network m_network;
    fakes::SendReceiveServices m_fakes;
    sendreceive::Services m_services{
        {m_disk.files, m_fakes.settings, m_fakes.clock, m_ansi, m_network, m_fakes.programs, m_fakes.engine.cabinets},
        m_fakes.desktop,
        m_fakes.locale,
        m_fakes.pictures,
        m_fakes.login,
        ""};
    sendreceive::frmQVI_sendreceive m_form{m_services, {"1001", m_disk.dataFolder, "Shop", ""}};
    std::shared_ptr<sendreceive::ucSendReceive> m_control = sendreceive::ucSendReceive::create(m_services);
    std::optional<Clock::time_point> m_answered;
};

std::string linkText() {
    std::string text = "<images>";
    for (unsigned i = 0; i < kLinks; ++i) {
        char link[80];
        std::snprintf(link, sizeof link, R"(<p f1="CODE%06u" f2="CODE%06u.JPG" f3="created"/>)", i, i);
        text += link;
    }
    return text + "</images>";
}

// The links by the library alone: read, written into the request's text, read again.
std::unique_ptr<baselines::BareDocument> barePayload(const std::string& links) {
    return std::make_unique<baselines::BareDocument>(baselines::BareDocument(links).text());
}

// In turn; each step gives its own seconds. The ratio is the median of the rounds' own.
void compare(int rounds, const std::string& what, const std::function<double()>& ours,
             const std::function<double()>& theirs) {
    std::vector<double> our;
    std::vector<double> their;
    std::vector<double> ratio;
    for (int round = 0; round < rounds; ++round) {
        their.push_back(theirs());
        our.push_back(ours());
        ratio.push_back(our.back() / their.back());
    }
    std::printf("%s: %.0f ms, baseline %.0f ms, ratio %.2f\n", what.c_str(), bench::median(our) * 1e3,
                bench::median(their) * 1e3, bench::median(ratio));
}

void compareUploads(int rounds, Shop& shop, const std::string& address) {
    const std::string links = linkText();
    shop.writeLinks(links);
    for (const std::string_view command :
         {sendreceive::command::kSendImageLinks, sendreceive::command::kSendAllImageLinks}) {
        const std::string name(command);
        const std::string body = shop.request(command)->xml();
        require(body.size() > links.size(), "the payload is not whole");
        compare(
            rounds, "payload of " + name,
            [&] {
                std::shared_ptr<xml::XmlDocument> made;
                return bench::seconds([&] { made = shop.request(command); });
            },
            [&] {
                std::unique_ptr<baselines::BareDocument> made;
                return bench::seconds([&] { made = barePayload(links); });
            });
        baselines::BareCurl curl;
        compare(
            rounds, "exchange of " + name, [&] { return shop.run(command); },
            [&] {
                std::unique_ptr<baselines::BareDocument> made;
                return bench::seconds([&] {
                    made = barePayload(links);
                    require(curl.transfer(address, body) > 0, "the baseline's transfer failed");
                });
            });
    }
}

void showMemory(Shop& shop) {
    long early = 0;
    const double time = bench::seconds([&] {
        for (int i = 1; i <= 1000; ++i) {
            static_cast<void>(shop.run("getprices"));
            if (i == 100) {
                early = bench::residentKb();
            }
        }
    });
    std::printf("1,000 runs: %.2f ms each, resident after 100: %ld KB, after 1,000: %ld KB\n", time, early,
                bench::residentKb());
}

} // namespace

int main(int count, char** arguments) {
    std::setvbuf(stdout, nullptr, _IONBF, 0); // what a time limit cuts off is not lost
    const char* port = std::getenv("QVI_PEER_HTTP");
    require(count > 1 && port != nullptr, "usage: tests/peers/with_peers exchange_bench FOLDER [rounds]");
    const std::string address = "http://127.0.0.1:" + std::string(port) + "/results";
    {
        Shop shop(arguments[1], address);
        showMemory(shop); // first: what the uploads need stays with the process
    }
    Shop shop(arguments[1], address);
    compareUploads(count > 2 ? std::atoi(arguments[2]) : 9, shop, address);
    return 0;
}
