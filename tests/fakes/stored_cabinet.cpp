#include "fakes/stored_cabinet.h"

#include <algorithm>

namespace fakes {
namespace {

constexpr std::size_t kHeader = 36;
constexpr std::size_t kFolder = 8;
constexpr std::size_t kBlock = 32'768;

std::string little(std::size_t value, int bytes) {
    std::string out;
    for (int i = 0; i < bytes; ++i) {
        out.push_back(static_cast<char>(value >> (8 * i) & 0xFFU));
    }
    return out;
}

// Exclusive-or of 32-bit words in memory order; of the last one to three bytes the first is the highest.
std::uint32_t checksum(std::string_view bytes, std::uint32_t seed) {
    const auto byte = [&](std::size_t i) { return std::uint32_t{static_cast<unsigned char>(bytes[i])}; };
    std::size_t i = 0;
    for (; i + 4 <= bytes.size(); i += 4) {
        seed ^= byte(i) | byte(i + 1) << 8U | byte(i + 2) << 16U | byte(i + 3) << 24U;
    }
    std::uint32_t rest = 0;
    for (; i < bytes.size(); ++i) {
        rest = rest << 8U | byte(i);
    }
    return seed ^ rest;
}

std::string dataBlock(std::string_view bytes, bool wrongChecksum) {
    const std::string sizes = little(bytes.size(), 2) + little(bytes.size(), 2);
    const std::uint32_t sum = checksum(sizes, checksum(bytes, 0));
    return little(wrongChecksum ? sum ^ 1U : sum, 4) + sizes + std::string(bytes);
}

} // namespace

std::string storedCabinet(const std::vector<StoredFile>& files, const CabinetFaults& faults) {
    std::string entries;
    std::string content;
    for (const StoredFile& file : files) {
        const bool goesOn = faults.goesOn && &file == &files.back();
        entries += little(file.bytes.size() + (goesOn ? 1000 : 0), 4) + little(content.size(), 4) +
                   little(goesOn ? 0xFFFE : 0, 2) + little(file.dosDate, 2) + little(file.dosTime, 2) +
                   little(file.attributes, 2) + file.name + '\0';
        content += file.bytes;
    }
    std::string blocks;
    std::size_t count = 0;
    for (std::size_t at = 0; at < content.size(); at += kBlock, ++count) {
        blocks += dataBlock(std::string_view(content).substr(at, kBlock), faults.wrongChecksums);
    }
    const std::string next = faults.goesOn ? std::string("next.cab\0disk 2\0", 16) : "";
    const std::size_t table = kHeader + next.size() + kFolder;
    const std::size_t data = table + entries.size();
    return "MSCF" + little(0, 4) + little(data + blocks.size(), 4) + little(0, 4) + little(table, 4) + little(0, 4) +
           "\x03\x01" + little(1, 2) + little(files.size(), 2) + little(faults.goesOn ? 2 : 0, 2) + little(0, 4) +
           next + little(data, 4) + little(count, 2) + little(0, 2) + entries + blocks;
}

} // namespace fakes
