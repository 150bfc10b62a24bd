// A run: from the press of OK, through the login and the commands one by one, to its end.
#include "sendreceive/ucSendReceive.h"

#include "base/runtime_error.h"
#include "base/text.h"
#include "exchange/answer.h"
#include "exchange/exchange.h"
#include "host/host_account.h"
#include "sendreceive/command_list.h"
#include "ui/report_errors.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace sendreceive {
namespace {

// Lends the process's one login form to a run. However that ends, the form is unloaded and lets go of the host's
// objects, which must not live as long as it does.
class LoginLoan {
public:
    explicit LoginLoan(login::frmLogin& form) : m_form(form) {}
    LoginLoan(const LoginLoan&) = delete;
    LoginLoan& operator=(const LoginLoan&) = delete;
    ~LoginLoan() {
        m_form.unload();
        m_form.host = {};
    }

private:
    login::frmLogin& m_form;
};

// Their exchanges close a run: whichever text of an exchange mentions one, no further command is sent.
constexpr std::array<std::string_view, 3> kClosing{"sendproductgroups210", "sendimagelinks210", "SendImageLinksAll210"};

// When these fail they show no "Error": deliberate, the account may not be known to the server yet.
constexpr std::array<std::string_view, 2> kQuietFailures{"getaccount130", "getaccount400"};

bool mentionsClosing(std::string_view text) {
    return std::ranges::any_of(kClosing, [&](std::string_view name) { return base::containsIgnoringCase(text, name); });
}

// The server asks for the same command again: in its answer to it, or for the whole answer.
bool asksForRedo(const xml::XmlDocument& results, const std::string& name) {
    for (const xml::XmlNode& command : results.selectNodes("//command")) {
        if (command.getAttribute("name") == name && command.hasAttribute("redo")) {
            return command.getAttribute("redo") == "true";
        }
    }
    return results.documentElement().getAttribute("redo") == "true";
}

// The envelope of every command of a run: the command document's root with all that it says, and nothing in it.
std::shared_ptr<xml::XmlDocument> makeEnvelope(const xml::XmlDocument& commands) {
    auto envelope = std::make_shared<xml::XmlDocument>();
    const xml::XmlNode root = envelope->node().appendChild(envelope->createElement("commands"));
    for (const xml::Attribute& attribute : commands.documentElement().attributes()) {
        envelope->documentElement().setAttribute(attribute.name, attribute.value);
    }
    return envelope;
}

void replaceCommand(xml::XmlDocument& envelope, const xml::XmlNode& command) {
    xml::XmlNode root = envelope.documentElement();
    for (const xml::XmlNode& child : root.childNodes()) {
        if (child.nodeName() == "command") {
            root.removeChild(child);
        }
    }
    root.appendChild(command); // a copy: the command document keeps its own
}

} // namespace

// A command of the run. The document is held, whatever a handler puts in its place meanwhile.
struct ucSendReceive::Command {
    std::shared_ptr<xml::XmlDocument> document;
    std::size_t index; // among the document's commands
    xml::XmlNode element;
    std::string name;
    std::string posted{}; // what went out last
    std::shared_ptr<xml::XmlDocument> results = nullptr;
};

void ucSendReceive::cmdOK_Click() {
    const auto self = shared_from_this();
    setBusy(true);
    gCancelled = false;
    reportErrors("cmdOK_Click", [&] {
        try {
            run();
        } catch (const base::RuntimeError& e) {
            WriteSingleLog("Sub cmdOK_Click --> Error=" + e.description(), false);
            throw;
        }
    });
    m_sendCommands.reset(); // it may hold all links of a shop
    setBusy(false);
}

void ucSendReceive::run() {
    if (!bLoginNotRequired && !logIn()) {
        return;
    }
    if (!m_commands) {
        throw base::RuntimeError(base::error::kObjectNotSet);
    }
    m_sendCommands = makeEnvelope(*m_commands);
    WriteSingleLog("Sub cmdOK_Click: Start Send Receive", true);
    const RunEnd end = sendCommands();
    if (end == RunEnd::Complete || end == RunEnd::Closed) {
        SetMessage("Send/Receive completed...");
        fire([](Events& listener) { listener.SendReceiveCompleted(); });
    }
    if (end != RunEnd::Stopped) {
        setBusy(false);
        offerToHangUp();
        runSetupIfDue();
    }
}

bool ucSendReceive::logIn() {
    login::frmLogin& form = m_services.login;
    const LoginLoan loan(form);
    const host::HostGlobals host = globals();
    form.UserName = host.text("gProfileNumber");
    form.host = {host, host::HostAccount(host, Account)};
    form.OKPressed = false;
    form.load();
    form.showModal();
    if (form.OKPressed) {
        writePassword(base::upperCase(form.Password), base::upperCase(form.NewPassword));
    }
    return form.OKPressed;
}

// A new password of an earlier run must not go out again.
void ucSendReceive::writePassword(const std::string& password, const std::string& newPassword) {
    if (!m_commands) {
        throw base::RuntimeError(base::error::kObjectNotSet);
    }
    setRootAttribute("password", password);
    if (!newPassword.empty()) {
        setRootAttribute("newpassword", newPassword);
    } else if (m_commands->documentElement().hasAttribute("newpassword")) {
        m_commands->documentElement().removeAttribute("newpassword");
        if (m_hostCommands) {
            m_hostCommands->removeRootAttribute("newpassword");
        }
    }
}

void ucSendReceive::setRootAttribute(std::string_view name, const std::string& value) {
    m_commands->documentElement().setAttribute(name, value);
    if (m_hostCommands) {
        m_hostCommands->setRootAttribute(name, value);
    }
}

ucSendReceive::RunEnd ucSendReceive::sendCommands() {
    const std::shared_ptr<xml::XmlDocument> document = m_commands;
    const xml::XmlNodeList elements = document->selectNodes("//command");
    for (std::size_t index = 0; index < elements.size(); ++index) {
        Command command{document, index, elements[index], elements[index].getAttribute("name")};
        if (!wanted(command)) {
            continue;
        }
        if (const RunEnd end = sendCommand(command); end != RunEnd::Complete) {
            return end;
        }
    }
    return RunEnd::Complete;
}

// Required commands go out whether or not they are ticked; those without a row are not ticked.
bool ucSendReceive::wanted(const Command& command) const {
    const std::optional<std::size_t> row = lvCommands.find(command.name);
    return command.element.getAttribute("required") == "yes" || (row && lvCommands.checked(*row));
}

ucSendReceive::RunEnd ucSendReceive::sendCommand(Command& command) {
    startCommand(command);
    bool closing = false;
    do {
        if (!sendAndReceive(command)) {
            if (std::ranges::find(kQuietFailures, command.name) == kQuietFailures.end()) {
                setStatus(command, "Error");
            }
            return gCancelled ? RunEnd::Stopped : RunEnd::Failed;
        }
        closing = mentionsClosing(command.posted) || mentionsClosing(command.element.xml()) ||
                  mentionsClosing(command.results->xml());
        if (gCancelled) {
            return RunEnd::Stopped; // what the server has taken stays marked, and is sent again
        }
        if (asksForRedo(*command.results, command.name)) {
            setCommandAttribute(command, "redo", "true");
        }
        fire([&](Events& listener) {
            std::string name = command.name;
            listener.DownloadComplete(name, command.element, command.results);
        });
    } while (takeRedo(command));
    completeCommand(command);
    return closing ? RunEnd::Closed : RunEnd::Complete;
}

void ucSendReceive::startCommand(Command& command) {
    if (!m_sendCommands || !m_sendCommands->documentElement()) { // a handler took it away
        m_sendCommands = makeEnvelope(*command.document);
    }
    replaceCommand(*m_sendCommands, command.element);
    SetProgressBarMinimum();
    WriteSingleLog("Sub cmdOK_Click --> DownloadStart:" + command.name, false);
    fire([&](Events& listener) {
        std::string name = command.name;
        listener.DownloadStart(name, m_sendCommands);
    });
    if (!m_sendCommands) {
        m_sendCommands = std::make_shared<xml::XmlDocument>();
    }
    setStatus(command, "Busy");
    // Stays what it was for a command that does not say.
    if (command.element.hasAttribute("forcedownload")) {
        m_forceDownload = base::saysYes(command.element.getAttribute("forcedownload"));
    }
}

bool ucSendReceive::sendAndReceive(Command& command) {
    command.results = std::make_shared<xml::XmlDocument>();
    const bool succeeded = exchange(
        {sWebAddress, "POST", command.results, m_sendCommands, "", false, m_forceDownload, false, &command.posted});
    const xml::XmlNode sent = exchange::firstElement(m_sendCommands->documentElement());
    if (sent && sent.hasAttribute("lastdate")) {
        setCommandAttribute(command, "lastdate", sent.getAttribute("lastdate"));
    }
    return succeeded;
}

// True when the server, or a handler, wants the command once more.
bool ucSendReceive::takeRedo(Command& command) {
    if (command.element.getAttribute("redo") != "true") {
        return false;
    }
    setCommandAttribute(command, "redo", "false");
    return true;
}

void ucSendReceive::completeCommand(Command& command) {
    setStatus(command, "Done");
    accountDates(globals()).SetLastDate(command.name, command.element.getAttribute("lastdateaccountspecific"));
    WriteSingleLog("Sub cmdOK_Click --> End of " + command.name, false);
}

void ucSendReceive::setCommandAttribute(Command& command, std::string_view name, const std::string& value) {
    command.element.setAttribute(name, value);
    if (m_hostCommands && m_commands == command.document) {
        m_hostCommands->setCommandAttribute(command.index, name, value);
    }
}

void ucSendReceive::setStatus(const Command& command, std::string_view status) {
    if (const std::optional<std::size_t> row = lvCommands.find(command.name)) {
        lvCommands.setCell(*row, static_cast<std::size_t>(CommandColumn::Status), status);
    }
}

void ucSendReceive::offerToHangUp() {
    if (m_dialer && m_dialer->connected() &&
        m_services.desktop.messageBox("Do you want to disconect from the internet?", ui::Buttons::YesNo) ==
            ui::Answer::Yes) {
        DisconnectFromInternet();
    }
}

void ucSendReceive::setBusy(bool busy) {
    m_busy = busy;
    cmdOK.setEnabled(!busy);
    lvCommands.setEnabled(!busy);
    if (!busy) {
        setFocus(lvCommands); // where it was, before it went to Cancel
    }
}

} // namespace sendreceive
