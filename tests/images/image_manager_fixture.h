// The image manager on fakes, and a user who works it.
#pragma once

#include "fakes/fake_clock.h"
#include "fakes/fake_code_page.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_file_system.h"
#include "fakes/fake_picture_decoder.h"
#include "fakes/fake_settings.h"
#include "images/frmQVI_Images.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace images {

class ImageManagerFixture : public testing::Test {
protected:
    ImageManagerFixture() {
        form.gQuorVantisPath = "C:\\QV\\";
        form.ProductCode = "ABC";
        files.addFolder("C:\\QV");
    }

    // Shows the form, lets the user act, then closes it if the user has not.
    void show(const std::function<void()>& user) {
        desktop.whenShown("frmQVI_Images", [&] {
            user();
            form.userKey(ui::key::kEscape);
        });
        form.load();
        form.showModal();
    }
    std::string imageModify() { return settings.get("QuorVantis", "Main", "ImageModify"); }

    fakes::FakeDesktop desktop;
    fakes::FakeFileSystem files;
    fakes::FakeSettings settings;
    fakes::FakeClock clock;
    fakes::FakePictureDecoder pictures;
    fakes::FakeCodePage ansi;
    frmQVI_Images form{{desktop, files, settings, clock, pictures, ansi}};
};

} // namespace images
