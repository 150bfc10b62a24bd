#include "windows/forms/peer_factory.h"

#include "base/runtime_error.h"
#include "ui/controls.h"
#include "windows/forms/button_peer.h"
#include "windows/forms/combo_box_peer.h"
#include "windows/forms/frame_peer.h"
#include "windows/forms/framed_bar_peer.h"
#include "windows/forms/label_peer.h"
#include "windows/forms/list_box_peer.h"
#include "windows/forms/list_view_peer.h"
#include "windows/forms/picture_box_peer.h"
#include "windows/forms/progress_bar_peer.h"
#include "windows/forms/tab_strip_peer.h"
#include "windows/forms/text_box_peer.h"
#include "windows/forms/toggle_peer.h"
#include "windows/forms/user_control_peer.h"

#include <array>
#include <string>

namespace windows {
namespace {

template <typename Object, typename Peer>
std::unique_ptr<ControlPeer> tryMake(HWND window, ui::Control& control) {
    auto* const object = dynamic_cast<Object*>(&control);
    return object == nullptr ? nullptr : std::make_unique<Peer>(window, *object);
}

struct Kind {
    const wchar_t* windowClass;
    std::unique_ptr<ControlPeer> (*tryMake)(HWND, ui::Control&);
};

// A kind derived from another stands before it.
constexpr std::array kKinds{
    Kind{L"Static", tryMake<ui::Label, LabelPeer>},
    Kind{L"Button", tryMake<ui::Frame, FramePeer>},
    Kind{L"Button", tryMake<ui::Button, ButtonPeer>},
    Kind{L"Button", tryMake<ui::CheckBox, CheckBoxPeer>},
    Kind{L"Button", tryMake<ui::OptionButton, OptionButtonPeer>},
    Kind{L"ListBox", tryMake<ui::ListBox, ListBoxPeer>},
    Kind{L"Static", tryMake<ui::PictureBox, PictureBoxPeer>},
    Kind{L"Edit", tryMake<ui::TextBox, TextBoxPeer>},
    Kind{L"ComboBox", tryMake<ui::ComboBox, ComboBoxPeer>},
    Kind{L"msctls_progress32", tryMake<ui::ProgressBar, ProgressBarPeer>},
    Kind{L"Static", tryMake<ui::FramedBar, FramedBarPeer>},
    Kind{L"SysListView32", tryMake<ui::ListView, ListViewPeer>},
    Kind{L"SysTabControl32", tryMake<ui::TabStrip, TabStripPeer>},
    Kind{L"Static", tryMake<ui::UserControlSite, UserControlPeer>},
};

bool isOfClass(HWND window, const wchar_t* windowClass) noexcept {
    std::array<wchar_t, 256> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return CompareStringOrdinal(name.data(), -1, windowClass, -1, TRUE) == CSTR_EQUAL;
}

} // namespace

std::unique_ptr<ControlPeer> makePeer(HWND window, ui::Control& control) {
    for (const Kind& kind : kKinds) {
        const bool suitable = isOfClass(window, kind.windowClass); // asked first: a peer may put another in its place
        if (std::unique_ptr<ControlPeer> peer = kind.tryMake(window, control)) {
            if (!suitable) {
                break;
            }
            return peer;
        }
    }
    throw base::RuntimeError(base::error::kInternalError,
                             "The template has no suitable window for the control " + std::string(control.name()));
}

} // namespace windows
