#include "exchange/error_files.h"

#include "base/date_time.h"
#include "exchange/report_errors.h"
#include "ports/ensure_folder.h"

namespace exchange {

std::string writeErrorFile(Dialogues& dialogues, const Services& services, std::string_view dataFolder,
                           std::string_view answer) {
    std::string written;
    reportErrors(dialogues, "WriteErrorFile", [&] {
        const std::string folder = std::string(dataFolder) + "errors";
        ports::requireFolder(services.fileSystem, folder);
        const std::string path = folder + "\\" + base::fileTimestamp(services.clock.now()) + ".html";
        services.fileSystem.replaceFile(path, std::string(answer) + "\r\n");
        written = path;
    });
    return written;
}

} // namespace exchange
