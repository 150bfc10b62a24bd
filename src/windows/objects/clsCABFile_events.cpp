#include "windows/objects/clsCABFile_events.h"

#include "windows/com/quorvantisimage.h"

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
    m_source.fire(qviEventFileFound, arguments);
}

void CabFileEvents::BeforeExtract(const std::string& name, bool& cancel) {
    const EventArgument nameArgument(name);
    EventArgument cancelArgument(cancel);
    std::array arguments{cancelArgument.byReference(), nameArgument.byValue()};
    m_source.fire(qviEventBeforeExtract, arguments);
    cancel = cancelArgument.flag();
}

void CabFileEvents::AfterExtract(const std::string& path) {
    m_source.fire(qviEventAfterExtract, EventArgument(path));
}

} // namespace windows::com
