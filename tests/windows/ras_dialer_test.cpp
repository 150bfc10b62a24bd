// The dialer over the real service, as far as a machine without a modem goes: nobody is there, and it says so.
#include "windows/network/ras_dialer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

class Listener final : public ports::DialEvents {
public:
    void progress(std::int32_t, std::string_view, std::string_view, std::string_view,
                  std::string_view) noexcept override {}
    void status(std::int32_t, std::string_view) noexcept override {}
    void error(std::int32_t code, std::string_view description) noexcept override {
        ++errors;
        lastCode = code;
        text = description;
    }
    void connected() noexcept override { ADD_FAILURE() << "with what?"; }

    int errors = 0;
    std::int32_t lastCode = 0;
    std::string text;
};

TEST(RasDialer, AnEntryThatIsNotThereEndsInOneErrorAndTheNextAttemptToo) {
    windows::RasDialer dialer;
    const std::string name = "No such entry \xC3\xA9" + std::string(300, 'x');
    for (const std::string& entry : dialer.phoneBook()) {
        EXPECT_NE(entry, name);
    }
    Listener listener;
    const ULONGLONG start = GetTickCount64();
    for (int attempt = 1; attempt <= 2; ++attempt) {
        dialer.dial(name, listener);
        MSG message{};
        while (listener.errors < attempt && GetTickCount64() - start < 10'000) {
            if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
                DispatchMessageW(&message);
            }
        }
        EXPECT_EQ(listener.errors, attempt);
        EXPECT_NE(listener.lastCode, 0);
        EXPECT_NE(listener.text, "");
        EXPECT_EQ(listener.text.find_first_of("\r\n"), std::string::npos);
        EXPECT_FALSE(dialer.connected());
    }
    dialer.hangUp();
    dialer.hangUp();
}

} // namespace
