// What the send/receive control shows beside its list: the status line, the progress bar, the picture, its colours.
#include "base/number.h"
#include "base/runtime_error.h"
#include "host/modStyles.h"
#include "sendreceive/command_list.h"
#include "sendreceive/ucSendReceive.h"

#include <initializer_list>
#include <utility>

namespace sendreceive {
namespace {

// The bar's full length leaves this much of the frame free; twips.
constexpr std::int32_t kFullBar = ui::FramedBar::kFrameWidth - 30;

} // namespace

void ucSendReceive::SetMessage(const std::string& text) {
    reportErrors("SetMessage", [&] {
        WriteSingleLog("Sub SetMessage --> " + text, false);
        lProgress.setText(text);
        m_services.desktop.doEvents();
    });
}

void ucSendReceive::SetProgressBar(std::int32_t value) {
    reportErrors("SetProgressBar", [&] {
        if (m_announcedLength == 0) {
            throw base::RuntimeError(base::error::kDivisionByZero);
        }
        barProgress.setBarWidth(std::int64_t{ui::FramedBar::kFrameWidth} * value / m_announcedLength);
        m_services.desktop.doEvents();
    });
}

void ucSendReceive::SetProgressBarMax() {
    reportErrors("SetProgressBarMax", [&] {
        barProgress.setBarWidth(kFullBar);
        m_services.desktop.doEvents();
    });
}

void ucSendReceive::SetProgressBarMinimum() {
    reportErrors("SetProgressBarMinimum", [&] {
        barProgress.setBarWidth(0);
        m_services.desktop.doEvents();
    });
}

void ucSendReceive::UserControl_SetImage(std::shared_ptr<const base::Picture> picture) {
    picImage.setPicture(std::move(picture));
}

void ucSendReceive::UserControl_SetImage(const std::string& file) {
    reportErrors("UserControl_SetImage", [&] {
        auto picture = m_services.pictures.decode(file, kPictureExtent, kPictureExtent);
        picImage.setPicture(picture ? std::make_shared<const base::Picture>(*std::move(picture)) : nullptr);
    });
}

void ucSendReceive::Setcolors() {
    reportErrors("Setcolors", [&] {
        const auto paint = [host = session.globals()](std::string_view option, ui::Color standard,
                                                      std::initializer_list<ui::Control*> controls) {
            const std::optional<std::string> name = host.option(option);
            for (ui::Control* const control : name ? controls : std::initializer_list<ui::Control*>{}) {
                // An unknown name leaves the colour as it is.
                const ui::Color now = control->backColor().value_or(standard);
                const auto color = static_cast<ui::Color>(host::colorFromName(*name, static_cast<std::int32_t>(now)));
                if (color != now) {
                    control->setBackColor(color);
                }
            }
        };
        paint("FrameColor", ui::color::kLight3d, {&barProgress});
        paint("ButtonColor", ui::color::kButtonFace, {&cmdOK, &cmdCancel});
    });
}

// Without a length to compare with, the full bar says that something comes.
void ucSendReceive::transfer(const exchange::Transfer& now) {
    m_announcedLength = now.total.value_or(0);
    if (now.complete) {
        barProgress.setBarWidth(ui::FramedBar::kFrameWidth);
    } else if (now.bytes == 0) {
        barProgress.setBarWidth(0);
    } else if (m_announcedLength > now.bytes) {
        barProgress.setBarWidth(std::int64_t{ui::FramedBar::kFrameWidth} * now.bytes / m_announcedLength);
        m_services.desktop.doEvents();
    } else {
        barProgress.setBarWidth(kFullBar);
    }
}

void ucSendReceive::replacingLibrary(const std::string& path) {
    fire([&](Events& listener) { listener.UnregisterServer(path); });
}

void ucSendReceive::libraryPlaced(const std::string& path) {
    fire([&](Events& listener) { listener.RegisterServer(path); });
}

void ucSendReceive::commandStarts(const std::string& name, std::shared_ptr<xml::XmlDocument>& request) {
    fire([&](Events& listener) {
        std::string changed = name; // is ignored
        listener.DownloadStart(changed, request);
    });
}

void ucSendReceive::commandAnswered(const std::string& name, const xml::XmlNode& command,
                                    const std::shared_ptr<xml::XmlDocument>& results) {
    fire([&](Events& listener) {
        std::string changed = name;
        listener.DownloadComplete(changed, command, results);
    });
}

void ucSendReceive::runCompleted() {
    fire([](Events& listener) { listener.SendReceiveCompleted(); });
}

// The one place that shows where a run stands: the command's row, the bar, the status line, what can be clicked.
void ucSendReceive::runStateChanged(const exchange::RunState& state) {
    using Phase = exchange::RunState::Phase;
    using Command = exchange::RunState::Command;
    if (state.command == Command::Starting) {
        SetProgressBarMinimum();
    } else if (const auto row = lvCommands.find(state.name); row && state.command != Command::None) {
        lvCommands.setCell(*row, static_cast<std::size_t>(CommandColumn::Status),
                           state.command == Command::Busy   ? "Busy"
                           : state.command == Command::Done ? "Done"
                                                            : "Error");
    }
    if (state.phase == Phase::Failed || state.phase == Phase::Cancelled) { // no message is handled before all is told
        const char* const end = state.phase == Phase::Failed ? "Send/Receive failed..." : "Send/Receive cancelled...";
        trace(end);
        lProgress.setText(end);
        barProgress.setBarWidth(0);
    }
    setBusy(state.running());
}

void ucSendReceive::setBusy(bool busy) {
    if (busy == cmdOK.enabled()) {
        cmdOK.setEnabled(!busy);
        lvCommands.setEnabled(!busy);
        if (!busy) {
            setFocus(lvCommands); // where it was, before it went to Cancel
        }
    }
}

} // namespace sendreceive
