// The cabinet reader's events as hosts hear them.
#pragma once

#include "cabinet/clsCABFile.h"
#include "windows/com/event_source.h"

namespace windows::com {

class CabFileEvents final : public cabinet::CabFileEvents {
public:
    explicit CabFileEvents(EventSource source) noexcept : m_source(source) {}

    void FileFound(const std::string& name, const base::DateTime& fileDate, std::int32_t size,
                   const std::string& path) override;
    // Every sink can set `cancel`, and the ones after it see what it set.
    void BeforeExtract(const std::string& name, bool& cancel) override;
    void AfterExtract(const std::string& path) override;

private:
    EventSource m_source;
};

} // namespace windows::com
