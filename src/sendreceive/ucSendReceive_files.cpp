// Files that an answer names: fetching them, upgrades, and the set-up program.
#include "sendreceive/ucSendReceive.h"

#include "base/runtime_error.h"
#include "base/split_path.h"
#include "cabinet/modCallback.h"
#include "exchange/exchange.h"
#include "exchange/file_downloads.h"
#include "exchange/listed_file.h"
#include "exchange/setup_program.h"
#include "exchange/upgrade.h"
#include "ports/ensure_folder.h"

namespace sendreceive {

bool ucSendReceive::DownloadUpgrade(const std::shared_ptr<xml::XmlDocument>& results, const std::string& folderName,
                                    const std::string& rootPath) {
    if (!results) {
        throw base::RuntimeError(base::error::kObjectNotSet);
    }
    const auto self = shared_from_this();
    bool fetched = false;
    exclusively("DownloadUpgrade", [&] { fetched = downloadUpgrade(*results, rootPath + folderName + "\\"); });
    return fetched;
}

bool ucSendReceive::CheckForFileDownloads(const std::shared_ptr<xml::XmlDocument>& results, bool doDownloads,
                                          const std::string& dataFolder, bool forceDownload) {
    const auto self = shared_from_this();
    bool all = false;
    exclusively("CheckForFileDownloads", [&] { all = checkFiles(results, doDownloads, dataFolder, forceDownload); });
    return all;
}

bool ucSendReceive::checkFiles(const std::shared_ptr<xml::XmlDocument>& results, bool doDownloads,
                               const std::string& dataFolder, bool forceDownload) {
    bool all = true;
    const bool finished = reportErrors("CheckForFileDownloads", [&] {
        if (!results || results->selectNodes("//file").empty()) {
            return;
        }
        if (!doDownloads || cDownloadFiles.checked()) {
            WriteSingleLog("Sub CheckForFileDownloads: not wanted", false);
            return;
        }
        all = exchange::findUpgrade(*results) ? downloadUpgrade(*results, dataFolder)
                                    : exchange::FileDownloads(*this, m_services, dataFolder, forceDownload).run(*results);
    });
    return all && finished;
}

bool ucSendReceive::downloadUpgrade(const xml::XmlDocument& results, const std::string& workingFolder) {
    return exchange::Upgrade(*this, m_services).download(results, workingFolder);
}

ucSendReceive::FetchedFile ucSendReceive::fetchFile(const std::string& webname, const std::string& target) {
    std::string address = exchange::fileAddress(sWebAddress, webname);
    if (gCancelled || address.empty() || !ports::ensureFolder(m_services.fileSystem, base::splitPath(target).folder)) {
        WriteSingleLog("Sub SendReceive: not fetched " + webname, false);
        return {};
    }
    const bool succeeded =
        exchange::Exchange(*this, m_services, https(), {address, "GET", nullptr, nullptr, target, true, false, true}).run();
    return {succeeded && m_services.fileSystem.fileExists(target), https().announcedFileLength()};
}

void ucSendReceive::setUpLater(const std::string& program) {
    MustRunSetupName = program;
    bMustRunSetup = true;
}

void ucSendReceive::runSetupIfDue() {
    if (bMustRunSetup) {
        bMustRunSetup = false;
        RunSetup();
        WriteSingleLog("Sub cmdOK_Click --> Run Setup", false);
    }
}

void ucSendReceive::RunSetup() {
    const auto self = shared_from_this();
    ports::FileSystem& files = m_services.fileSystem;
    m_services.desktop.messageBox("A. You need to upgrade QuorVantis: \r\n"
                                  "  1) Press OK to start the upgrade.\r\n"
                                  "  2) When the upgrade is complete QuorVantis will re-start.");
    std::string program = MustRunSetupName;
    if (program.empty() || !files.fileExists(program)) {
        const std::string folder = files.currentFolder();
        if (!files.fileExists(folder + "\\quorvantissetup.exe")) {
            return;
        }
        program = folder + "\\QuorVantisSetup.exe";
    }
    const host::HostGlobals host = globals();
    const auto held = exchange::SetupCheck(m_services.programs, files, host).beforeStart(program);
    host.put("gBusyWithUpgrade", true);
    if (m_dialForm != nullptr) {
        m_dialForm->unload();
    }
    if (!m_exchanging) { // what set-up may want to replace is let go of
        m_https.reset();
    }
    m_services.programs.start(program);
}

} // namespace sendreceive
