#include "fakes/fake_path.h"

#include "base/runtime_error.h"
#include "base/text.h"

#include <algorithm>
#include <vector>

namespace fakes {
namespace {

using base::RuntimeError;
namespace error = base::error;

bool isSeparator(char c) {
    return c == '\\' || c == '/';
}

bool isDrive(std::string_view part) {
    return part.size() == 2 && part[1] == ':';
}

} // namespace

bool endsWithSeparator(std::string_view path) {
    return !path.empty() && isSeparator(path.back());
}

std::string tidied(std::string_view path) {
    if (path.empty() || (path.size() >= 2 && isSeparator(path[0]) && isSeparator(path[1]))) {
        throw RuntimeError(error::kPathNotFound); // no name, or a network path
    }
    std::vector<std::string_view> parts;
    for (std::size_t i = 0; i < path.size();) {
        const std::size_t end = std::min(path.find_first_of("\\/", i), path.size());
        const std::string_view part = path.substr(i, end - i);
        if (part == "..") {
            if (!parts.empty() && !isDrive(parts.back())) {
                parts.pop_back();
            }
        } else if (!part.empty() && part != ".") {
            if (part.find_first_of(std::string_view("*?<>|\"\0", 7)) != part.npos ||
                (part.find(':') != part.npos && !(i == 0 && isDrive(part)))) {
                throw RuntimeError(error::kBadFileName);
            }
            parts.push_back(part);
        }
        i = end + 1;
    }
    std::string out = parts.empty() || !isDrive(parts[0]) ? "C:" : std::string();
    for (const std::string_view part : parts) {
        out.append(out.empty() ? "" : "\\").append(part);
    }
    return out;
}

std::string keyOf(std::string_view path) {
    return base::upperCase(tidied(path));
}

std::string parentOf(const std::string& key) {
    return key.substr(0, key.find_last_of('\\'));
}

} // namespace fakes
