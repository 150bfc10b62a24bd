#include "sendreceive_form/command_document.h"

#include "base/runtime_error.h"
#include "ports/file_system.h"
#include "ports/settings.h"

namespace sendreceive {
namespace {

struct Command {
    std::string_view name;
    std::string_view displayText;
    bool checked;
};

// The attributes in the order in which the server's tools expect them.
void append(xml::XmlDocument& document, const Command& command) {
    xml::XmlNode element = document.documentElement().appendChild(document.createElement("command"));
    element.setAttribute("name", command.name);
    element.setAttribute("object", "Transfer");
    element.setAttribute("displaytext", command.displayText);
    element.setAttribute("required", "no");
    element.setAttribute("checked", command.checked ? "yes" : "no");
    element.setAttribute("lastdateaccountspecific", "no");
    element.setAttribute("show", "yes");
    element.setAttribute("order", "5");
    element.setAttribute("forcedownload", "false");
}

} // namespace

xml::XmlDocument makeCommandDocument(ports::FileSystem& fileSystem, ports::Settings& settings,
                                     const std::string& dataFolder, std::string_view profile) {
    const auto isSaved = [&](std::string_view key) { return settings.get("QuorVantis", "Main", key) == "Saved"; };
    xml::XmlDocument document;
    if (!document.loadXml("<commands/>")) {
        throw base::RuntimeError(base::error::kInternalError);
    }
    document.documentElement().setAttribute("profile", profile);
    if (fileSystem.fileExists(dataFolder + "images.xml")) {
        if (isSaved("ImageModify")) {
            append(document, {command::kSendImageLinks, "Send image link modifications to server", true});
        }
        append(document, {command::kSendAllImageLinks, "Overwrite image links on server", false});
    }
    if (fileSystem.fileExists(dataFolder + "productgroups.xml")) {
        append(document, {command::kSendProductGroups, "Send product groups to server", isSaved("ProductGroups")});
    }
    return document;
}

} // namespace sendreceive
