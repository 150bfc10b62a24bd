// What an exchange knows of the host, and what it keeps from one request to the next.
#pragma once

#include "host/host_account.h"
#include "host/host_globals.h"

#include <string>

namespace exchange {

// The names are those that hosts and users' documents have for the values. Read anew for each request.
struct Session {
    base::ObjectRef Globals; // null: none given
    base::ObjectRef Account; // null: the globals object is asked for branch and account
    std::string sWebAddress; // of the service; becomes the alternate address when the user agrees to that
    bool bLoginNotRequired = false;
    bool gUsingAlternate = false;
    // Cancel was pressed since the run, or the exchange outside of one, began.
    bool gCancelled = false;
    bool bAlternate = false;    // the user wants the alternate address from the start
    bool bDownloadFiles = true; // the files that answers name are wanted
    bool ForceDownload = false; // also those that are here; what the last command that said anything of it said
    // A set-up program was fetched and is to run when the run has ended; its path, which outlives that.
    bool bMustRunSetup = false;
    std::string MustRunSetupName;

    [[nodiscard]] host::HostGlobals globals() const { return host::HostGlobals(Globals); }
    [[nodiscard]] host::HostAccount account() const { return host::HostAccount(globals(), Account); }
};

} // namespace exchange
