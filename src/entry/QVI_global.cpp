#include "entry/QVI_global.h"

#include "entry/environment.h"
#include "sendreceive_form/frmQVI_sendreceive.h"

namespace entry {

cabinet::clsCABFile::Services cabinetServices(Environment& e) {
    return {e.cabinetApi, e.cabinetCallback, e.fileSystem, e.ansi, e.locale, e.log};
}

sendreceive::Services sendReceiveServices(Environment& e) {
    return {.engine = {e.fileSystem, e.settings, e.clock, e.ansi, e.network, e.programs, cabinetServices(e)},
            .desktop = e.desktop,
            .locale = e.locale,
            .pictures = e.pictures,
            .login = e.login,
            .componentFolder = e.componentFolder};
}

void showSendReceive(Environment& environment) {
    const images::frmQVI_Images& host = *environment.imageManager;
    sendreceive::frmQVI_sendreceive form(sendReceiveServices(environment), {host.gProfileNumber, host.gQuorVantisPath,
                                                                            host.gSettingString, host.gWebAddress});
    form.load();
    form.showModal();
}

} // namespace entry
