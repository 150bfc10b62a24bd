// A host that shows the send/receive control in a window of its own, with its own commands, globals and settings, and
// prints the events that it hears.
//
//   control_host FOLDER ADDRESS MILLISECONDS
//
// In FOLDER are commands.xml, the commands, and globals.js, an expression for the globals object, in which `host` is
// the settings document, read from quorvantis.xml. A command with waits="before" or waits="after" keeps the host busy
// there until the user cancels. A server may be silent for MILLISECONDS. At its end the host prints which of the
// globals' flags are set, the line END, and has the exit code 0.
#include "entry/QVI_global.h"
#include "entry/environment.h"
#include "sendreceive/events.h"
#include "sendreceive/ucSendReceive.h"
#include "ui/form.h"
#include "windows/adapters/ansi_code_page.h"
#include "windows/adapters/local_clock.h"
#include "windows/adapters/memory_status.h"
#include "windows/adapters/registry_settings.h"
#include "windows/adapters/setup_cabinet_api.h"
#include "windows/adapters/user_data_protection.h"
#include "windows/adapters/user_locale.h"
#include "windows/adapters/wic_picture_decoder.h"
#include "windows/adapters/windows_file_system.h"
#include "windows/adapters/windows_programs.h"
#include "windows/base/wide.h"
#include "windows/com/dispatch_object.h"
#include "windows/com/host_object.h"
#include "windows/forms/windows_desktop.h"
#include "windows/network/windows_network.h"

#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include <windows.h>

#include <objbase.h>

namespace {

using Microsoft::WRL::ComPtr;
using windows::com::DispatchObject;

// What the control works with in the component too.
struct Machine {
    windows::WindowsDesktop desktop{GetModuleHandleW(nullptr)};
    windows::WindowsFileSystem files;
    windows::RegistrySettings settings;
    windows::LocalClock clock;
    windows::AnsiCodePage ansi;
    windows::UserLocale locale;
    windows::WicPictureDecoder pictures;
    windows::UserDataProtection protection;
    windows::WindowsNetwork network;
    windows::WindowsPrograms programs;
    windows::SetupCabinetApi cabinets;
    windows::MemoryStatus memory;
    entry::Environment environment{desktop,    files,   settings, clock,    pictures, ansi, locale,
                                   protection, network, programs, cabinets, memory,   ""};
};

class Window final : public ui::Form, private sendreceive::Events {
public:
    // The component's own window has a template that fits.
    Window(Machine& machine, std::shared_ptr<sendreceive::ucSendReceive> control)
        : Form(machine.desktop, "frmQVI_sendreceive"), m_control(std::move(control)), m_machine(machine) {
        ucSendReceive1.anchors = {true, true, true, true};
        m_control->advise(*this);
    }
    ~Window() override { m_control->unadvise(*this); }

private:
    void Form_Load() override { m_control->LoadCommands(); }
    void Form_CloseBox() override { m_control->cmdCancel_Click(); }

    void DownloadStart(std::string& name, std::shared_ptr<xml::XmlDocument>& request) override {
        std::printf("DownloadStart %s\n", name.c_str());
        waitIf(request->selectSingleNode("//command"), "before");
    }
    void DownloadComplete(std::string& name, const xml::XmlNode& command,
                          const std::shared_ptr<xml::XmlDocument>& /*results*/) override {
        std::printf("DownloadComplete %s\n", name.c_str());
        waitIf(command, "after");
    }
    void waitIf(const xml::XmlNode& command, std::string_view when) {
        while (command.getAttribute("waits") == when && !m_control->session.gCancelled) {
            m_machine.desktop.doEvents();
        }
    }
    void Cancelled() override {
        std::puts("Cancelled");
        unload();
    }
    void SendReceiveCompleted() override { std::puts("SendReceiveCompleted"); }
    void CloseQuorVantis() override {}
    void OpenfrmOptions(const std::string& /*url*/) override {}
    void RegisterServer(const std::string& file) override { std::printf("RegisterServer %s\n", file.c_str()); }
    void UnregisterServer(const std::string& file) override { std::printf("UnregisterServer %s\n", file.c_str()); }

    std::shared_ptr<sendreceive::ucSendReceive> m_control;
    Machine& m_machine;
    ui::UserControlSite ucSendReceive1{*this, "ucSendReceive1", *m_control};
};

ComPtr<IDispatch> settingsDocument(const std::string& path) {
    CLSID library{};
    ComPtr<IDispatch> document;
    if (FAILED(CLSIDFromProgID(L"Msxml2.DOMDocument", &library)) ||
        FAILED(CoCreateInstance(library, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&document)))) {
        return nullptr;
    }
    DispatchObject(document).put("async", false);
    DispatchObject(document).call("load", {path});
    return document;
}

void run(const std::string& folder, const std::string& address, std::chrono::milliseconds timeOut) {
    Machine machine;
    const ComPtr<IDispatch> settings = settingsDocument(folder + "quorvantis.xml");
    com_test::JScript script(settings.Get());
    auto commands = std::make_shared<xml::XmlDocument>();
    static_cast<void>(commands->load(machine.files.readFile(folder + "commands.xml")));

    sendreceive::Services services = entry::sendReceiveServices(machine.environment);
    services.engine.timeOut = timeOut;
    const auto control = sendreceive::ucSendReceive::create(services);
    control->session.Globals =
        windows::com::toObjectRef(script.object(windows::toWide(machine.files.readFile(folder + "globals.js"))));
    control->session.sWebAddress = address;
    control->setDomCommands(std::move(commands));
    Window window(machine, control);
    window.load();
    window.showModal();
    for (const char* const flag : {"gBusyWithUpgrade", "gDisplayExitMsg"}) {
        if (base::toText(control->session.Globals->get(flag)) == base::toText(true)) {
            std::puts(flag);
        }
    }
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 4) {
        return 2;
    }
    std::setvbuf(stdout, nullptr, _IONBF, 0); // whoever waits for an event sees it at once
    CoInitialize(nullptr);
    run(windows::fromWide(arguments[1]), windows::fromWide(arguments[2]),
        std::chrono::milliseconds(std::stoi(arguments[3])));
    std::puts("END");
    CoUninitialize();
    return 0;
}
