// The port to program files: the version that they carry, who vouches for them, and starting one.
// Real: windows/adapters/windows_programs.h; in memory: tests/fakes/fake_programs.h.
#pragma once

#include "base/file_version.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace ports {

// What a program's signature is worth on this machine, at this moment.
struct Signature {
    bool trusted =
        false; // the file is as it was signed, and its signer's certificate leads to an authority of this user
    std::string publisher; // the name in the signer's certificate (its common name); "" unless trusted
    std::string problem;   // one line for the user, such as "It is not signed."; "" when trusted
};

// While it lives nobody else can change, replace or remove the file; everybody can read and start it.
class HeldFile {
public:
    HeldFile() = default;
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;
    virtual ~HeldFile() = default;
};

// Paths are as in ports::FileSystem.
class Programs {
public:
    Programs() = default;
    Programs(const Programs&) = delete;
    Programs& operator=(const Programs&) = delete;
    virtual ~Programs() = default;

    // The file version of its fixed version information. Nothing for a file that has none, or that cannot be read.
    [[nodiscard]] virtual std::optional<base::FileVersion> version(std::string_view path) = 0;

    // A file that cannot be read is not trusted; never fails. No network is asked, so a revoked certificate still
    // counts.
    [[nodiscard]] virtual Signature signature(std::string_view path) = 0;

    // Raises what ports::FileSystem::readFile does. Never null.
    [[nodiscard]] virtual std::unique_ptr<HeldFile> hold(std::string_view path) = 0;

    // Opens it as the shell does, maximised, without parameters and without a working folder. Does not wait for its
    // end, and does not say whether it could be started.
    virtual void start(std::string_view path) = 0;
};

} // namespace ports
