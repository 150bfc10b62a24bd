#include "exchange/upgrade.h"

#include "base/relative_name.h"
#include "exchange/fetch_file.h"
#include "exchange/listed_file.h"
#include "exchange/report_errors.h"
#include "exchange/setup_program.h"
#include "ports/ensure_folder.h"

namespace exchange {

xml::XmlNode findUpgrade(const xml::XmlDocument& results) {
    const xml::XmlNode first = results.selectSingleNode("//command[@name='firstdownload100']");
    return first ? first : results.selectSingleNode("//command[@name='upgrade100']");
}

bool Upgrade::download(const xml::XmlDocument& results, const std::string& workingFolder) {
    ports::FileSystem& files = m_context.services.fileSystem;
    ports::requireFolder(files, workingFolder);
    ports::requireFolder(files, workingFolder + "upgrade");
    const xml::XmlNode command = findUpgrade(results);
    if (!command) {
        return false;
    }
    const std::string version = command.getAttribute("latestversion");
    bool fetched = false;
    if (base::staysInside(version)) {
        const std::string target = workingFolder + "upgrade\\upgrade" + version + "\\";
        ports::requireFolder(files, target);
        for (const xml::XmlNode& element : results.selectNodes("//file")) {
            fetched = fetch(ListedFile::from(element), target); // the last one counts, whatever became of the others
        }
    } else {
        m_context.observer.trace("Sub DownloadUpgrade: refused version " + version);
    }
    files.replaceFile(workingFolder + "upgrade.xml", results.xml() + "\r\n");
    return fetched;
}

bool Upgrade::fetch(const ListedFile& file, const std::string& target) {
    m_context.observer.status("Downloading " + file.filename + ", Please wait");
    if (!base::namesAFileInside(file.filename)) {
        m_context.observer.trace("Sub DownloadUpgrade: refused file " + file.filename);
        return false;
    }
    const std::string path = target + file.filename;
    const FetchedFile fetched = fetchFile(m_context, file.webname, path);
    if (!fetched.complete || !isSetupProgram(file.filename)) {
        return fetched.complete;
    }
    const host::HostGlobals host = m_context.session.globals();
    const SetupCheck check(m_context.services.programs, m_context.services.fileSystem, host);
    const bool good = reportErrors(m_context.dialogues, "DownloadUpgrade", [&] {
        check.afterDownload(path, fetched.announcedLength, file.version);
        runLater(m_context.session, path);
    });
    if (!good) { // not even the user should start it
        m_context.services.fileSystem.removeFile(path);
    }
    return good;
}

} // namespace exchange
