// Writes a cabinet whose files are stored, not packed, with names and faults that no packer would make.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace fakes {

struct StoredFile {
    std::string name; // bytes as they are to be stored
    std::string bytes;
    std::uint16_t dosDate = 0x5D6F; // 2026-11-15
    std::uint16_t dosTime = 0x9906; // 19:08:12
    std::uint16_t attributes = 0x20;
};

struct CabinetFaults {
    bool wrongChecksums = false;
    bool goesOn = false; // the last file is a thousand bytes longer, and they are in "next.cab"
};

// The whole cabinet, in one folder with blocks of 32,768 bytes.
[[nodiscard]] std::string storedCabinet(const std::vector<StoredFile>& files, const CabinetFaults& faults = {});

} // namespace fakes
