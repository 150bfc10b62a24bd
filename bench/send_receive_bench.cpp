// How long the send/receive window takes from the start of its load until it is painted, with few and with many
// commands; beside it, a list view of the same size that is filled by literal calls.
#include "fakes/send_receive_services.h"
#include "measure.h"
#include "sendreceive_form/frmQVI_sendreceive.h"
#include "windows/forms/control_ids.h"
#include "windows/forms/windows_desktop.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <commctrl.h>
#include <windows.h>

namespace {

constexpr int kRounds = 7;
// Literal calls take minutes for more; the report scales them up.
constexpr int kLiteralRows = 100;

std::string commands(int count) {
    std::string text = "<commands>";
    for (int i = 0; i < count; ++i) {
        text += "<command name='command" + std::to_string(i) + "' displaytext='Description of command " +
                std::to_string(i) + "' show='yes' checked='" + (i % 2 == 0 ? "yes" : "no") + "'/>";
    }
    return text + "</commands>";
}

using bench::median;
using bench::seconds;

// Runs once the window waits for messages: it has been shown and painted.
void CALLBACK closeWindow(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    PostMessageW(FindWindowW(L"QVI_frmQVI_sendreceive", nullptr), WM_CLOSE, 0, 0);
}

double open(fakes::SendReceiveServicesOn<windows::WindowsDesktop>& services, int count) {
    auto document = std::make_shared<xml::XmlDocument>();
    static_cast<void>(document->loadXml(commands(count)));
    return seconds([&] {
        sendreceive::frmQVI_sendreceive form(services.all, {"1001", "C:\\QV\\", "Shop", "http://supplier/"});
        form.load();
        form.engine().setDomCommands(document);
        form.engine().LoadCommands();
        SetTimer(nullptr, 0, 1, closeWindow);
        form.showModal();
    });
}

// The same rows by one call for each text, into a list view that is on screen.
double literal(int count) {
    const HWND list = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_POPUP | WS_VISIBLE | LVS_REPORT, 0, 0, 600, 300, nullptr,
                                      nullptr, GetModuleHandleW(nullptr), nullptr);
    ListView_SetExtendedListViewStyle(list, LVS_EX_CHECKBOXES);
    for (int column = 0; column < 4; ++column) {
        LVCOLUMNW description{};
        description.mask = LVCF_WIDTH;
        description.cx = 150;
        SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&description));
    }
    const double time = seconds([&] {
        for (int row = 0; row < count; ++row) {
            std::wstring text = L"Description of command " + std::to_wstring(row);
            LVITEMW item{};
            item.mask = LVIF_TEXT;
            item.iItem = row;
            item.pszText = text.data();
            SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
            for (item.iSubItem = 1; item.iSubItem < 4; ++item.iSubItem) {
                SendMessageW(list, LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
            }
            ListView_SetCheckState(list, static_cast<UINT>(row), row % 2 == 0 ? TRUE : FALSE);
        }
        UpdateWindow(list);
    });
    DestroyWindow(list);
    return time;
}

} // namespace

int main() {
    fakes::SendReceiveServicesOn<windows::WindowsDesktop> services(GetModuleHandleW(nullptr));
    for (const int count : {3, 10'000}) {
        std::vector<double> ours;
        std::vector<double> plain;
        for (int round = 0; round < kRounds; ++round) {
            ours.push_back(open(services, count));
            const int rows = std::min(count, kLiteralRows);
            plain.push_back(literal(rows) * count / rows);
        }
        std::printf(
            "%d commands: window loaded, shown, painted and closed in %.0f ms; a list view alone, filled by literal "
            "calls, %.0f ms\n",
            count, median(ours) * 1e3, median(plain) * 1e3);
    }
    return 0;
}
