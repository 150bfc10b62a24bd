#include "base/relative_name.h"

#include "base/text.h"

#include <algorithm>

namespace base {
namespace {

// Whether every part between separators passes.
template <typename Test>
bool everyPart(std::string_view name, Test&& passes) {
    while (true) {
        const std::size_t end = name.find_first_of("\\/");
        if (!passes(name.substr(0, end))) {
            return false;
        }
        if (end == std::string_view::npos) {
            return true;
        }
        name.remove_prefix(end + 1);
    }
}

// COM1 to COM9 and LPT1 to LPT9; the digits 1 to 3 also as superscripts, in UTF-8.
bool isNumberedPort(std::string_view stem) noexcept {
    const std::string_view port = stem.substr(0, 3);
    const std::string_view number = stem.substr(port.size());
    if (!equalIgnoringAsciiCase(port, "com") && !equalIgnoringAsciiCase(port, "lpt")) {
        return false;
    }
    return (number.size() == 1 && number[0] >= '0' && number[0] <= '9') || number == "\xC2\xB9" ||
           number == "\xC2\xB2" || number == "\xC2\xB3";
}

bool isForbidden(char c) noexcept {
    return static_cast<unsigned char>(c) < ' ' || std::string_view("<>\"|?*").find(c) != std::string_view::npos;
}

} // namespace

// A device stays one with any extension behind it and blanks before that.
bool isDeviceName(std::string_view name) noexcept {
    std::string_view stem = name.substr(0, name.find('.'));
    stem = stem.substr(0, stem.find_last_not_of(' ') + 1);
    for (const std::string_view device : {"con", "prn", "aux", "nul", "conin$", "conout$"}) {
        if (equalIgnoringAsciiCase(stem, device)) {
            return true;
        }
    }
    return isNumberedPort(stem);
}

bool staysInside(std::string_view relativeName) noexcept {
    return relativeName.find(':') == std::string_view::npos && !relativeName.starts_with('\\') &&
           !relativeName.starts_with('/') &&
           everyPart(relativeName, [](std::string_view part) { return part != ".."; });
}

bool namesAFileInside(std::string_view relativeName) noexcept {
    return staysInside(relativeName) && everyPart(relativeName, [](std::string_view part) {
               return part.find_first_not_of(". ") != std::string_view::npos && !isDeviceName(part) &&
                      std::none_of(part.begin(), part.end(), isForbidden);
           });
}

} // namespace base
