#include "adapters/mspack/mspack_cabinet_api.h"
#include "adapters/posix/posix_file_system.h"
#include "contracts/cabinet_world.h"
#include "contracts/scratch_folder.h"
#include "fakes/fake_code_page.h"

#include <algorithm>

namespace contracts {
namespace {

class PosixCabinetWorld final : public CabinetWorld {
public:
    ports::CabinetApi& api() override { return m_api; }
    ports::FileSystem& files() override { return m_files; }
    ports::CodePage& ansi() override { return m_ansi; }
    std::string folder() override { return windowsName(m_scratch.path().string()) + "\\"; }
    std::string dataFile(const std::string& name) override { return windowsName(QVI_TEST_DATA "/" + name); }
    bool fillDiskFor(const std::string& path) override {
        std::string native = path.substr(2);
        std::replace(native.begin(), native.end(), '\\', '/');
        std::filesystem::create_symlink("/dev/full", native);
        return true;
    }

private:
    static std::string windowsName(const std::string& path) {
        std::string name = "C:" + path;
        std::replace(name.begin(), name.end(), '/', '\\');
        return name;
    }

    ScratchFolder m_scratch;
    adapters::PosixFileSystem m_files{"/"};
    fakes::FakeCodePage m_ansi;
    adapters::MspackCabinetApi m_api{"/", m_ansi};
};

} // namespace

std::unique_ptr<CabinetWorld> makeCabinetWorld() {
    return std::make_unique<PosixCabinetWorld>();
}

} // namespace contracts
