// The connection settings on fakes, and a person who works them.
#pragma once

#include "base/runtime_error.h"
#include "connection/frmDial.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_file_system.h"
#include "fakes/fake_network.h"
#include "fakes/fake_settings.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace connection {

using Lines = std::vector<std::string>;

enum Tab : std::size_t { kDialTab, kProxyTab, kTestTab };

class frmDialTest : public testing::Test {
protected:
    frmDialTest() { store("DialType", "Proxy"); }

    void store(std::string_view key, std::string_view value) { settings.set("Shop", "Dialup", key, value); }
    std::string stored(std::string_view key) { return settings.get("Shop", "Dialup", key); }
    void show(frmDial& shown, const std::function<void()>& user) {
        desktop.whenShown("frmDial", [&] {
            user();
            if (shown.shown()) {
                shown.bCancel2.userClick();
            }
        });
        shown.showModal();
    }
    void show(const std::function<void()>& user) { show(form, user); }
    void showTestPage(const std::function<void()>& user) {
        show([&] {
            form.tabPages.userSelect(kTestTab);
            user();
        });
    }

    fakes::FakeDesktop desktop;
    fakes::FakeFileSystem files;
    fakes::FakeSettings settings;
    fakes::FakeNetwork network;
    std::unique_ptr<ports::Dialer> dialer = network.createDialer();
    Lines log;
    DialServices services{desktop, files,   settings,
                          network, *dialer, [this](std::string_view line) { log.emplace_back(line); }};
    DialHost host{"Shop", "Supplier", "http://supplier/test", "C:\\Windows\\QuorVantis"};
    frmDial form{services, host};
};

} // namespace connection
