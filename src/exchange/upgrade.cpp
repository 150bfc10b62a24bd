#include "exchange/upgrade.h"

#include "base/relative_name.h"
#include "exchange/listed_file.h"
#include "exchange/setup_program.h"
#include "sendreceive/ucSendReceive.h"
#include "ui/report_errors.h"

namespace exchange {

xml::XmlNode findUpgrade(const xml::XmlDocument& results) {
    const xml::XmlNode first = results.selectSingleNode("//command[@name='firstdownload100']");
    return first ? first : results.selectSingleNode("//command[@name='upgrade100']");
}

Upgrade::Upgrade(sendreceive::ucSendReceive& control, const Services& services)
    : m_control(control), m_services(services), m_host(control.Globals) {}

bool Upgrade::download(const xml::XmlDocument& results, const std::string& workingFolder) {
    makeFolder(workingFolder);
    makeFolder(workingFolder + "upgrade");
    const xml::XmlNode command = findUpgrade(results);
    if (!command) {
        return false;
    }
    const std::string version = command.getAttribute("latestversion");
    bool fetched = false;
    if (base::staysInside(version)) {
        const std::string target = workingFolder + "upgrade\\upgrade" + version + "\\";
        makeFolder(target);
        for (const xml::XmlNode& element : results.selectNodes("//file")) {
            fetched = fetch(ListedFile::from(element), target); // the last one counts, whatever became of the others
        }
    } else {
        m_control.WriteSingleLog("Sub DownloadUpgrade: refused version " + version, false);
    }
    m_services.fileSystem.replaceFile(workingFolder + "upgrade.xml", results.xml() + "\r\n");
    return fetched;
}

bool Upgrade::fetch(const ListedFile& file, const std::string& target) {
    m_control.SetMessage("Downloading " + file.filename + ", Please wait");
    if (!base::namesAFileInside(file.filename)) {
        m_control.WriteSingleLog("Sub DownloadUpgrade: refused file " + file.filename, false);
        return false;
    }
    const std::string path = target + file.filename;
    const sendreceive::ucSendReceive::FetchedFile fetched = m_control.fetchFile(file.webname, path);
    if (!fetched.complete || !isSetupProgram(file.filename)) {
        return fetched.complete;
    }
    const SetupCheck check(m_services.programs, m_services.fileSystem, m_host);
    const bool good = ui::reportErrors(m_services.desktop, "DownloadUpgrade", [&] {
        check.afterDownload(path, fetched.announcedLength, file.version);
        m_control.setUpLater(path);
    });
    if (!good) { // not even the user should start it
        m_services.fileSystem.removeFile(path);
    }
    return good;
}

void Upgrade::makeFolder(const std::string& folder) {
    if (!m_services.fileSystem.folderExists(folder)) {
        m_services.fileSystem.createFolder(folder);
    }
}

} // namespace exchange
