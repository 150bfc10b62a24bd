// Everything that a send/receive control works with, in memory.
#pragma once

#include "fakes/exchange_services.h"
#include "fakes/fake_data_protection.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_picture_decoder.h"
#include "sendreceive/services.h"

namespace fakes {

// `Desktop` is a fake or a real one.
template <typename Desktop>
struct SendReceiveServicesOn : ExchangeServices {
    template <typename... Arguments>
    explicit SendReceiveServicesOn(Arguments... arguments) : desktop(arguments...) {}

    Desktop desktop;
    FakePictureDecoder pictures;
    FakeDataProtection protection;
    login::frmLogin login{{desktop, settings, protection, clock}};
    sendreceive::Services all{engine, desktop, locale, pictures, login, "C:\\Program Files\\QuorvantisImage"};
};

using SendReceiveServices = SendReceiveServicesOn<FakeDesktop>;

} // namespace fakes
