// Whose data the host works on: the account, and the branch that it belongs to.
#pragma once

#include "host/host_globals.h"

#include <string>

namespace host {

class HostAccount {
public:
    HostAccount() = default;
    // `account` may be null: a host that has no account object is asked for the same names through its globals.
    explicit HostAccount(HostGlobals globals, const base::ObjectRef& account = {});

    // The property "Branch"; "" when there is none. Raises what the object raises.
    [[nodiscard]] std::string branch() const;
    // The property "account"; the globals' gProfileNumber when there is none. Raises what the objects raise.
    [[nodiscard]] std::string account() const;

private:
    HostGlobals m_globals;
    HostGlobals m_source; // the account object, or the globals again
};

} // namespace host
