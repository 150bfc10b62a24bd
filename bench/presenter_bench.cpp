// What a long loop pays for showing its progress: lines added to a visible list and captions changed, each followed by
// doEvents, against the same done by literal calls to the windows.
#include "fakes/fake_clock.h"
#include "fakes/fake_code_page.h"
#include "fakes/fake_file_system.h"
#include "fakes/fake_picture_decoder.h"
#include "fakes/fake_settings.h"
#include "images/frmQVI_Images.h"
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

// The image manager with its own controls; the work stands in the place of Return.
class BenchForm final : public images::frmQVI_Images {
public:
    using frmQVI_Images::frmQVI_Images;

    std::function<void()> work;

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
    fakes::FakeFileSystem files;
    fakes::FakeSettings settings;
    fakes::FakeClock clock;
    fakes::FakePictureDecoder pictures;
    fakes::FakeCodePage ansi;
    for (int run = 0; run < 3; ++run) {
        BenchForm form({desktop, files, settings, clock, pictures, ansi});
        form.List1.setVisible(true);
        form.work = [&] { measure(desktop, form); };
        SetTimer(nullptr, 0, 1, startWork);
        form.showModal();
    }
    return 0;
}
