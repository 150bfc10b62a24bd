#include "images/folder_files.h"

#include "base/relative_name.h"
#include "base/resume_next.h"
#include "base/text.h"

#include <algorithm>
#include <utility>

namespace images {
namespace {

constexpr std::size_t kYieldEvery = 256; // entries

// True for names whose existence a list of names cannot decide.
bool isOdd(std::string_view name) {
    if (name.empty() || name.front() == ' ' || name.back() == ' ' || name.back() == '.') {
        return true;
    }
    const auto odd = [](char c) {
        return static_cast<unsigned char>(c) < 0x20 ||
               std::string_view("\\/:*?\"<>|~").find(c) != std::string_view::npos;
    };
    return std::any_of(name.begin(), name.end(), odd) || base::isDeviceName(name);
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
    if (!isOdd(name)) {
        return known().contains(base::upperCase(name));
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
