// The one callback that the setup library is given, and the cabinet object that it serves.
#pragma once

#include "ports/cabinet_api.h"

#include <memory>

namespace cabinet {

class clsCABFile;

// One per process. It finds its object through a single slot, so there is one iteration at a time: an event handler
// that starts another one takes the rest of the files over to the other object.
class modCallback final : public ports::CabinetCallback {
public:
    // Keeps the object alive until another one takes its place; the last one is never let go.
    void setCurrentCabinet(std::shared_ptr<clsCABFile> cabinet) noexcept;

    // Passes everything on to the current object; 0 while there is none.
    std::uint32_t fileCallback(std::uint32_t context, const ports::CabinetNotification& notification) noexcept override;

private:
    std::shared_ptr<clsCABFile> m_current;
};

} // namespace cabinet
