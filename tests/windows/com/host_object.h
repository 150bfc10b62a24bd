// Automation objects of a host, as the late-bound tests need them.
#pragma once

#include "fakes/fake_late_bound.h"

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <memory>
#include <string>
#include <vector>

namespace com_test {

// How a HostObject reports an error.
enum class Reporting { AtOnce, Deferred };

// An IDispatch in front of a fake; it answers to `members` (their positions are the ids).
[[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> makeHostObject(std::shared_ptr<fakes::FakeLateBound> fake,
                                                               std::vector<std::wstring> members,
                                                               Reporting reporting = Reporting::AtOnce);

// The script engine of the system, with one object known to the script under the name "host".
class JScript {
public:
    explicit JScript(IDispatch* host = nullptr);
    JScript(const JScript&) = delete;
    JScript& operator=(const JScript&) = delete;
    ~JScript();

    // The value of an expression; VT_ERROR when the script fails.
    [[nodiscard]] VARIANT evaluate(const std::wstring& expression);
    // The same, for an expression that gives an object.
    [[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> object(const std::wstring& expression);

private:
    struct Engine;
    std::unique_ptr<Engine> m_engine;
};

} // namespace com_test
