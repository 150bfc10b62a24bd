// The one callback that the setup library is given, and the cabinet object that it serves.
#pragma once

#include "ports/cabinet_api.h"

#include <memory>
#include <string_view>

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

struct SplitPath {
    std::string_view folder; // with its final backslash, or empty
    std::string_view file;
};

// Divides a name behind its last backslash. The parts refer to the name.
[[nodiscard]] SplitPath splitPath(std::string_view name) noexcept;

} // namespace cabinet
