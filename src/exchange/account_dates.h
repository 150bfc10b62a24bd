// When each command last went through, so that the server need send only what is new. The dates stand in the host's own
// settings document, once for all accounts or apart for each, as the command says:
//
//     <accountdates getprices="20261115"><accountdate number="B04711" getorders="20261114"/></accountdates>
//
// The document is reached late-bound, in place, whoever made it; so there is one path for every host.
#pragma once

#include "exchange/dialogues.h"
#include "exchange/run_observer.h"
#include "exchange/session.h"
#include "ports/clock.h"
#include "xml/xml_document.h"

#include <optional>
#include <string>
#include <string_view>

namespace exchange {

// The dates as they stood at one moment: one reading answers for a whole list of commands.
class LastDates {
public:
    // The date of the command's last exchange, "yyyyMMdd"; a single blank when it never had one; "" when the host has
    // no settings document, or it could not be read. `accountSpecific` is the command's attribute: "yes" or not. What
    // goes wrong is reported, once.
    [[nodiscard]] std::string GetLastDate(std::string_view name, std::string_view accountSpecific);

private:
    friend class AccountDates;
    LastDates(Dialogues& dialogues, host::HostAccount account);

    void load(std::string_view text);
    [[nodiscard]] xml::ElementView accountElement();

    Dialogues& m_dialogues;
    host::HostAccount m_account;
    std::optional<xml::XmlDocument> m_document; // none: not available
    xml::ElementView m_common;                  // the dates of all accounts
    std::optional<xml::ElementView> m_own;      // those of the account, once they were looked for
};

class AccountDates {
public:
    // None is owned, and all but the session outlive the object.
    AccountDates(Dialogues& dialogues, RunObserver& observer, ports::Clock& clock, const Session& session);

    // Reads the document once. What goes wrong is reported; the dates are then not available.
    [[nodiscard]] LastDates read() const;

    // For a single question. As LastDates.
    [[nodiscard]] std::string GetLastDate(std::string_view name, std::string_view accountSpecific) const {
        return read().GetLastDate(name, accountSpecific);
    }

    // Makes today the command's last date and saves the document as quorvantis.xml in the folder gQuorXMLpath. What
    // goes wrong is reported; a host without a settings document is worth a trace line only. A name that would
    // make a file that cannot be read again is refused with nothing changed.
    void SetLastDate(std::string_view name, std::string_view accountSpecific) const;

private:
    // Null when there is none. Raises 13 for something that is no object, and what the host raises.
    [[nodiscard]] base::ObjectRef settingsDocument() const;

    Dialogues& m_dialogues;
    RunObserver& m_observer;
    ports::Clock& m_clock;
    host::HostGlobals m_globals;
    host::HostAccount m_account;
};

} // namespace exchange
