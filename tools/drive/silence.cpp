#include "drive/silence.h"

#include <algorithm>

namespace drive {

void Silence::ask(HWND window, const std::stop_token& stop) {
    constexpr UINT kPatience = 10'000; // milliseconds
    constexpr std::chrono::milliseconds kPause{2};
    while (!stop.stop_requested()) {
        const auto asked = std::chrono::steady_clock::now();
        SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, kPatience, nullptr);
        const auto waited = std::chrono::steady_clock::now() - asked;
        const auto rounded = std::chrono::duration_cast<std::chrono::milliseconds>(waited).count();
        m_longest = std::max<std::int64_t>(m_longest, rounded);
        std::this_thread::sleep_for(kPause);
    }
}

} // namespace drive
