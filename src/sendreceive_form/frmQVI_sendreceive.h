// The send/receive window: builds the list of commands that this shop can run, hands it to the control, and answers the
// control's events.
#pragma once

#include "sendreceive/events.h"
#include "sendreceive/services.h"
#include "sendreceive/ucSendReceive.h"
#include "ui/form.h"
#include "xml/xml_document.h"

#include <memory>
#include <string>

namespace sendreceive {

// The host's values, as the image manager form has them.
struct HostValues {
    std::string gProfileNumber;
    std::string gQuorVantisPath; // with its final backslash; used by plain concatenation
    std::string gSettingString;
    std::string gWebAddress;
};

class frmQVI_sendreceive : public ui::Form, private Events {
public:
    frmQVI_sendreceive(const Services& services, HostValues values);
    ~frmQVI_sendreceive() override;

private:
    std::shared_ptr<ucSendReceive> m_engine;

public:
    ui::UserControlSite ucSendReceive1{*this, "ucSendReceive1", *m_engine};

    [[nodiscard]] ucSendReceive& engine() noexcept { return *m_engine; }

protected:
    void Form_Load() override;
    void Form_CloseBox() override { m_engine->cmdCancel_Click(); }

private:
    void buildCommands();

    void DownloadComplete(std::string& name, const xml::XmlNode& command,
                          const std::shared_ptr<xml::XmlDocument>& results) override;
    void DownloadStart(std::string& name, std::shared_ptr<xml::XmlDocument>& request) override;
    void Cancelled() override { unload(); }
    void SendReceiveCompleted() override;
    void CloseQuorVantis() override {}
    void OpenfrmOptions(const std::string& url) override;
    void RegisterServer(const std::string&) override {}
    void UnregisterServer(const std::string&) override {}

    Services m_services;
    HostValues m_values;
};

} // namespace sendreceive
