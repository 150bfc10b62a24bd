#include "fakes/fake_file_system.h"

#include "base/runtime_error.h"
#include "base/text.h"
#include "fakes/fake_path.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace fakes {

using base::RuntimeError;
namespace error = base::error;

template <typename Body>
auto FakeFileSystem::record(std::string operation, Body&& body) {
    const std::size_t entry = m_operations.size();
    m_operations.push_back(std::move(operation));
    try {
        return body();
    } catch (const RuntimeError& e) {
        m_operations[entry] += " !" + std::to_string(e.number());
        throw;
    }
}

void FakeFileSystem::addFolder(std::string_view path) {
    for (std::string key = keyOf(path); m_folders.insert(key).second && key.find('\\') != key.npos;) {
        key = parentOf(key);
    }
}

void FakeFileSystem::addFile(std::string_view path, std::string_view bytes) {
    const std::string full = tidied(path);
    addFolder(parentOf(full));
    const auto [place, added] = m_files.try_emplace(base::upperCase(full));
    if (added) {
        place->second.spelling = full;
    }
    place->second.bytes = bytes;
}

std::string FakeFileSystem::contents(std::string_view path) const {
    const auto found = m_files.find(keyOf(path));
    if (found == m_files.end()) {
        throw std::logic_error("no such file: " + std::string(path));
    }
    return found->second.bytes;
}

bool FakeFileSystem::hasFile(std::string_view path) const {
    return m_files.contains(keyOf(path));
}

std::vector<std::string> FakeFileSystem::files() const {
    std::vector<std::string> paths;
    for (const auto& [key, file] : m_files) {
        paths.push_back(file.spelling);
    }
    return paths;
}

void FakeFileSystem::lock(std::string_view path) {
    m_locked.insert(keyOf(path));
}

void FakeFileSystem::unlock(std::string_view path) {
    m_locked.erase(keyOf(path));
}

void FakeFileSystem::setReadOnly(std::string_view path, bool readOnly) {
    m_files.at(keyOf(path)).readOnly = readOnly;
}

void FakeFileSystem::denyCreation(std::string_view folder) {
    m_denied.insert(keyOf(folder));
}

void FakeFileSystem::allowCreation(std::string_view folder) {
    m_denied.erase(keyOf(folder));
}

void FakeFileSystem::failWrite(int nth) {
    m_failingWrite = nth;
}

bool FakeFileSystem::fileExists(std::string_view path) {
    try {
        return !endsWithSeparator(path) && m_files.contains(keyOf(path));
    } catch (const RuntimeError&) {
        return false;
    }
}

bool FakeFileSystem::folderExists(std::string_view path) {
    try {
        return m_folders.contains(keyOf(path));
    } catch (const RuntimeError&) {
        return false;
    }
}

void FakeFileSystem::createFolder(std::string_view path) {
    record("createFolder " + std::string(path), [&] {
        const std::string key = keyOf(path);
        if (m_folders.contains(key) || m_files.contains(key)) {
            throw RuntimeError(error::kPathFileAccess);
        }
        requireParent(key);
        requireCreation(key);
        m_folders.insert(key);
    });
}

std::string FakeFileSystem::readFile(std::string_view path) {
    return record("read " + std::string(path), [&] { return openFile(keyOf(path)).bytes; });
}

void FakeFileSystem::replaceFile(std::string_view path, std::string_view bytes) {
    record("replace " + std::string(path), [&] {
        const std::string full = tidied(path);
        const std::string key = base::upperCase(full);
        const auto target = m_files.find(key);
        const bool isNew = target == m_files.end();
        if (m_folders.contains(key) || (!isNew && target->second.readOnly)) {
            throw RuntimeError(error::kPathFileAccess);
        }
        requireParent(key);
        requireUnlocked(key);
        if (isNew) {
            requireCreation(key);
        }
        if (!m_denied.contains(parentOf(key))) {
            const std::string temporary = key + ".TMP";
            requireUnlocked(temporary);
            if (m_folders.contains(temporary)) {
                throw RuntimeError(error::kPathFileAccess);
            }
            m_files.erase(temporary); // a stray one of an earlier save
        }
        if (m_failingWrite > 0 && --m_failingWrite == 0) {
            throw RuntimeError(error::kDiskFull);
        }
        addFile(full, bytes);
    });
}

void FakeFileSystem::appendFile(std::string_view path, std::string_view bytes) {
    record("append " + std::string(path), [&] {
        requireWritableTarget(path);
        if (m_failingWrite > 0 && --m_failingWrite == 0) {
            throw RuntimeError(error::kDiskFull);
        }
        addFile(path, hasFile(path) ? contents(path).append(bytes) : std::string(bytes));
    });
}

std::uint64_t FakeFileSystem::fileSize(std::string_view path) {
    const std::string key = keyOf(path);
    requireParent(key);
    const auto found = m_files.find(key);
    if (found == m_files.end()) {
        throw RuntimeError(m_folders.contains(key) ? error::kPathFileAccess : error::kFileNotFound);
    }
    return found->second.bytes.size();
}

void FakeFileSystem::moveFile(std::string_view from, std::string_view to) {
    record("move " + std::string(from) + " -> " + std::string(to), [&] {
        const std::string source = keyOf(from);
        const std::string full = tidied(to);
        const std::string target = base::upperCase(full);
        File& file = openFile(source);
        if (source != target && (m_files.contains(target) || m_folders.contains(target))) {
            throw RuntimeError(error::kPathFileAccess);
        }
        requireParent(target);
        if (parentOf(source) != parentOf(target)) {
            requireCreation(target);
        }
        rename(file, source, full);
    });
}

void FakeFileSystem::moveOver(std::string_view from, std::string_view to) {
    record("move " + std::string(from) + " => " + std::string(to), [&] {
        const std::string source = keyOf(from);
        File& file = openFile(source);
        requireWritableTarget(to);
        rename(file, source, tidied(to));
    });
}

void FakeFileSystem::rename(File& file, const std::string& source, const std::string& spelling) {
    File moved = std::move(file);
    moved.spelling = spelling;
    m_files.erase(source);
    m_files[base::upperCase(spelling)] = std::move(moved);
}

void FakeFileSystem::removeFile(std::string_view path) {
    record("remove " + std::string(path), [&] {
        const std::string key = keyOf(path);
        if (openFile(key).readOnly) {
            throw RuntimeError(error::kPathFileAccess);
        }
        m_files.erase(key);
    });
}

void FakeFileSystem::copyFile(std::string_view from, std::string_view to) {
    record("copy " + std::string(from) + " -> " + std::string(to), [&] {
        const std::string bytes = openFile(keyOf(from)).bytes;
        requireWritableTarget(to);
        if (m_failingWrite > 0 && --m_failingWrite == 0) {
            throw RuntimeError(error::kDiskFull);
        }
        addFile(to, bytes);
    });
}

void FakeFileSystem::requireWritable(std::string_view path) {
    requireWritableTarget(path);
}

void FakeFileSystem::requireWritableTarget(std::string_view path) const {
    const std::string key = keyOf(path);
    const auto target = m_files.find(key);
    if (m_folders.contains(key) || (target != m_files.end() && target->second.readOnly)) {
        throw RuntimeError(error::kPathFileAccess);
    }
    requireParent(key);
    requireUnlocked(key);
    if (target == m_files.end()) {
        requireCreation(key);
    }
}

void FakeFileSystem::listFolder(std::string_view folder, const ports::EntryVisitor& visit) {
    const std::string key = keyOf(folder);
    if (!m_folders.contains(key)) {
        throw RuntimeError(error::kPathNotFound);
    }
    std::vector<ports::FolderEntry> entries;
    const auto isInside = [&](const std::string& path) { return parentOf(path) == key && path.size() > key.size(); };
    for (const auto& [path, file] : m_files) {
        if (isInside(path)) {
            entries.push_back({file.spelling.substr(file.spelling.find_last_of('\\') + 1), {}, false});
        }
    }
    for (const std::string& path : m_folders) {
        if (isInside(path)) {
            entries.push_back({path.substr(path.find_last_of('\\') + 1), {}, true});
        }
    }
    for (const ports::FolderEntry& entry : entries) { // a copy: the visitor may change the folder
        if (!visit(entry)) {
            return;
        }
    }
}

std::vector<std::string> FakeFileSystem::drives() {
    return {"C:"};
}

std::string FakeFileSystem::currentFolder() {
    return "C:\\";
}

FakeFileSystem::File& FakeFileSystem::openFile(const std::string& key) {
    if (m_folders.contains(key)) {
        throw RuntimeError(error::kPathFileAccess);
    }
    requireParent(key);
    const auto found = m_files.find(key);
    if (found == m_files.end()) {
        throw RuntimeError(error::kFileNotFound);
    }
    requireUnlocked(key);
    return found->second;
}

void FakeFileSystem::requireParent(const std::string& key) const {
    if (!m_folders.contains(parentOf(key))) {
        throw RuntimeError(error::kPathNotFound);
    }
}

void FakeFileSystem::requireCreation(const std::string& key) const {
    if (m_denied.contains(parentOf(key))) {
        throw RuntimeError(error::kPathFileAccess);
    }
}

void FakeFileSystem::requireUnlocked(const std::string& key) const {
    if (m_locked.contains(key)) {
        throw RuntimeError(error::kPermissionDenied);
    }
}

} // namespace fakes
