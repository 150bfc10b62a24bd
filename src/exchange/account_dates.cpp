#include "exchange/account_dates.h"

#include "base/date_time.h"
#include "base/late_bound.h"
#include "base/runtime_error.h"
#include "exchange/report_errors.h"

#include <utility>

namespace exchange {
namespace {

using xml::ElementView;

constexpr std::string_view kDates = "accountdates";
constexpr std::string_view kAccountDates = "accountdate"; // of one account
constexpr std::string_view kNumber = "number";
constexpr std::string_view kNoDate = " "; // never empty, for it fills a cell of the list and an attribute

bool isAccountSpecific(std::string_view attribute) {
    return attribute == "yes";
}

std::string numberOf(const host::HostAccount& account) {
    return account.branch() + account.account();
}

base::LateBoundObject& require(const base::ObjectRef& object) {
    if (!object) {
        throw base::RuntimeError(base::error::kObjectNotSet);
    }
    return *object;
}

base::ObjectRef select(const base::ObjectRef& node, const std::string& expression) {
    return base::toObject(require(node).call("selectSingleNode", {expression}));
}

base::ObjectRef append(const base::ObjectRef& document, const base::ObjectRef& parent, std::string_view name) {
    return base::toObject(
        require(parent).call("appendChild", {require(document).call("createElement", {std::string(name)})}));
}

void setAttribute(const base::ObjectRef& element, std::string_view name, const std::string& value) {
    require(element).call("setAttribute", {std::string(name), value});
}

// XPath has no escapes, but two kinds of quotes.
std::string accountPath(const std::string& number) {
    const std::string quote = number.find('\'') == std::string::npos ? "'" : "\"";
    return "accountdate[@number=" + quote + number + quote + "]";
}

// Finds or makes the element that holds the command's date.
base::ObjectRef elementFor(const base::ObjectRef& document, const std::optional<std::string>& number) {
    const base::ObjectRef root = base::toObject(require(document).get("documentElement"));
    base::ObjectRef dates = select(root, std::string(kDates));
    if (number) {
        if (base::ObjectRef found = select(root, std::string(kDates) + "/" + accountPath(*number))) {
            return found;
        }
    }
    if (!dates) {
        dates = append(document, root, kDates);
    }
    if (!number) {
        return dates;
    }
    base::ObjectRef own = append(document, dates, kAccountDates);
    setAttribute(own, kNumber, *number);
    return own;
}

// A document with such an attribute would not load again: no XML name, or a prefix or namespace that nothing declares.
void refuseAsAttribute(std::string_view name) {
    if (name.find(':') != std::string_view::npos || name == "xmlns") {
        throw base::RuntimeError(base::error::kInvalidProcedureCall);
    }
    static_cast<void>(xml::XmlDocument().createElement(name)); // raises 5
}

} // namespace

LastDates::LastDates(Dialogues& dialogues, host::HostAccount account)
    : m_dialogues(dialogues), m_account(std::move(account)) {}

void LastDates::load(std::string_view text) {
    xml::XmlDocument document; // stays empty where the host's is
    if (text.find_first_not_of(" \t\r\n") != std::string_view::npos && !document.loadXml(text)) {
        throw base::RuntimeError(base::error::kUnspecified, document.parseError());
    }
    const ElementView root = document.rootView();
    for (ElementView element = root; element && !m_common; element = element.nextInside(root)) {
        if (element.isNamed(kDates) && element.parent() == root) {
            m_common = element;
        }
    }
    m_document = std::move(document);
}

std::string LastDates::GetLastDate(std::string_view name, std::string_view accountSpecific) {
    std::string date;
    reportErrors(m_dialogues, "GetLastDate", [&] {
        if (!m_document) {
            return;
        }
        const ElementView element = isAccountSpecific(accountSpecific) ? accountElement() : m_common;
        std::string scratch;
        date = element.attribute(name, scratch).value_or("");
        if (date.empty()) {
            date = kNoDate;
        }
    });
    return date;
}

// Asks the host for the account only when a command depends on it, and then once.
ElementView LastDates::accountElement() {
    if (m_own) {
        return *m_own;
    }
    m_own.emplace(); // stays so when the host raises: one box is enough
    const std::string number = numberOf(m_account);
    std::string scratch;
    const ElementView root = m_document->rootView();
    for (ElementView element = m_common; element; element = element.nextInside(root)) {
        if (element.isNamed(kAccountDates) && element.parent().isNamed(kDates) && element.parent().parent() == root &&
            element.attribute(kNumber, scratch) == number) {
            m_own = element;
            break;
        }
    }
    return *m_own;
}

AccountDates::AccountDates(Dialogues& dialogues, RunObserver& observer, ports::Clock& clock, const Session& session)
    : m_dialogues(dialogues),
      m_observer(observer),
      m_clock(clock),
      m_globals(session.globals()),
      m_account(session.account()) {}

LastDates AccountDates::read() const {
    LastDates dates(m_dialogues, m_account);
    reportErrors(m_dialogues, "GetLastDate", [&] {
        if (const base::ObjectRef document = settingsDocument()) {
            dates.load(base::toText(document->get("xml")));
        }
    });
    return dates;
}

void AccountDates::SetLastDate(std::string_view name, std::string_view accountSpecific) const {
    reportErrors(m_dialogues, "SetLastDate", [&] {
        const base::ObjectRef document = settingsDocument();
        if (!document) {
            m_observer.trace("Error in SetLastDate:" + std::string(base::standardText(base::error::kObjectNotSet)));
            return;
        }
        refuseAsAttribute(name);
        const auto number = isAccountSpecific(accountSpecific) ? std::optional(numberOf(m_account)) : std::nullopt;
        setAttribute(elementFor(document, number), name, base::dateStamp(m_clock.now()));
        document->call("save", {m_globals.text("gQuorXMLpath") + "quorvantis.xml"});
    });
}

base::ObjectRef AccountDates::settingsDocument() const {
    return base::toObject(m_globals.valueIfPresent("gdomquorvantis"));
}

} // namespace exchange
