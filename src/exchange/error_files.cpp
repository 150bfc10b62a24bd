#include "exchange/error_files.h"

#include "base/date_time.h"
#include "ui/report_errors.h"

namespace exchange {

std::string writeErrorFile(ui::Desktop& desktop, ports::FileSystem& files, ports::Clock& clock,
                           std::string_view dataFolder, std::string_view answer) {
    std::string written;
    ui::reportErrors(desktop, "WriteErrorFile", [&] {
        const std::string folder = std::string(dataFolder) + "errors";
        if (!files.folderExists(folder)) {
            files.createFolder(folder);
        }
        const std::string path = folder + "\\" + base::fileTimestamp(clock.now()) + ".html";
        files.replaceFile(path, std::string(answer) + "\r\n");
        written = path;
    });
    return written;
}

} // namespace exchange
