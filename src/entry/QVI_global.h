// Routines of the entry module that its classes and forms share.
#pragma once

#include "cabinet/clsCABFile.h"
#include "sendreceive/services.h"

namespace entry {

struct Environment;

// What a reader of cabinets works with.
[[nodiscard]] cabinet::clsCABFile::Services cabinetServices(Environment& environment);

// What a send/receive control works with.
[[nodiscard]] sendreceive::Services sendReceiveServices(Environment& environment);

// Opens the send/receive window over whatever form is shown, with the values in the image manager form's variables.
void showSendReceive(Environment& environment);

} // namespace entry
