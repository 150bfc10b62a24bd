#include "windows/forms/edit_lines.h"

namespace windows {

std::wstring EditLines::add(std::wstring_view part) {
    std::wstring text;
    text.reserve(part.size() + part.size() / 16);
    for (const wchar_t unit : part) {
        if (unit == L'\n') {
            text += m_afterReturn ? L"\n" : L"\r\n";
            m_length = 0;
        } else {
            const bool tail = unit >= 0xDC00 && unit <= 0xDFFF; // of a pair, which stays together
            if (m_length >= kLongestLine && !tail && unit != L'\r') {
                text += L"\r\n";
                m_length = 0;
            }
            text += unit == L'\0' ? L'\xFFFD' : unit;
            ++m_length;
        }
        m_afterReturn = unit == L'\r';
    }
    return text;
}

} // namespace windows
