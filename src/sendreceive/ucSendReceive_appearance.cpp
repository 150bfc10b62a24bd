// What the send/receive control shows beside its list: the status line, the progress bar, the picture, its colours.
#include "base/number.h"
#include "base/runtime_error.h"
#include "host/modStyles.h"
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
        const auto paint = [host = globals()](std::string_view option, ui::Color standard,
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

void ucSendReceive::beginTransfer() {
    m_announcedLength = 0;
    barProgress.setBarWidth(0);
}

void ucSendReceive::announceLength(std::string_view bytes) {
    const double length = base::toNumber(bytes).value_or(0);
    constexpr double kLongest = 1e15; // beyond all transfers, within what the arithmetic holds
    m_announcedLength = length >= 1 && length < kLongest ? static_cast<std::int64_t>(length) : 0;
}

// Without a length to compare with, the full bar says that something comes.
void ucSendReceive::showTransfer(std::int64_t bytesSoFar) {
    if (m_announcedLength > bytesSoFar) {
        barProgress.setBarWidth(std::int64_t{ui::FramedBar::kFrameWidth} * bytesSoFar / m_announcedLength);
        m_services.desktop.doEvents();
    } else {
        barProgress.setBarWidth(kFullBar);
    }
}

} // namespace sendreceive
