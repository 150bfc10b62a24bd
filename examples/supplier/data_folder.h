// The folder in which the service keeps all that it knows: plain files that a person or a test reads and changes.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace supplier {

// Names are relative to the folder and must not lead outside it; the caller checks what came from a client.
class DataFolder {
public:
    explicit DataFolder(std::filesystem::path root) : m_root(std::move(root)) {}

    [[nodiscard]] std::filesystem::path path(std::string_view name) const { return m_root / name; }

    // The whole file; nothing when it is not there or cannot be read.
    [[nodiscard]] std::optional<std::string> read(std::string_view name) const;

    // Replaces the file in one step: a reader sees the old bytes or the new ones. Raises base::RuntimeError.
    void replace(std::string_view name, std::string_view bytes) const;

private:
    std::filesystem::path m_root;
};

} // namespace supplier
