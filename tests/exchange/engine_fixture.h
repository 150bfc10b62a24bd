// The engine of exchanges with a host and somebody who watches, in memory: neither a control nor a window.
#pragma once

#include "exchange/engine.h"
#include "fakes/exchange_services.h"
#include "fakes/fake_late_bound.h"
#include "fakes/scripted_watcher.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace exchange {

inline fakes::Answer file(const std::string& bytes) {
    return {{bytes}, 200, "OK", {{"Content-Length", std::to_string(bytes.size())}}};
}

class EngineFixture : public testing::Test {
public:
    using Rows = std::vector<std::string>;

protected:
    EngineFixture() {
        services.files.addFolder("C:\\QV");
        setting("Dialup", "DialType", "Manual");
        host->addProperty("gWebService", "http://supplier/");
        host->addProperty("gSettingString", "Shop");
        host->addProperty("gProfileNumber", "1001");
        host->addProperty("gQuorVantisPath", "C:\\QV\\");
        session.Globals = host;
        session.sWebAddress = "http://supplier/shop/service.asp?x=a/b";
    }
    void setting(std::string_view section, std::string_view key, std::string_view value) {
        services.settings.set("Shop", section, key, value);
    }
    // What the host's GetValue answers.
    void option(const std::string& name, const std::string& value) {
        m_options[name] = value;
        host->addMethod("GetValue", [this](const std::vector<base::Variant>& arguments) {
            return base::Variant(m_options[base::toText(arguments.at(0))]);
        });
    }
    static std::shared_ptr<xml::XmlDocument> results(const std::string& content) {
        auto document = std::make_shared<xml::XmlDocument>();
        EXPECT_TRUE(document->loadXml("<results>" + content + "</results>"));
        return document;
    }
    bool check(const std::string& listed, bool force = false) {
        return engine.CheckForFileDownloads(results(listed), true, "C:\\QV\\", force);
    }
    [[nodiscard]] Rows urls() const {
        Rows all;
        for (const ports::HttpRequest& request : services.network.requests) {
            all.push_back(request.url);
        }
        return all;
    }
    [[nodiscard]] std::string contents(const std::string& path) const {
        return services.files.hasFile(path) ? services.files.contents(path) : "(none)";
    }

    fakes::ExchangeServices services;
    std::shared_ptr<fakes::FakeLateBound> host = std::make_shared<fakes::FakeLateBound>();
    fakes::ScriptedWatcher watcher;
    Session session;
    Engine engine{services.engine, session, watcher, watcher};

private:
    std::map<std::string, std::string> m_options;
};

} // namespace exchange
