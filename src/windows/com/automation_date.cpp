#include "windows/com/automation_date.h"

namespace windows {

DATE automationDate(const base::DateTime& time) noexcept {
    SYSTEMTIME fields{};
    fields.wYear = static_cast<WORD>(time.year);
    fields.wMonth = static_cast<WORD>(time.month);
    fields.wDay = static_cast<WORD>(time.day);
    fields.wHour = static_cast<WORD>(time.hour);
    fields.wMinute = static_cast<WORD>(time.minute);
    fields.wSecond = static_cast<WORD>(time.second);
    DATE date = 0;
    return SystemTimeToVariantTime(&fields, &date) ? date : 0;
}

} // namespace windows
