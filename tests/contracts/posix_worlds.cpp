// The contract suites on the native adapters.
#include "adapters/posix/posix_file_system.h"
#include "contracts/file_system_contract.h"
#include "contracts/scratch_folder.h"

#include <algorithm>

#include <unistd.h>

namespace contracts {
namespace {

constexpr uid_t kNobody = 65534;

class PosixWorld final : public FileSystemWorld {
public:
    PosixWorld() : m_files(m_scratch.path()) {}
    ~PosixWorld() override { becomeRootAgain(); }

    ports::FileSystem& files() override { return m_files; }
    std::string folder() override { return "C:\\"; }
    bool isWindowsLike() override { return false; }

    void setReadOnly(const std::string& path, bool readOnly) override {
        using std::filesystem::perms;
        std::filesystem::permissions(native(path),
                                     readOnly ? perms::owner_read : perms::owner_read | perms::owner_write);
    }
    bool fillDiskFor(const std::string& path) override {
        std::filesystem::create_symlink("/dev/full", native(path + ".tmp"));
        return true;
    }
    // Root may write everywhere, so the rest of the test runs as nobody, to whom the folder's files are open.
    bool denyCreation(const std::string& folder) override {
        using std::filesystem::perms;
        for (const auto& entry : std::filesystem::directory_iterator(native(folder))) {
            std::filesystem::permissions(entry.path(), perms(0666));
        }
        std::filesystem::permissions(m_scratch.path(), perms(0755));
        std::filesystem::permissions(native(folder), perms(0555));
        return ::geteuid() != 0 || ::seteuid(kNobody) == 0;
    }
    void allowCreation(const std::string& folder) override {
        becomeRootAgain();
        std::filesystem::permissions(native(folder), std::filesystem::perms(0755));
    }

private:
    static void becomeRootAgain() {
        if (::getuid() == 0 && ::seteuid(0) != 0) {
            std::abort(); // the tests after this one would run with other rights
        }
    }
    [[nodiscard]] std::filesystem::path native(std::string path) const {
        std::replace(path.begin(), path.end(), '\\', '/');
        return m_scratch.path().string() + path.substr(2);
    }

    ScratchFolder m_scratch;
    adapters::PosixFileSystem m_files;
};

INSTANTIATE_TEST_SUITE_P(Posix, FileSystemContract, testing::Values([] { return std::make_unique<PosixWorld>(); }));

} // namespace
} // namespace contracts
