// Routines of the entry module that its classes and forms share.
#pragma once

namespace entry {

struct Environment;

// Opens the send/receive window over whatever form is shown, with the values in the image manager form's variables.
void showSendReceive(Environment& environment);

} // namespace entry
