// Picture objects of hosts.
#pragma once

#include "base/picture.h"

#include <windows.h>

#include <unknwn.h>

#include <memory>

namespace windows::com {

// The pixels of a picture object (StdPicture and the like), shrunk to fit a square of `extent` pixels. Null for
// Nothing, for an object that is no picture and for one that is empty or cannot be drawn. Raises 7.
[[nodiscard]] std::shared_ptr<const base::Picture> pixelsOf(IUnknown* picture, int extent);

} // namespace windows::com
