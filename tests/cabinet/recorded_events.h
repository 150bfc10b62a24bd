// Listens to a cabinet object and writes down what it hears; can interfere.
#pragma once

#include "cabinet/clsCABFile.h"
#include "fakes/fake_locale.h"

#include <functional>
#include <string>
#include <vector>

namespace cabinet_test {

class RecordedEvents final : public cabinet::CabFileEvents {
public:
    void FileFound(const std::string& name, const base::DateTime& fileDate, std::int32_t size,
                   const std::string& path) override {
        lines.push_back("found " + name + "|" + m_locale.generalDate(fileDate) + "|" + std::to_string(size) + "|" +
                        path);
    }
    void BeforeExtract(const std::string& name, bool& cancel) override {
        lines.push_back("before " + name);
        if (beforeExtract) {
            beforeExtract(name, cancel);
        }
    }
    void AfterExtract(const std::string& path) override {
        lines.push_back("after " + path);
        if (afterExtract) {
            afterExtract(path);
        }
    }

    std::function<void(const std::string& name, bool& cancel)> beforeExtract;
    std::function<void(const std::string& path)> afterExtract;
    std::vector<std::string> lines;

private:
    fakes::FakeLocale m_locale;
};

} // namespace cabinet_test
