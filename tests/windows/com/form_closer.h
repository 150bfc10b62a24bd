// A person who cannot wait: looks at the first picture of every form that the component shows, and closes it. Works on
// the host's own thread, from inside the form's message loop.
#pragma once

#include "windows/forms/control_ids.h"

#include <windows.h>

namespace com_test {

class FormCloser {
public:
    FormCloser() : m_timer(SetTimer(nullptr, 0, USER_TIMER_MINIMUM, onTimer)) {}
    FormCloser(const FormCloser&) = delete;
    FormCloser& operator=(const FormCloser&) = delete;
    ~FormCloser() { KillTimer(nullptr, m_timer); }

private:
    static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) {
        for (const wchar_t* windowClass : {L"QVI_frmQVI_Images", L"QVI_frmQVI_sendreceive"}) {
            const HWND form = FindWindowW(windowClass, nullptr);
            if (form != nullptr && IsWindowVisible(form)) {
                const HWND list = GetDlgItem(form, windows::controlId("frmQVI_Images", "lImages"));
                PostMessageW(list != nullptr ? list : form, WM_KEYDOWN, VK_DOWN, 0);
                PostMessageW(form, WM_CLOSE, 0, 0);
            }
        }
    }

    UINT_PTR m_timer;
};

} // namespace com_test
