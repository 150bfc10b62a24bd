#include "fakes/fake_settings.h"

#include "base/runtime_error.h"
#include "base/text.h"

namespace fakes {
namespace {

std::string spellingOf(std::string_view application, std::string_view section, std::string_view key) {
    return std::string(application) + "|" + std::string(section) + "|" + std::string(key);
}

// Empty parts between backslashes name a key elsewhere in the tree, or none.
bool isKeyName(std::string_view name) {
    return !name.empty() && name.front() != '\\' && name.back() != '\\' && name.find("\\\\") == name.npos;
}

bool isUsable(std::string_view application, std::string_view section, std::string_view key) {
    return isKeyName(application) && isKeyName(section) && !key.empty();
}

} // namespace

std::string FakeSettings::get(std::string_view application, std::string_view section, std::string_view key,
                              std::string_view fallback) {
    const auto found = m_values.find(base::upperCase(spellingOf(application, section, key)));
    return isUsable(application, section, key) && found != m_values.end() ? found->second.text : std::string(fallback);
}

void FakeSettings::set(std::string_view application, std::string_view section, std::string_view key,
                       std::string_view value) {
    if (!isUsable(application, section, key)) {
        return;
    }
    if (m_writeError != 0) {
        throw base::RuntimeError(m_writeError);
    }
    const std::string spelling = spellingOf(application, section, key);
    Value& stored = m_values.try_emplace(base::upperCase(spelling), Value{spelling, {}}).first->second;
    stored.text = value.substr(0, value.find('\0'));
}

void FakeSettings::remove(std::string_view application, std::string_view section, std::string_view key) {
    if (m_values.erase(base::upperCase(spellingOf(application, section, key))) == 0) {
        throw base::RuntimeError(base::error::kInvalidProcedureCall);
    }
}

std::vector<std::string> FakeSettings::all() const {
    std::vector<std::string> lines;
    for (const auto& [name, value] : m_values) {
        lines.push_back(value.spelling + "=" + value.text);
    }
    return lines;
}

} // namespace fakes
