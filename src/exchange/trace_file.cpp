#include "exchange/trace_file.h"

#include <string>

namespace exchange {

void TraceFile::WriteSingleLog(std::string_view dataFolder, std::string_view text, bool restart) const {
    if (!m_services.files.folderExists(dataFolder)) {
        return;
    }
    const std::string path = std::string(dataFolder) + "quorvantis_sendreceive.txt";
    const std::string line = m_services.ansi.encode(
        m_services.locale.generalDate(m_services.clock.now()).append(",").append(text).append("\r\n"));
    if (restart) {
        m_services.files.replaceFile(path, line);
    } else {
        m_services.files.appendFile(path, line);
    }
}

} // namespace exchange
