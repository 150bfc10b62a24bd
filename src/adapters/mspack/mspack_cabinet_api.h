// The cabinet port over libmspack, for the native tests, fuzz targets and benchmarks: it asks what the setup library of
// Windows asks, in the same order.
#pragma once

#include "ports/cabinet_api.h"
#include "ports/code_page.h"

#include <filesystem>

namespace adapters {

// Beyond the port's promises: a walk ends as soon as the callback answers an extracted file with an error, and a
// cabinet whose table of files is damaged fails before its first file.
class MspackCabinetApi final : public ports::CabinetApi {
public:
    // `root` stands for every drive (adapters/posix/native_name.h). `ansi`, in which paths come, outlives the object.
    MspackCabinetApi(std::filesystem::path root, ports::CodePage& ansi);

    std::uint32_t iterate(std::string_view ansiPath, std::uint32_t context, ports::CabinetCallback& callback) override;
    bool isPresent() override { return true; }

private:
    [[nodiscard]] std::string native(std::string_view ansiPath);

    std::filesystem::path m_root;
    ports::CodePage& m_ansi;
};

} // namespace adapters
