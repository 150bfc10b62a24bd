// The send/receive window: builds the list of commands that this shop can run, hands it to the control, and answers the
// control's events.
#pragma once

#include "sendreceive/events.h"
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

    // What goes out with a command, put into its request; and what follows once the server has taken it. Each raises
    // what loading the document raises, with the parser's words for one that is broken.
    void AppendImagestoCommand(xml::XmlDocument& request);    // the links that have changed
    void AppendAllImagestoCommand(xml::XmlDocument& request); // the whole document of links
    void AppendProductsGroupstoCommand(xml::XmlDocument& request);
    void gotsendimagelinks210(); // takes the marks, and what is marked as deleted, out of the links
    // Copies the source's attributes, its own text and those of its children that carry a mark, with theirs.
    static void RecurseNodes(const xml::XmlNode& source, xml::XmlNode target, xml::XmlDocument& request);

protected:
    void Form_Load() override;
    void Form_CloseBox() override { m_engine->cmdCancel_Click(); }

private:
    [[nodiscard]] xml::XmlDocument loadFile(const std::string& name);

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
