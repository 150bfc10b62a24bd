// A fresh folder of the machine's own for one test, gone with everything in it afterwards.
#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

namespace contracts {

class ScratchFolder {
public:
    ScratchFolder() : m_path(std::filesystem::temp_directory_path() / ("qvi_" + std::to_string(unique()))) {
        std::filesystem::create_directories(m_path);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

private:
    static unsigned long long unique() {
        std::random_device device;
        return (static_cast<unsigned long long>(device()) << 32U) | device();
    }

    std::filesystem::path m_path;
};

} // namespace contracts
