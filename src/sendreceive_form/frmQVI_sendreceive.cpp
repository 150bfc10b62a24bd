#include "sendreceive_form/frmQVI_sendreceive.h"

#include "host/late_bound_globals.h"
#include "sendreceive_form/command_document.h"
#include "ui/report_errors.h"

#include <utility>

namespace sendreceive {

frmQVI_sendreceive::frmQVI_sendreceive(const Services& services, HostValues values)
    : Form(services.desktop, "frmQVI_sendreceive"),
      m_engine(ucSendReceive::create(services)),
      m_services(services),
      m_values(std::move(values)) {
    setCaption("Send/Receive");
    ucSendReceive1.anchors = {true, true, true, true};
    m_engine->advise(*this);
}

frmQVI_sendreceive::~frmQVI_sendreceive() {
    m_engine->unadvise(*this);
}

void frmQVI_sendreceive::Form_Load() {
    // The name in the message is not the form's: users know the message by it.
    ui::reportErrors(m_services.desktop, "frmSendReceive.Load", [&] {
        auto commands = std::make_shared<xml::XmlDocument>(
            makeCommandDocument(m_services.engine.fileSystem, m_services.engine.settings, m_values.gQuorVantisPath,
                                m_values.gProfileNumber));
        auto globals = std::make_shared<host::LateBoundGlobals>();
        globals->values.gProfileNumber = m_values.gProfileNumber;
        globals->values.gQuorVantisPath = m_values.gQuorVantisPath;
        globals->values.gSettingString = m_values.gSettingString;
        m_engine->session.Globals = std::move(globals);
        m_engine->setDomCommands(std::move(commands));
        m_engine->session.sWebAddress = m_values.gWebAddress;
        m_engine->LoadCommands();
    });
    m_engine->cmdOK.setEnabled(m_engine->domCommands() != nullptr);
}

void frmQVI_sendreceive::DownloadStart(std::string& name, std::shared_ptr<xml::XmlDocument>& request) {
    if (name == command::kGetAccount) {
        m_engine->SetMessage("Checking account details, please wait");
    } else if (name == command::kSendImageLinks || name == command::kSendAllImageLinks) {
        m_engine->SetMessage("Collecting image information, please wait");
        name == command::kSendImageLinks ? AppendImagestoCommand(*request) : AppendAllImagestoCommand(*request);
        m_engine->SetMessage("Sending image links, please wait");
    } else if (name == command::kSendProductGroups) {
        m_engine->SetMessage("Collecting product group information, please wait");
        AppendProductsGroupstoCommand(*request);
        m_engine->SetMessage("Sending product groups, please wait");
    }
}

void frmQVI_sendreceive::DownloadComplete(std::string& name, const xml::XmlNode&,
                                          const std::shared_ptr<xml::XmlDocument>&) {
    if (name == command::kGetAccount) {
        m_engine->SetMessage("Account has been checked");
    } else if (name == command::kSendImageLinks || name == command::kSendAllImageLinks) {
        gotsendimagelinks210();
    } else if (name == command::kSendProductGroups) {
        m_engine->SetMessage("Product groups have been sent");
        // Without the mark the run ends with the store's error: somebody else has taken the groups meanwhile.
        m_services.engine.settings.remove("QuorVantis", "Main", "ProductGroups");
    }
}

void frmQVI_sendreceive::SendReceiveCompleted() {
    m_services.desktop.messageBox("Send/Receive completed");
    unload();
}

void frmQVI_sendreceive::OpenfrmOptions(const std::string&) {
    static_cast<void>(m_engine->LoadfrmDial(false));
}

} // namespace sendreceive
