// What the tests of a host of its own kind have: commands, globals and settings that are the host's
// (tests/windows/control_host), and a real service beside it (examples/supplier).
#pragma once

#include "windows/end_to_end/shop.h"
#include "windows/end_to_end/surroundings.h"

#include <chrono>
#include <string>
#include <string_view>

namespace end_to_end {

class OwnHost : public Shop {
protected:
    // The service is there, and knows the commands "prices" and "orders". The person connects by hand.
    OwnHost();
    ~OwnHost() override;

    // How long a server may be silent. Before startControl.
    std::chrono::milliseconds timeOut{600'000};

    // The options are members of a JScript object: "A: 'b', C: 'd'".
    void startControl(const std::string& commands, const std::string& options = "");
    // Starts the sample with a window of its own around the control (examples/hosts).
    void startWindowHost();
    // Presses a button of the control in that window, once it can be pressed.
    void pressInWindowHost(const wchar_t* button) const;
    // Presses OK and logs in; the run is on its way then.
    void logIn(const std::string& password = "secret");
    // Waits until the run is over, and nothing is left to be answered.
    void expectIdle() { play("wait frmQVI_sendreceive\nexpect-enabled cmdOK\n"); }
    // Closes the window; what the host has heard until then.
    [[nodiscard]] std::string heard();

    // What the service was asked for since the host started: a line per command with its date, or per file, and what
    // came of it.
    [[nodiscard]] std::string requests() const;

    // The supplier's behaviour: what is inside of the root element.
    static void supplierIs(const std::string& behaviour) {
        setSupplierBehaviour("<behaviour>" + behaviour + "</behaviour>");
    }

    // This command, ticked, and what is heard of a host that has sent it and was closed.
    static constexpr std::string_view kPrices =
        "<command name='prices' show='yes' displaytext='Prices' checked='yes'/>";
    static constexpr std::string_view kCompleted =
        "DownloadStart prices\r\nDownloadComplete prices\r\nSendReceiveCompleted\r\nCancelled\r\nEND\r\n";

private:
    std::size_t m_logged = 0; // characters of the service's log that are older than the host
};

// As last dates are written.
[[nodiscard]] std::string today();

} // namespace end_to_end
