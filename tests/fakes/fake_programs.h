// Program files as a test declares them. Paths are compared in upper case.
#pragma once

#include "base/text.h"
#include "ports/programs.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fakes {

class FakePrograms final : public ports::Programs {
public:
    // What is known of a file; of any other one: no version, and not signed.
    struct Program {
        std::optional<base::FileVersion> version{};
        ports::Signature signature = unsigned_();
    };

    void add(std::string_view path, Program program) { m_programs[base::upperCase(path)] = std::move(program); }

    std::vector<std::string> started;
    // The files that are held at this moment, as given.
    std::vector<std::string> held;

    [[nodiscard]] static ports::Signature unsigned_() { return {false, "", "It is not signed."}; }
    [[nodiscard]] static ports::Signature trusted(std::string publisher) { return {true, std::move(publisher), ""}; }

    [[nodiscard]] std::optional<base::FileVersion> version(std::string_view path) override {
        return find(path).version;
    }
    [[nodiscard]] ports::Signature signature(std::string_view path) override { return find(path).signature; }
    [[nodiscard]] std::unique_ptr<ports::HeldFile> hold(std::string_view path) override {
        return std::make_unique<Held>(*this, path);
    }
    void start(std::string_view path) override { started.emplace_back(path); }

private:
    class Held final : public ports::HeldFile {
    public:
        Held(FakePrograms& programs, std::string_view path) : m_programs(programs), m_path(path) {
            m_programs.held.push_back(m_path);
        }
        ~Held() override { std::erase(m_programs.held, m_path); }

    private:
        FakePrograms& m_programs;
        std::string m_path;
    };

    [[nodiscard]] Program find(std::string_view path) const {
        const auto found = m_programs.find(base::upperCase(path));
        return found == m_programs.end() ? Program{} : found->second;
    }

    std::map<std::string, Program> m_programs;
};

} // namespace fakes
