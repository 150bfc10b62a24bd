// What a long loop pays for showing its progress: lines added to a visible list and captions changed, each followed by
// doEvents, against the same done by literal calls to the windows.
#include "ui/controls.h"
#include "ui/form.h"
#include "windows/forms/control_ids.h"
#include "windows/forms/window_text.h"
#include "windows/forms/windows_desktop.h"

#include <cstdio>
#include <functional>
#include <string>

#include <windows.h>

namespace {

constexpr int kLines = 10'000;
constexpr int kCaptions = 50'000;
// The literal calls take minutes for that many; the report scales them up.
constexpr int kLiteralLines = 500;
constexpr int kLiteralCaptions = 2'000;

// The image manager's template with the least of a form around it.
class BenchForm final : public ui::Form {
public:
    explicit BenchForm(ui::Desktop& desktop) : Form(desktop, "frmQVI_Images") {}

    ui::Frame fraStep1{*this, "fraStep1"};
    ui::Button cmdAutoLink{*this, "cmdAutoLink"};
    ui::Label lblAutoLink{*this, "lblAutoLink"};
    ui::CheckBox chkExactMatch{*this, "chkExactMatch"};
    ui::Button cmdCleanUp{*this, "cmdCleanUp"};
    ui::Button cmdWhatsLinked{*this, "cmdWhatsLinked"};
    ui::Button cmdWhatsNotLinked{*this, "cmdWhatsNotLinked"};
    ui::CheckBox CheckRTF{*this, "CheckRTF"};
    ui::Frame fraImages{*this, "fraImages"};
    ui::ListBox lImages{*this, "lImages"};
    ui::Button cmdbrowse{*this, "cmdbrowse"};
    ui::Button cmdDelete{*this, "cmdDelete"};
    ui::Frame fraSpecifications{*this, "fraSpecifications"};
    ui::ListBox lRTF{*this, "lRTF"};
    ui::Button cmdAddSpec{*this, "cmdAddSpec"};
    ui::Button cmdDeletSpec{*this, "cmdDeletSpec"};
    ui::Frame fraPreview{*this, "fraPreview"};
    ui::PictureBox picPreview{*this, "picPreview"};
    ui::Frame fraUpload{*this, "fraUpload"};
    ui::Button cmdUpload{*this, "cmdUpload"};
    ui::Label lblUpload{*this, "lblUpload"};
    ui::Frame fraExport{*this, "fraExport"};
    ui::Button cmdExport{*this, "cmdExport"};
    ui::Label lblExport{*this, "lblExport"};
    ui::Label lblBurn{*this, "lblBurn"};
    ui::ListBox List1{*this, "List1"};
    ui::Button cmdCancel{*this, "cmdCancel"};

    std::function<void()> work; // in the place of Return

protected:
    void Form_KeyPress(char16_t& key) override {
        key = 0;
        work();
        hide();
    }
};

double seconds(const std::function<void()>& work) {
    LARGE_INTEGER frequency{};
    LARGE_INTEGER start{};
    LARGE_INTEGER end{};
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&start);
    work();
    QueryPerformanceCounter(&end);
    return static_cast<double>(end.QuadPart - start.QuadPart) / static_cast<double>(frequency.QuadPart);
}

void literalYield() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

// The presenter's windows follow later; its time counts until they have caught up.
void untilShown(windows::WindowsDesktop& desktop, const std::function<bool()>& shown) {
    while (!shown()) {
        desktop.doEvents();
    }
}

std::string line(int i) {
    return "Added ABC" + std::to_string(i) + " linked to image ABC" + std::to_string(i) + ".jpg";
}

void measure(windows::WindowsDesktop& desktop, BenchForm& form) {
    const HWND window = FindWindowW(L"QVI_frmQVI_Images", nullptr);
    const HWND list = GetDlgItem(window, windows::controlId("frmQVI_Images", "List1"));

    const double literalLines = seconds([&] {
        for (int i = 0; i < kLiteralLines; ++i) {
            const std::string text = line(i);
            SendMessageW(list, LB_ADDSTRING, 0,
                         reinterpret_cast<LPARAM>(std::wstring(text.begin(), text.end()).c_str()));
            literalYield();
        }
    });
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    const double ourLines = seconds([&] {
        for (int i = 0; i < kLines; ++i) {
            form.List1.add(line(i));
            desktop.doEvents();
        }
        untilShown(desktop, [&] { return SendMessageW(list, LB_GETCOUNT, 0, 0) == kLines; });
    });
    const double literalCaptions = seconds([&] {
        for (int i = 0; i < kLiteralCaptions; ++i) {
            SetWindowTextW(window, (L"Searching for " + std::to_wstring(i)).c_str());
            literalYield();
        }
    });
    const double ourCaptions = seconds([&] {
        for (int i = 0; i < kCaptions; ++i) {
            form.setCaption("Searching for " + std::to_string(i));
            desktop.doEvents();
        }
        const std::wstring last = L"Searching for " + std::to_wstring(kCaptions - 1);
        untilShown(desktop, [&] { return windows::windowText(window) == last; });
    });
    const double yields = seconds([&] {
        for (int i = 0; i < kCaptions; ++i) {
            desktop.doEvents();
        }
    });
    std::printf("list %d lines: presenter %.3f s, literal LB_ADDSTRING %.3f s (from %d lines)\n", kLines, ourLines,
                literalLines * kLines / kLiteralLines, kLiteralLines);
    std::printf("caption %d times: presenter %.3f s, literal SetWindowText %.3f s (from %d)\n", kCaptions, ourCaptions,
                literalCaptions * kCaptions / kLiteralCaptions, kLiteralCaptions);
    std::printf("doEvents with nothing to do: %.2f us\n", yields * 1e6 / kCaptions);
}

void CALLBACK startWork(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    PostMessageW(FindWindowW(L"QVI_frmQVI_Images", nullptr), WM_CHAR, 13, 1);
}

} // namespace

int main() {
    windows::WindowsDesktop desktop(GetModuleHandleW(nullptr));
    for (int run = 0; run < 3; ++run) {
        BenchForm form(desktop);
        form.work = [&] { measure(desktop, form); };
        SetTimer(nullptr, 0, 1, startWork);
        form.showModal();
    }
    return 0;
}
