#include "cabinet/modCallback.h"

#include "cabinet/clsCABFile.h"

#include <utility>

namespace cabinet {

void modCallback::setCurrentCabinet(std::shared_ptr<clsCABFile> cabinet) noexcept {
    m_current = std::move(cabinet);
}

std::uint32_t modCallback::fileCallback(std::uint32_t context,
                                        const ports::CabinetNotification& notification) noexcept {
    // A copy: a handler may put another object into the slot while this one is still at work.
    const std::shared_ptr<clsCABFile> current = m_current;
    return current ? current->notify(context, notification) : 0;
}

} // namespace cabinet
