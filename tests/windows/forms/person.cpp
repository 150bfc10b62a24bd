#include "windows/forms/person.h"

#include "windows/base/wide.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <utility>

namespace test {
namespace {

constexpr wchar_t kClass[] = L"TestPerson";
constexpr UINT kAct = WM_APP;
constexpr UINT kPollInterval = 10;      // milliseconds
constexpr ULONGLONG kPatience = 10'000; // milliseconds

struct Search {
    std::wstring className;
    HWND found;
};

BOOL CALLBACK match(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    std::array<wchar_t, 256> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    if (search.className != name.data() || !IsWindowVisible(window)) {
        return TRUE;
    }
    search.found = window;
    return FALSE;
}

struct ControlSearch {
    int id;
    HWND found;
};

BOOL CALLBACK matchId(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<ControlSearch*>(parameter);
    if (GetDlgCtrlID(window) != search.id) {
        return TRUE;
    }
    search.found = window;
    return FALSE;
}

BOOL CALLBACK searchInside(HWND window, LPARAM parameter) {
    EnumChildWindows(window, matchId, parameter);
    return reinterpret_cast<ControlSearch*>(parameter)->found == nullptr ? TRUE : FALSE;
}

HWND findWindow(std::wstring className) {
    Search search{std::move(className), nullptr};
    EnumThreadWindows(GetCurrentThreadId(), match, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

} // namespace

Person::Person() {
    WNDCLASSW description{};
    description.lpfnWndProc = proc;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = kClass;
    RegisterClassW(&description);
    m_window = CreateWindowW(kClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, description.hInstance, nullptr);
    SetWindowLongPtrW(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

Person::~Person() {
    EXPECT_TRUE(m_steps.empty()) << m_steps.size() << " steps were never reached";
    DestroyWindow(m_window);
    UnregisterClassW(kClass, GetModuleHandleW(nullptr));
}

Person& Person::then(std::function<void()> step) {
    return add({nullptr, [step = std::move(step)] {
                    step();
                    return true;
                }});
}

Person& Person::waitFor(const char* what, std::function<bool()> condition) {
    return add({what, std::move(condition)});
}

Person& Person::click(std::string_view form, std::string_view name) {
    return then([=] { PostMessageW(control(form, name), BM_CLICK, 0, 0); });
}

Person& Person::press(WPARAM key, LPARAM flags) {
    return then([=] { PostMessageW(GetFocus(), WM_KEYDOWN, key, flags | 1); });
}

Person& Person::type(std::wstring_view text) {
    for (const wchar_t character : text) {
        then([=] { PostMessageW(GetFocus(), WM_CHAR, character, 1); });
    }
    return *this;
}

Person& Person::add(Step step) {
    m_steps.push_back(std::move(step));
    if (m_steps.size() == 1) {
        PostMessageW(m_window, kAct, 0, 0);
    }
    return *this;
}

LRESULT CALLBACK Person::proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == kAct || message == WM_TIMER) {
        KillTimer(window, 1);
        reinterpret_cast<Person*>(GetWindowLongPtrW(window, GWLP_USERDATA))->act();
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void Person::act() {
    if (m_steps.empty()) {
        return;
    }
    const Step& step = m_steps.front();
    if (!step.run()) {
        m_waitingSince = m_waitingSince == 0 ? GetTickCount64() : m_waitingSince;
        if (GetTickCount64() - m_waitingSince > kPatience) {
            ADD_FAILURE() << "never happened: " << step.waitingFor;
            std::exit(1); // nobody is left to end the modal loop around us
        }
        SetTimer(m_window, 1, kPollInterval, nullptr);
        return;
    }
    m_waitingSince = 0;
    m_steps.pop_front();
    if (!m_steps.empty()) {
        PostMessageW(m_window, kAct, 0, 0);
    }
}

HWND formWindow(std::string_view form) {
    return findWindow(windows::toWide(std::string(windows::kFormClassPrefix) + std::string(form)));
}

// A user control has no window at the top: its controls are inside some form's.
HWND control(std::string_view form, std::string_view name) {
    ControlSearch search{windows::controlId(form, name), nullptr};
    if (const HWND window = formWindow(form)) {
        return GetDlgItem(window, search.id);
    }
    EnumThreadWindows(GetCurrentThreadId(), searchInside, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND systemDialog() {
    return findWindow(L"#32770");
}

std::vector<std::wstring> linesOf(HWND list) {
    std::vector<std::wstring> lines;
    const LRESULT count = SendMessageW(list, LB_GETCOUNT, 0, 0);
    for (LRESULT index = 0; index < count; ++index) {
        const auto at = static_cast<WPARAM>(index);
        std::wstring line(static_cast<std::size_t>(SendMessageW(list, LB_GETTEXTLEN, at, 0)), L'\0');
        SendMessageW(list, LB_GETTEXT, at, reinterpret_cast<LPARAM>(line.data()));
        lines.push_back(std::move(line));
    }
    return lines;
}

} // namespace test
