// A send/receive control with a host and a listener, in memory.
#pragma once

#include "fakes/fake_late_bound.h"
#include "fakes/send_receive_services.h"
#include "sendreceive/ucSendReceive.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace sendreceive {

// Writes down the events that hosts see, and does what a test wants it to do meanwhile.
class Listener final : public Events {
public:
    std::vector<std::string> heard;
    std::function<void()> meanwhile = [] {};

    void DownloadComplete(std::string& name, const xml::XmlNode&, const std::shared_ptr<xml::XmlDocument>&) override {
        hear("DownloadComplete " + name);
    }
    void DownloadStart(std::string& name, std::shared_ptr<xml::XmlDocument>&) override {
        hear("DownloadStart " + name);
    }
    void Cancelled() override { hear("Cancelled"); }
    void SendReceiveCompleted() override { hear("SendReceiveCompleted"); }
    void CloseQuorVantis() override { hear("CloseQuorVantis"); }
    void OpenfrmOptions(const std::string& url) override { hear("OpenfrmOptions " + url); }
    void RegisterServer(const std::string& file) override { hear("RegisterServer " + file); }
    void UnregisterServer(const std::string& file) override { hear("UnregisterServer " + file); }

private:
    void hear(const std::string& event) {
        heard.push_back(event);
        meanwhile();
    }
};

class ControlFixture : public testing::Test {
public:
    using Rows = std::vector<std::string>;

protected:
    ControlFixture() {
        host->addProperty("gWebService", "http://supplier/");
        host->addProperty("gSettingString", "Shop");
        host->addProperty("gProfileNumber", "1001");
        host->addProperty("gQuorVantisPath", "C:\\QV\\");
        control->session.Globals = host;
        control->advise(listener);
    }

    void load(std::string_view commands) {
        auto document = std::make_shared<xml::XmlDocument>();
        ASSERT_TRUE(document->loadXml(commands));
        control->setDomCommands(document);
        control->LoadCommands();
    }

    // "+name|description|date|status" for a ticked row, "-..." for another.
    [[nodiscard]] Rows rows() const {
        Rows result;
        const ui::ListView& list = control->lvCommands;
        for (std::size_t row = 0; row < list.rowCount(); ++row) {
            std::string line = list.checked(row) ? "+" : "-";
            for (std::size_t column = 0; column < list.columns().size(); ++column) {
                line += (column == 0 ? "" : "|") + list.cell(row, column);
            }
            result.push_back(line);
        }
        return result;
    }
    fakes::SendReceiveServices services;
    std::shared_ptr<fakes::FakeLateBound> host = std::make_shared<fakes::FakeLateBound>();
    std::shared_ptr<ucSendReceive> control = ucSendReceive::create(services.all);
    Listener listener;
};

} // namespace sendreceive
