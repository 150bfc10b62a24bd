// What the parts of one exchange share.
#pragma once

#include "connection/https_control.h"
#include "exchange/dialogues.h"
#include "exchange/run_observer.h"
#include "exchange/services.h"
#include "exchange/session.h"

namespace exchange {

// None is owned; all outlive the part.
struct Context {
    Session& session;
    const Services& services;
    Dialogues& dialogues;
    RunObserver& observer;
    connection::HttpsControl& https;
};

} // namespace exchange
