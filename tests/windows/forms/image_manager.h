// The image manager on the real desktop, over files and settings in memory.
#pragma once

#include "base/error_number.h"
#include "base/runtime_error.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_code_page.h"
#include "fakes/fake_file_system.h"
#include "fakes/fake_picture_decoder.h"
#include "fakes/fake_settings.h"
#include "images/frmQVI_Images.h"
#include "windows/forms/person.h"
#include "windows/forms/windows_desktop.h"

#include <gtest/gtest.h>

namespace test {

inline constexpr std::string_view kForm = "frmQVI_Images";
inline constexpr wchar_t kFormClass[] = L"QVI_frmQVI_Images";

class ImageManagerTest : public testing::Test {
protected:
    ImageManagerTest() {
        form.gQuorVantisPath = "C:\\QV\\";
        form.ProductCode = "ABC";
        form.load();
        form.NewImageFile = "untouched"; // Close empties it, Return does not
    }

    void showUntilClosed() {
        form.showModal();
        EXPECT_FALSE(form.shown());
        const HWND left = FindWindowW(kFormClass, nullptr); // or another test program's
        EXPECT_TRUE(left == nullptr || GetWindowThreadProcessId(left, nullptr) != GetCurrentThreadId());
    }

    // The number of the error that showing the form ends with; 0 when it ends without.
    std::int32_t errorOfShowing() {
        return base::errorNumber([&] { form.showModal(); });
    }

    fakes::FakeFileSystem files;
    fakes::FakeSettings settings;
    fakes::FakeClock clock;
    fakes::FakePictureDecoder pictures;
    fakes::FakeCodePage ansi;
    windows::WindowsDesktop desktop{GetModuleHandleW(nullptr)};
    images::frmQVI_Images form{{desktop, files, settings, clock, pictures, ansi}};
    Person person;
};

} // namespace test
