// A progress bar's window.
#pragma once

#include "ui/controls.h"
#include "windows/forms/control_peer.h"

#include <commctrl.h>

namespace windows {

class ProgressBarPeer final : public ControlPeer {
public:
    ProgressBarPeer(HWND window, ui::ProgressBar& bar) noexcept : ControlPeer(window, bar), m_bar(bar) {
        SendMessageW(window, PBM_SETRANGE32, 0, kRange);
    }

    void update(Aspects aspects) override {
        if (aspects.has(ui::Aspect::Value)) {
            SendMessageW(window(), PBM_SETPOS, position(), 0);
        }
    }

private:
    // Finer than any bar is wide; counts of items may not fit the window's own range.
    static constexpr int kRange = 10'000;

    [[nodiscard]] WPARAM position() const noexcept {
        return m_bar.total() == 0 ? 0
                                  : static_cast<WPARAM>(kRange * static_cast<double>(m_bar.done()) /
                                                        static_cast<double>(m_bar.total()));
    }

    ui::ProgressBar& m_bar;
};

} // namespace windows
