#include "windows/com/clsQVI_Link_object.h"

#include "windows/app.h"

namespace windows::com {

LinkObject::LinkObject() : m_link(App::instance().environment()) {}

} // namespace windows::com
