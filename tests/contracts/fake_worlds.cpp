// The contract suites on the fakes.
#include "contracts/data_protection_contract.h"
#include "contracts/file_system_contract.h"
#include "contracts/locale_contract.h"
#include "contracts/picture_decoder_contract.h"
#include "contracts/settings_contract.h"
#include "fakes/fake_data_protection.h"
#include "fakes/fake_file_system.h"
#include "fakes/fake_locale.h"
#include "fakes/fake_picture_decoder.h"
#include "fakes/fake_settings.h"

namespace contracts {
namespace {

class FakeFileSystemWorld final : public FileSystemWorld {
public:
    FakeFileSystemWorld() { m_files.addFolder("C:\\data"); }
    ports::FileSystem& files() override { return m_files; }
    std::string folder() override { return "C:\\data\\"; }
    void setReadOnly(const std::string& path, bool readOnly) override { m_files.setReadOnly(path, readOnly); }
    bool lock(const std::string& path) override {
        m_files.lock(path);
        return true;
    }
    void unlock(const std::string& path) override { m_files.unlock(path); }
    bool fillDiskFor(const std::string& /*path*/) override {
        m_files.failWrite(1);
        return true;
    }
    bool denyCreation(const std::string& folder) override {
        m_files.denyCreation(folder);
        return true;
    }
    void allowCreation(const std::string& folder) override { m_files.allowCreation(folder); }

private:
    fakes::FakeFileSystem m_files;
};

class FakePictureWorld final : public PictureWorld {
public:
    FakePictureWorld() {
        for (const GoodPicture& picture : goodPictures()) {
            m_decoder.add(pathOf(picture.name), picture.width, picture.height);
        }
    }
    ports::PictureDecoder& decoder() override { return m_decoder; }

private:
    fakes::FakePictureDecoder m_decoder;
};

INSTANTIATE_TEST_SUITE_P(Fake, FileSystemContract,
                         testing::Values([] { return std::make_unique<FakeFileSystemWorld>(); }));
INSTANTIATE_TEST_SUITE_P(Fake, DataProtectionContract,
                         testing::Values([] { return std::make_unique<fakes::FakeDataProtection>(); }));
INSTANTIATE_TEST_SUITE_P(Fake, SettingsContract,
                         testing::Values([] { return std::make_unique<fakes::FakeSettings>(); }));
INSTANTIATE_TEST_SUITE_P(Fake, LocaleContract, testing::Values([] { return std::make_unique<fakes::FakeLocale>(); }));
INSTANTIATE_TEST_SUITE_P(Fake, PictureDecoderContract,
                         testing::Values([] { return std::make_unique<FakePictureWorld>(); }));

} // namespace
} // namespace contracts
