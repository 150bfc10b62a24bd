// The set-up program of an upgrade: what must be true of it before it may run.
#pragma once

#include "exchange/session.h"
#include "ports/file_system.h"
#include "ports/programs.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace exchange {

// A file's name says that it is one, in whatever letter case and folder.
[[nodiscard]] bool isSetupProgram(std::string_view filename);

// The program is to run when the run has ended.
void runLater(Session& session, const std::string& program);

// The set-up program that was fetched, else the one in the current folder; "" when there is none in either place.
[[nodiscard]] std::string findSetupProgram(ports::FileSystem& files, const std::string& fetched);

class SetupCheck {
public:
    // None is owned. The host's options are asked for when they matter: "RequireSignedSetup", and "SetupPublisher", the
    // name that the signer must have.
    SetupCheck(ports::Programs& programs, ports::FileSystem& fileSystem, const host::HostGlobals& host)
        : m_programs(programs), m_fileSystem(fileSystem), m_host(host) {}

    // Raises 70 with the reason when a program that was fetched is not what the server announced: another length, older
    // than `version` ("": not looked at), or not signed as the host requires.
    void afterDownload(const std::string& path, std::optional<std::int64_t> announcedLength,
                       const std::string& version) const;
    // Raises 70 with the reason when the program is not signed as the host requires. From then on nobody can change it,
    // as long as the result lives; null where the host requires nothing.
    [[nodiscard]] std::unique_ptr<ports::HeldFile> beforeStart(const std::string& path) const;

private:
    [[nodiscard]] bool mustBeSigned() const;
    void requireSignature(const std::string& path) const;

    ports::Programs& m_programs;
    ports::FileSystem& m_fileSystem;
    const host::HostGlobals& m_host;
};

} // namespace exchange
