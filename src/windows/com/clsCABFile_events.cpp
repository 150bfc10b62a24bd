#include "windows/com/clsCABFile_events.h"

#include <array>

namespace windows::com {

void CabFileEvents::FileFound(const std::string& name, const base::DateTime& fileDate, std::int32_t size,
                              const std::string& path) {
    const EventArgument nameArgument(name);
    const EventArgument dateArgument(fileDate);
    const EventArgument sizeArgument(size);
    const EventArgument pathArgument(path);
    std::array arguments{pathArgument.byValue(), sizeArgument.byValue(), dateArgument.byValue(),
                         nameArgument.byValue()};
    m_source.fire(1, arguments);
}

void CabFileEvents::BeforeExtract(const std::string& name, bool& cancel) {
    const EventArgument nameArgument(name);
    EventArgument cancelArgument(cancel);
    std::array arguments{cancelArgument.byReference(), nameArgument.byValue()};
    m_source.fire(2, arguments);
    cancel = cancelArgument.flag();
}

void CabFileEvents::AfterExtract(const std::string& path) {
    m_source.fire(3, EventArgument(path));
}

} // namespace windows::com
