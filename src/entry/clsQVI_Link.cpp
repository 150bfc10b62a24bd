#include "entry/clsQVI_Link.h"

#include "base/runtime_error.h"
#include "base/scope_exit.h"
#include "entry/QVI_global.h"
#include "entry/environment.h"

namespace entry {
namespace {

// Keeps a second Show method out while one runs: a host's timer must not overwrite the values under an open dialog.
auto show(Environment& environment) {
    if (environment.desktop.showsForm() || environment.showing.test_and_set()) {
        throw base::RuntimeError(base::error::kFormAlreadyDisplayed);
    }
    return base::ScopeExit([&environment] { environment.showing.clear(); });
}

} // namespace

void clsQVI_Link::ShowForm() {
    const auto showing = show(m_environment);
    // However it ends, the next call starts with a fresh form.
    const base::ScopeExit release([this] { m_environment.imageManager.reset(); });
    images::frmQVI_Images& form = fillImageManager();
    form.gSettingString = gSettingString;
    form.openSendReceive = [&environment = m_environment] { showSendReceive(environment); };
    form.load();
    form.showModal();
    NewImageFile = form.NewImageFile;
    DeleteLink = form.DeleteLink;
}

void clsQVI_Link::ShowFormSendReceive() {
    const auto showing = show(m_environment);
    fillImageManager();
    showSendReceive(m_environment);
}

images::frmQVI_Images& clsQVI_Link::fillImageManager() {
    Environment& e = m_environment;
    if (!e.imageManager) {
        e.imageManager = std::make_shared<images::frmQVI_Images>(
            images::ImageServices{e.desktop, e.fileSystem, e.settings, e.clock, e.pictures, e.ansi});
    }
    images::frmQVI_Images& form = *e.imageManager;
    form.ProductCode = ProductCode;
    form.ImagesFile = ImagesFile;
    form.gQuorVantisPath = gQuorVantisPath;
    form.gProfileNumber = gProfileNumber;
    form.gWebAddress = gWebAddress;
    return form;
}

} // namespace entry
