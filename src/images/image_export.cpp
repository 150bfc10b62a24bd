#include "images/image_export.h"

#include "base/relative_name.h"
#include "base/resume_next.h"
#include "base/text.h"
#include "ports/ensure_folder.h"

#include <unordered_set>
#include <vector>

namespace images {
namespace {

// Makes the target and the folders of a name in a sub-folder; one that exists is fine.
void makeFolders(ports::FileSystem& fileSystem, const std::string& target, const std::string& file) {
    const std::string path = target + "\\" + file;
    for (std::size_t end = target.size(); end != std::string::npos; end = path.find('\\', end + 1)) {
        ports::requireFolder(fileSystem, path.substr(0, end));
    }
}

std::vector<std::string> linkedPictures(const LinkDocument& document) {
    std::vector<std::string> files;
    std::unordered_set<std::string> known; // the file system does not tell cases apart
    document.forEachLink([&](const Link& link) {
        std::string file = link.file();
        if (!file.empty() && link.status() != "deleted" && known.insert(base::upperCase(file)).second) {
            files.push_back(std::move(file));
        }
        return true;
    });
    return files;
}

} // namespace

ExportResult exportImages(const LinkDocument& document, ports::FileSystem& fileSystem, const std::string& source,
                          const std::string& target, ToolRun& run) {
    const std::vector<std::string> files = linkedPictures(document);
    ExportResult result;
    result.linked = static_cast<int>(files.size());
    for (std::size_t i = 0; i < files.size(); ++i) {
        const std::string& file = files[i];
        run.progress(i, files.size());
        if (!run.proceed()) {
            break;
        }
        if (!base::staysInside(file) || !fileSystem.fileExists(source + file)) {
            run.line(file + " was not found.");
            continue;
        }
        const bool copied = base::resumeNext([&] {
            makeFolders(fileSystem, target, file);
            fileSystem.copyFile(source + file, target + "\\" + file);
        });
        run.line(file + (copied ? " exported." : " could not be copied."));
        result.copied += copied ? 1 : 0;
    }
    return result;
}

} // namespace images
