#include "host/host_account.h"

#include <utility>

namespace host {

HostAccount::HostAccount(HostGlobals globals, const base::ObjectRef& account)
    : m_globals(std::move(globals)), m_source(account ? HostGlobals(account) : m_globals) {}

std::string HostAccount::branch() const {
    return base::toText(m_source.valueIfPresent("Branch"));
}

std::string HostAccount::account() const {
    const base::Variant account = m_source.valueIfPresent("account");
    return std::holds_alternative<base::Empty>(account) ? m_globals.text("gProfileNumber") : base::toText(account);
}

} // namespace host
