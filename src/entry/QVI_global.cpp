#include "entry/QVI_global.h"

#include "entry/environment.h"

namespace entry {

// The window is not built yet; a host or user who asks for it is told so.
void showSendReceive(Environment& environment) {
    environment.desktop.messageBox("Send/receive is not available in this version.");
}

} // namespace entry
