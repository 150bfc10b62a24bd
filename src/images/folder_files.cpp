#include "images/folder_files.h"

#include "base/resume_next.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace images {
namespace {

constexpr std::size_t kYieldEvery = 256; // entries

// Names that the system takes for devices whatever their extension.
bool isDeviceName(std::string_view upper) {
    const std::string_view stem = base::trim(upper.substr(0, upper.find('.')));
    constexpr std::array<std::string_view, 6> kDevices{"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
    if (std::find(kDevices.begin(), kDevices.end(), stem) != kDevices.end()) {
        return true;
    }
    // COM0..COM9, LPT0..LPT9, and the superscript digits 1 to 3, two bytes each
    return (stem.starts_with("COM") || stem.starts_with("LPT")) && (stem.size() == 4 || stem.size() == 5);
}

// True for names whose existence a list of names cannot decide.
bool isOdd(std::string_view name, std::string_view upper) {
    if (name.empty() || name.front() == ' ' || name.back() == ' ' || name.back() == '.') {
        return true;
    }
    const auto odd = [](char c) {
        return static_cast<unsigned char>(c) < 0x20 ||
               std::string_view("\\/:*?\"<>|~").find(c) != std::string_view::npos;
    };
    return std::any_of(name.begin(), name.end(), odd) || isDeviceName(upper);
}

} // namespace

bool FolderFiles::list(ToolRun& run) {
    m_upperNames.clear();
    m_upperShortNames.clear();
    m_known.reset();
    bool goOn = true;
    std::size_t seen = 0;
    base::resumeNext([&] {
        m_fileSystem.listFolder(m_folder + "\\", [&](const ports::FolderEntry& entry) {
            if (!entry.isFolder) {
                m_upperNames.push_back(base::upperCase(entry.name));
                if (!entry.shortName.empty()) {
                    m_upperShortNames.push_back(base::upperCase(entry.shortName));
                }
            }
            goOn = ++seen % kYieldEvery != 0 || run.proceed();
            return goOn;
        });
    });
    return goOn;
}

bool FolderFiles::contains(std::string_view name) const {
    const std::string upper = base::upperCase(name);
    if (!isOdd(name, upper)) {
        return known().contains(upper);
    }
    return !name.empty() && m_fileSystem.fileExists(m_folder + "\\" + std::string(name));
}

const std::unordered_set<std::string_view>& FolderFiles::known() const {
    if (!m_known) {
        m_known.emplace();
        m_known->reserve(m_upperNames.size() + m_upperShortNames.size());
        m_known->insert(m_upperNames.begin(), m_upperNames.end());
        m_known->insert(m_upperShortNames.begin(), m_upperShortNames.end());
    }
    return *m_known;
}

} // namespace images
