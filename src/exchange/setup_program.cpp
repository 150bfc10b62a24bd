#include "exchange/setup_program.h"

#include "base/file_version.h"
#include "base/runtime_error.h"
#include "base/split_path.h"
#include "base/text.h"

namespace exchange {
namespace {

[[noreturn]] void refuse(const std::string& path, const std::string& reason) {
    throw base::RuntimeError(base::error::kPermissionDenied, "The set-up program " +
                                                                 std::string(base::nameWithoutFolder(path)) +
                                                                 " was not accepted. " + reason);
}

} // namespace

bool isSetupProgram(std::string_view filename) {
    return base::equalInUpperCase(base::nameWithoutFolder(filename), "quorvantissetup.exe");
}

void runLater(Session& session, const std::string& program) {
    session.MustRunSetupName = program;
    session.bMustRunSetup = true;
}

std::string findSetupProgram(ports::FileSystem& files, const std::string& fetched) {
    if (!fetched.empty() && files.fileExists(fetched)) {
        return fetched;
    }
    const std::string folder = files.currentFolder();
    // Two spellings of one name: the first is looked for, the second is what its users know.
    return files.fileExists(folder + "\\quorvantissetup.exe") ? folder + "\\QuorVantisSetup.exe" : "";
}

void SetupCheck::afterDownload(const std::string& path, std::optional<std::int64_t> announcedLength,
                               const std::string& version) const {
    // Without an announced length, a program that was cut short could not be told from a whole one.
    if (!announcedLength) {
        refuse(path, "The server does not say how long it is.");
    }
    if (static_cast<std::int64_t>(m_fileSystem.fileSize(path)) != *announcedLength) {
        refuse(path, "It is not as long as the server says.");
    }
    if (!base::trim(version).empty()) {
        const std::optional<base::FileVersion> wanted = base::toFileVersion(version);
        const std::optional<base::FileVersion> found = m_programs.version(path);
        if (!wanted || !found || *found < *wanted) {
            refuse(path, "It is not of version " + version + ".");
        }
    }
    if (mustBeSigned()) {
        requireSignature(path);
    }
}

std::unique_ptr<ports::HeldFile> SetupCheck::beforeStart(const std::string& path) const {
    if (!mustBeSigned()) {
        return nullptr;
    }
    auto held = m_programs.hold(path);
    requireSignature(path);
    return held;
}

bool SetupCheck::mustBeSigned() const {
    return base::saysYes(m_host.option("RequireSignedSetup").value_or(""));
}

void SetupCheck::requireSignature(const std::string& path) const {
    const ports::Signature signature = m_programs.signature(path);
    if (!signature.trusted) {
        refuse(path, signature.problem);
    }
    const std::string publisher = m_host.option("SetupPublisher").value_or("");
    if (!publisher.empty() && signature.publisher != publisher) {
        refuse(path, "It is signed by " + signature.publisher + ".");
    }
}

} // namespace exchange
