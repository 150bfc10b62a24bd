// A person for tests of real forms: acts between two messages of whatever loop is running.
#pragma once

#include "windows/forms/control_ids.h"

#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <windows.h>

namespace test {

// Steps run one after the other. What a step posts is dealt with before the next one runs.
class Person {
public:
    Person();
    ~Person();
    Person(const Person&) = delete;
    Person& operator=(const Person&) = delete;

    Person& then(std::function<void()> step);
    // Goes on once the condition holds; ends the test program when it does not within ten seconds.
    Person& waitFor(const char* what, std::function<bool()> condition);

    Person& click(std::string_view form, std::string_view control);
    // A key stroke for whatever has the focus; `flags` as in WM_KEYDOWN.
    Person& press(WPARAM key, LPARAM flags = 0);
    Person& type(std::wstring_view text);

private:
    struct Step {
        const char* waitingFor;
        std::function<bool()> run; // true when the next one may follow
    };

    static LRESULT CALLBACK proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    Person& add(Step step);
    void act();

    HWND m_window;
    std::deque<Step> m_steps;
    ULONGLONG m_waitingSince = 0;
};

// This thread's visible window of the form; null when it is not on screen.
[[nodiscard]] HWND formWindow(std::string_view form);
[[nodiscard]] HWND control(std::string_view form, std::string_view name);
// The message box or file dialog of this thread; null when there is none.
[[nodiscard]] HWND systemDialog();
[[nodiscard]] std::vector<std::wstring> linesOf(HWND list);

} // namespace test
