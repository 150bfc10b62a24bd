// The control with an answer that names files, and what is on the disk and asked of the server afterwards.
#pragma once

#include "base/runtime_error.h"
#include "sendreceive/control_fixture.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace sendreceive {

inline fakes::Answer file(const std::string& bytes) {
    return {{bytes}, 200, "OK", {{"Content-Length", std::to_string(bytes.size())}}};
}

class FileDownloadsTest : public ControlFixture {
protected:
    FileDownloadsTest() {
        services.files.addFolder("C:\\QV");
        services.settings.set("Shop", "Dialup", "DialType", "Manual");
        control->sWebAddress = "http://supplier/shop/service.asp?x=a/b";
    }
    std::shared_ptr<xml::XmlDocument> results(const std::string& files) {
        auto document = std::make_shared<xml::XmlDocument>();
        EXPECT_TRUE(document->loadXml("<results>" + files + "</results>"));
        return document;
    }
    bool check(const std::string& listed, bool force = false) {
        return control->CheckForFileDownloads(results(listed), true, "C:\\QV\\", force);
    }
    void option(const std::string& name, const std::string& value) {
        m_options[name] = value;
        host->addMethod("GetValue", [this](const std::vector<base::Variant>& arguments) {
            return base::Variant(m_options[base::toText(arguments.at(0))]);
        });
    }
    [[nodiscard]] std::string contents(const std::string& path) const {
        return services.files.hasFile(path) ? services.files.contents(path) : "(none)";
    }
    // All files but the traces.
    [[nodiscard]] Rows filesLeft() const {
        Rows paths = services.files.files();
        std::erase_if(paths, [](const std::string& path) { return path.ends_with(".txt"); });
        return paths;
    }
    // The box about a set-up program that is refused.
    void expectRefusal(const std::string& routine, const std::string& reason) {
        services.desktop.whenAsked("Error in " + routine +
                                   ":The set-up program QuorVantisSetup.exe was not accepted. " + reason);
    }

private:
    std::map<std::string, std::string> m_options;
};

} // namespace sendreceive
