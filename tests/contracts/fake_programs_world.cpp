// The suite of program files on the fake.
#include "contracts/programs_contract.h"
#include "fakes/fake_programs.h"

#include <algorithm>

namespace contracts {
namespace {

class FakeProgramsWorld final : public ProgramsWorld {
public:
    FakeProgramsWorld() {
        const base::FileVersion version{{7, 2, 0, 1}};
        m_programs.add(path("good.exe"), {version, fakes::FakePrograms::trusted("Test Publisher")});
        m_programs.add(path("unsigned.exe"), {version});
    }
    ports::Programs& programs() override { return m_programs; }
    std::string path(const std::string& name) override { return "C:\\data\\" + name; }
    bool wasStarted(const std::string& path) override {
        return std::find(m_programs.started.begin(), m_programs.started.end(), path) != m_programs.started.end();
    }

private:
    fakes::FakePrograms m_programs;
};

INSTANTIATE_TEST_SUITE_P(Fake, ProgramsContract, testing::Values([] { return std::make_unique<FakeProgramsWorld>(); }));

} // namespace
} // namespace contracts
