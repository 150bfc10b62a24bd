#include "windows/end_to_end/own_host.h"

#include <array>
#include <ctime>
#include <fstream>
#include <sstream>
#include <string_view>

#include <windows.h>

namespace end_to_end {
namespace {

std::string asScriptText(std::string text) {
    for (std::size_t at = text.find('\\'); at != text.npos; at = text.find('\\', at + 2)) {
        text.insert(at, 1, '\\');
    }
    return "'" + text + "'";
}

struct ButtonSearch {
    const wchar_t* text;
    HWND found;
};

BOOL CALLBACK matchButton(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<ButtonSearch*>(parameter);
    std::array<wchar_t, 50> text{};
    GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    if (text.data() == std::wstring_view(search.text) && IsWindowEnabled(window) && IsWindowVisible(window)) {
        search.found = window;
    }
    return search.found == nullptr ? TRUE : FALSE;
}

} // namespace

std::string today() {
    const std::time_t now = std::time(nullptr);
    std::array<char, 9> text{};
    std::strftime(text.data(), text.size(), "%Y%m%d", std::localtime(&now));
    return text.data();
}

OwnHost::OwnHost() {
    webAddress = environment("SUPPLIER_HTTP") + "/";
    setConnection("DialType", "Manual");
    supplierIs(R"(<answer command="prices"/><answer command="orders"/>)");
    std::ofstream(onDrive(supplierFile("accounts.xml")))
        << R"(<accounts><account profile="1001" password="SECRET"/></accounts>)";
    write("quorvantis.xml", R"(<quorvantis><shop name="Mine"/><accountdates prices="20200131"/></quorvantis>)");
}

OwnHost::~OwnHost() {
    supplierIs("");
}

void OwnHost::startControl(const std::string& commands, const std::string& options) {
    const std::string path = asScriptText(folder());
    write("commands.xml", "<commands profile='1001'>" + commands + "</commands>");
    write("globals.js", "({ gQuorVantisPath: " + path + ", gQuorXMLpath: " + path +
                            ", gSettingString: 'EndToEnd', gWebService: 'Supplier', gProfileNumber: '1001',"
                            " Branch: 'B0', account: '4711', gdomquorvantis: host,"
                            " gBusyWithUpgrade: false, gDisplayExitMsg: false,"
                            " GetValue: function (name) { var known = { " +
                            options + " }; return known[name] || 'NOT_FOUND'; } })");
    m_logged = contentsOf(supplierFile("requests.log")).size();
    startProgram("control_host", "\"" + folder() + "\\\" " + webAddress + " " + std::to_string(timeOut.count()));
    play("wait frmQVI_sendreceive");
}

void OwnHost::startWindowHost() {
    m_logged = contentsOf(supplierFile("requests.log")).size();
    startProgram("window_host", "\"" + folder() + "\\\" " + webAddress);
}

void OwnHost::pressInWindowHost(const wchar_t* button) const {
    waitUntil("the button can be pressed", [&] {
        ButtonSearch search{button, nullptr};
        const HWND window = FindWindowW(L"WindowHost", nullptr);
        if (window != nullptr && IsWindowEnabled(window)) {
            EnumChildWindows(window, matchButton, reinterpret_cast<LPARAM>(&search));
        }
        return search.found != nullptr && PostMessageW(search.found, BM_CLICK, 0, 0);
    });
}

void OwnHost::logIn(const std::string& password) {
    play("key Enter\nwait frmLogin\ntype txtPassword " + password + "\nkey Enter\n");
}

std::string OwnHost::heard() {
    play("wait frmQVI_sendreceive\nkey Escape\n");
    return hostEnds();
}

std::string OwnHost::requests() const {
    std::istringstream log(contentsOf(supplierFile("requests.log")).substr(m_logged));
    std::string lines;
    for (std::string line; std::getline(log, line);) {
        for (const std::string_view before : {"command=", "GET /files/"}) {
            if (const std::size_t at = line.find(before); at != line.npos) {
                line.erase(0, at + before.size());
            }
        }
        for (const std::string_view inside : {"profile=1001 ", " bytes=0"}) {
            if (const std::size_t at = line.find(inside); at != line.npos) {
                line.erase(at, inside.size());
            }
        }
        lines += line + "\n";
    }
    return lines;
}

} // namespace end_to_end
