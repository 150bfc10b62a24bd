#include "contracts/cabinet_world.h"
#include "contracts/scratch_folder.h"
#include "windows/adapters/ansi_code_page.h"
#include "windows/adapters/setup_cabinet_api.h"
#include "windows/adapters/windows_file_system.h"
#include "windows/base/handles.h"
#include "windows/base/wide.h"

#include <algorithm>

#include <windows.h>

namespace contracts {
namespace {

class WindowsCabinetWorld final : public CabinetWorld {
public:
    ports::CabinetApi& api() override { return m_api; }
    ports::FileSystem& files() override { return m_files; }
    ports::CodePage& ansi() override { return m_ansi; }
    std::string folder() override { return windows::fromWide(m_scratch.path().wstring()) + "\\"; }
    std::string dataFile(const std::string& name) override {
        std::string path = QVI_TEST_DATA "/" + name;
        std::replace(path.begin(), path.end(), '/', '\\');
        return "Z:" + path;
    }
    bool lock(const std::string& path) override {
        m_lock.reset(CreateFileW(windows::toWide(path).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        return static_cast<bool>(m_lock);
    }

private:
    ScratchFolder m_scratch;
    windows::WindowsFileSystem m_files;
    windows::AnsiCodePage m_ansi;
    windows::SetupCabinetApi m_api;
    windows::UniqueHandle m_lock;
};

} // namespace

std::unique_ptr<CabinetWorld> makeCabinetWorld() {
    return std::make_unique<WindowsCabinetWorld>();
}

} // namespace contracts
