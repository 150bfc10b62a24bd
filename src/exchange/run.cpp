#include "exchange/run.h"

#include "base/attempt.h"
#include "base/text.h"
#include "exchange/account_dates.h"
#include "exchange/answer.h"

#include <algorithm>
#include <array>
#include <utility>

namespace exchange {
namespace {

// Their exchanges close a run: whichever text of an exchange mentions one, no further command is sent.
constexpr std::array<std::string_view, 3> kClosing{"sendproductgroups210", "sendimagelinks210", "SendImageLinksAll210"};

// When these fail they show no "Error": the account may not be known to the server yet.
constexpr std::array<std::string_view, 2> kQuietFailures{"getaccount130", "getaccount400"};

bool failsQuietly(const std::string& name) {
    return std::ranges::find(kQuietFailures, name) != kQuietFailures.end();
}

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

Run::Run(Engine& engine, std::shared_ptr<Commands> commands, Engine::Ticked ticked)
    : m_engine(engine),
      m_session(engine.m_session),
      m_observer(engine.m_observer),
      m_commands(std::move(commands)),
      m_ticked(std::move(ticked)) {}

void Run::perform() {
    m_session.gCancelled = false;
    m_engine.m_state = {.phase = Phase::Running};
    try {
        m_observer.runStateChanged(m_engine.m_state);
        const auto error = base::attempt([&] {
            const Phase end = go();
            conclude(end);
            if (end == Phase::Completed || end == Phase::Failed) {
                follow();
            }
        });
        if (error) {
            m_observer.trace("Sub cmdOK_Click --> Error=" + error->description());
            m_engine.m_dialogues.report("cmdOK_Click", *error);
            conclude(Phase::Failed);
        }
    } catch (...) { // out of memory, or no error of ours: not even then may the run seem to go on
        conclude(Phase::Failed);
        throw;
    }
}

Run::Phase Run::go() {
    if (!m_session.bLoginNotRequired && !logIn()) {
        return Phase::Idle;
    }
    requireCommands();
    m_request = makeEnvelope(*m_commands->document());
    m_observer.beginTrace("Sub cmdOK_Click: Start Send Receive");
    const Phase end = sendCommands();
    m_request.reset();
    if (end == Phase::Completed) {
        m_observer.status("Send/Receive completed...");
        m_observer.runCompleted();
    }
    return end;
}

// A new password of an earlier run must not go out again.
bool Run::logIn() {
    const std::optional<Login> login = m_engine.m_dialogues.logIn();
    if (!login) {
        return false;
    }
    requireCommands();
    m_commands->setRootAttribute("password", login->password);
    if (login->newPassword.empty()) {
        m_commands->removeRootAttribute("newpassword");
    } else {
        m_commands->setRootAttribute("newpassword", login->newPassword);
    }
    return true;
}

void Run::requireCommands() const {
    if (!m_commands || !m_commands->document()) {
        throw base::RuntimeError(base::error::kObjectNotSet);
    }
}

// A Cancel that comes while the last of them completes comes too late: there is nothing left to be cancelled.
Run::Phase Run::sendCommands() {
    const xml::XmlNodeList elements = m_commands->document()->selectNodes("//command");
    for (std::size_t index = 0; index < elements.size(); ++index) {
        Command command{index, elements[index], elements[index].getAttribute("name")};
        if (!wanted(command)) {
            continue;
        }
        if (m_session.gCancelled) {
            return Phase::Cancelled;
        }
        if (const Phase end = sendCommand(command); end != Phase::Running) {
            return end;
        }
    }
    return Phase::Completed;
}

// Required commands go out whether or not they are ticked.
bool Run::wanted(const Command& command) const {
    return command.element.getAttribute("required") == "yes" || m_ticked(command.name);
}

Run::Phase Run::sendCommand(Command& command) {
    startCommand(command);
    bool closing = false;
    do {
        if (!sendAndReceive(command)) {
            if (!failsQuietly(command.name)) {
                show(command, RunState::Command::Error);
            }
            return m_session.gCancelled ? Phase::Cancelled : Phase::Failed;
        }
        closing = mentionsClosing(command.posted) || mentionsClosing(command.element.xml()) ||
                  mentionsClosing(command.results->xml());
        if (m_session.gCancelled) {
            return Phase::Cancelled; // what the server has taken stays marked, and is sent again
        }
        if (asksForRedo(*command.results, command.name)) {
            m_commands->setCommandAttribute(command.element, command.index, "redo", "true");
        }
        m_observer.commandAnswered(command.name, command.element, command.results);
    } while (takeRedo(command));
    completeCommand(command);
    return closing ? Phase::Completed : Phase::Running;
}

void Run::startCommand(Command& command) {
    if (!m_request || !m_request->documentElement()) { // a handler took it away
        m_request = makeEnvelope(*m_commands->document());
    }
    replaceCommand(*m_request, command.element);
    show(command, RunState::Command::Starting);
    m_observer.trace("Sub cmdOK_Click --> DownloadStart:" + command.name);
    m_observer.commandStarts(command.name, m_request);
    if (!m_request) {
        m_request = std::make_shared<xml::XmlDocument>();
    }
    show(command, RunState::Command::Busy);
    // Stays what it was for a command that does not say.
    if (command.element.hasAttribute("forcedownload")) {
        m_session.ForceDownload = base::saysYes(command.element.getAttribute("forcedownload"));
    }
}

bool Run::sendAndReceive(Command& command) {
    command.results = std::make_shared<xml::XmlDocument>();
    ExchangeResult result = m_engine.SendReceive(
        {.url = m_session.sWebAddress, .method = "POST", .results = command.results, .command = m_request},
        m_session.ForceDownload);
    m_session.sWebAddress = std::move(result.url);
    command.posted = std::move(result.posted);
    const xml::XmlNode sent = firstElement(m_request->documentElement());
    if (sent && sent.hasAttribute("lastdate")) {
        m_commands->setCommandAttribute(command.element, command.index, "lastdate", sent.getAttribute("lastdate"));
    }
    return result.succeeded;
}

// True when the server, or a handler, wants the command once more.
bool Run::takeRedo(Command& command) {
    if (command.element.getAttribute("redo") != "true") {
        return false;
    }
    m_commands->setCommandAttribute(command.element, command.index, "redo", "false");
    return true;
}

void Run::completeCommand(const Command& command) {
    show(command, RunState::Command::Done);
    AccountDates(m_engine.m_dialogues, m_observer, m_engine.m_services.clock, m_session)
        .SetLastDate(command.name, command.element.getAttribute("lastdateaccountspecific"));
    m_observer.trace("Sub cmdOK_Click --> End of " + command.name);
}

// What follows a run, also one that failed: the line that was dialled, and the set-up program that was fetched.
void Run::follow() {
    m_engine.m_dialogues.offerToDisconnect();
    if (std::exchange(m_session.bMustRunSetup, false)) {
        m_engine.RunSetup();
        m_observer.trace("Sub cmdOK_Click --> Run Setup");
    }
}

void Run::conclude(Phase end) {
    RunState& state = m_engine.m_state;
    if (!state.running()) {
        return;
    }
    state.phase = end;
    if (end == Phase::Failed && state.command == RunState::Command::Busy && !failsQuietly(state.name)) {
        state.command = RunState::Command::Error;
    }
    m_observer.runStateChanged(state);
}

void Run::show(const Command& command, RunState::Command state) {
    m_engine.m_state.name = command.name;
    m_engine.m_state.command = state;
    m_observer.runStateChanged(m_engine.m_state);
}

} // namespace exchange
