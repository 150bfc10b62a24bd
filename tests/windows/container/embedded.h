// A send/receive control in a container, with two commands to send and a server in memory.
#pragma once

#include "fakes/fake_late_bound.h"
#include "fakes/send_receive_services.h"
#include "windows/com/adopt.h"
#include "windows/com/com_support.h"
#include "windows/container/container.h"
#include "windows/forms/person.h"
#include "windows/forms/windows_desktop.h"
#include "windows/objects/ucSendReceive_object.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace container_test {

inline constexpr std::string_view kControl = "ucSendReceive";

class Embedded : public testing::Test {
protected:
    Embedded() {
        const auto globals = std::make_shared<fakes::FakeLateBound>();
        globals->addProperty("gProfileNumber", std::string("1001"));
        globals->addProperty("gWebService", std::string("Supplier"));
        globals->addProperty("gSettingString", std::string("Shop"));
        globals->addProperty("gQuorVantisPath", std::string("C:\\QV\\"));
        engine->session.Globals = globals;
        engine->session.bLoginNotRequired = true;
        EXPECT_TRUE(engine->domCommands()->loadXml("<commands><command name='prices' show='yes' required='yes'/>"
                                                   "<command name='orders' show='yes' required='yes'/></commands>"));
        engine->LoadCommands();
    }

    [[nodiscard]] Microsoft::WRL::ComPtr<IUnknown> identity() const {
        Microsoft::WRL::ComPtr<IUnknown> unknown;
        object.As(&unknown);
        return unknown;
    }
    template <typename Interface>
    [[nodiscard]] Microsoft::WRL::ComPtr<Interface> as() const {
        Microsoft::WRL::ComPtr<Interface> found;
        EXPECT_EQ(object.As(&found), S_OK);
        return found;
    }
    [[nodiscard]] static HWND window(std::string_view name) { return test::control(kControl, name); }

    // The person presses OK, and this happens while the first request is on its way. Returns when the run has ended.
    void runWith(std::function<void()> meanwhile) {
        bool sent = false;
        fakes::Answer answer;
        answer.body = {"<results/>"};
        answer.meanwhile = [&, meanwhile = std::move(meanwhile)] {
            sent = true;
            meanwhile();
        };
        services.network.willAnswer(std::move(answer));
        person.click(kControl, "cmdOK");
        container.runUntil([&] { return sent && engine->cmdOK.enabled(); });
    }
    // Handles messages as a routine of the control does.
    void waitInside(const std::function<bool()>& done) {
        const ULONGLONG deadline = GetTickCount64() + 10'000;
        while (!done() && GetTickCount64() < deadline) {
            services.desktop.doEvents();
        }
        EXPECT_TRUE(done());
    }

    com_test::ComApartment apartment;
    fakes::SendReceiveServicesOn<windows::WindowsDesktop> services{GetModuleHandleW(nullptr)};
    Microsoft::WRL::ComPtr<windows::com::SendReceiveObject> object =
        windows::com::adopt(new windows::com::SendReceiveObject(services.all, services.desktop));
    std::shared_ptr<sendreceive::ucSendReceive> engine =
        std::static_pointer_cast<sendreceive::ucSendReceive>(object->control().shared_from_this());
    Container container{identity()};
    test::Person person;
};

} // namespace container_test
