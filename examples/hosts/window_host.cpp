// A compiled host with the send/receive control on a window of its own: early-bound, with its own globals object, and a
// sink for the events. The container is the system's, in atl.dll.
//
//   window_host.exe [DATAFOLDER\ [WEBADDRESS]]
//
// Prints the events. Ends, when the window is closed or the user cancels, with the line END and exit code 0, or with
// the step that failed and exit code 1.
#include "host_globals.h"
#include "host_support.h"
// Made from the type library; the package has it. Microsoft's compiler can #import the DLL instead.
#include "quorvantisimage.h"

#include <cstdio>

#include <windows.h>

#include <ocidl.h>

using namespace host;

namespace {

// The system's container: a window class whose windows are called after the class of the control inside.
constexpr wchar_t kContainerClass[] = L"AtlAxWin";
constexpr UINT kForwardedMessage = 0x037F; // offers it a key for the control; 0: the control does not want it
using AtlAxWinInit = BOOL(WINAPI*)();
using AtlAxGetControl = HRESULT(WINAPI*)(HWND container, IUnknown** control);

template <typename Function>
Function fromAtl(const char* name) {
    const HMODULE atl = LoadLibraryW(L"atl.dll");
    return atl == nullptr ? nullptr : reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(atl, name)));
}

// The control fills the window.
LRESULT CALLBACK windowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SIZE: MoveWindow(GetWindow(window, GW_CHILD), 0, 0, LOWORD(lParam), HIWORD(lParam), TRUE); return 0;
    case WM_SETFOCUS: SetFocus(GetWindow(window, GW_CHILD)); return 0;
    case WM_DESTROY: PostQuitMessage(0); return 0;
    default: return DefWindowProcW(window, message, wParam, lParam);
    }
}

HWND makeWindow() {
    WNDCLASSW description{};
    description.lpfnWndProc = windowProc;
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = L"WindowHost";
    RegisterClassW(&description);
    const HWND window = CreateWindowExW(WS_EX_CONTROLPARENT, description.lpszClassName, L"My shop",
                                        WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, CW_USEDEFAULT, 720, 500,
                                        nullptr, nullptr, nullptr, nullptr);
    RECT inside{};
    GetClientRect(window, &inside);
    CreateWindowExW(WS_EX_CONTROLPARENT, kContainerClass, L"QuorvantisImage.ucSendReceive",
                    WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, inside.right, inside.bottom, window, nullptr, nullptr,
                    nullptr);
    return window;
}

// Hears the control. The arguments of an event come in reverse order.
class Sink final : public StackObject {
public:
    explicit Sink(HWND window) : StackObject(__uuidof(__ucSendReceive)), m_window(window) {}

    HRESULT STDMETHODCALLTYPE Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        switch (event) {
        case 1: print(L"DownloadComplete", arguments); return S_OK;
        case 2: print(L"DownloadStart", arguments); return S_OK;
        case 3:
            std::printf("Cancelled\n");
            PostMessageW(m_window, WM_CLOSE, 0, 0); // not at once: the control is still at work
            return S_OK;
        case 4: std::printf("SendReceiveCompleted\n"); return S_OK;
        default: return DISP_E_MEMBERNOTFOUND; // not handled, which is no failure
        }
    }

private:
    // The name of the command comes by reference: another one that is put there is ignored.
    static void print(const wchar_t* event, const DISPPARAMS* arguments) {
        std::printf("%ls %ls\n", event, *V_BSTRREF(&arguments->rgvarg[arguments->cArgs - 1]));
    }

    HWND m_window;
};

// The commands, in the document that a new control has. A host with an XML library hands over its own: put_domCommands.
bool fillCommands(_ucSendReceive* control) {
    const Text text(L"<commands profile='1001'>"
                    L"<command name='prices' displaytext='Prices' show='yes' checked='yes'/>"
                    L"<command name='orders' displaytext='Orders' show='yes'/></commands>");
    Held<IDispatch> object;
    Held<_XmlDocument> document;
    VARIANT_BOOL wellFormed = VARIANT_FALSE;
    return done("Asking for the document", control->get_domCommands(&object.value)) &&
           done("Asking for its members", object->QueryInterface(__uuidof(_XmlDocument), document.out())) &&
           done("Filling it", document->loadXML(text.value, &wellFormed)) && wellFormed != VARIANT_FALSE;
}

// What the control needs to know before it can show its commands.
bool setUp(_ucSendReceive* control, Globals& globals, const wchar_t* webAddress) {
    const Text address(webAddress);
    return done("Setting the globals", control->putref_Globals(&globals)) &&
           done("Setting the address", control->put_sWebAddress(address.value)) && fillCommands(control) &&
           done("LoadCommands", control->LoadCommands()) && done("Setcolors", control->Setcolors());
}

bool connect(_ucSendReceive* control, Sink& sink, Held<IConnectionPoint>& point, DWORD& cookie) {
    Held<IConnectionPointContainer> connections;
    return done("Asking for connections", control->QueryInterface(IID_IConnectionPointContainer, connections.out())) &&
           done("Finding the events", connections->FindConnectionPoint(__uuidof(__ucSendReceive), &point.value)) &&
           done("Connecting", point->Advise(&sink, &cookie));
}

// Keys are offered to the control first. A set-up program that the control starts ends the host, whose files it
// replaces.
void handleMessages(HWND window, const Globals& globals) {
    MSG message;
    while (!globals.busyWithUpgrade() && GetMessageW(&message, nullptr, 0, 0) > 0) {
        const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
        const bool taken = isKey && SendMessageW(GetWindow(window, GW_CHILD), kForwardedMessage, 0,
                                                 reinterpret_cast<LPARAM>(&message)) != 0;
        if (!taken && !IsDialogMessageW(window, &message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}

bool run(const wchar_t* dataFolder, const wchar_t* webAddress) {
    const auto initialise = fromAtl<AtlAxWinInit>("AtlAxWinInit");
    const auto getControl = fromAtl<AtlAxGetControl>("AtlAxGetControl");
    if (initialise == nullptr || getControl == nullptr || !initialise()) {
        std::printf("There is no atl.dll\n");
        return false;
    }
    // What the control may call outlives it.
    const HWND window = makeWindow();
    Globals globals(dataFolder, L"QuorvantisSample");
    Sink sink(window);
    Held<IUnknown> inside;
    Held<_ucSendReceive> control;
    Held<IConnectionPoint> point;
    DWORD cookie = 0;
    if (!done("Showing the control", getControl(GetWindow(window, GW_CHILD), &inside.value)) ||
        !done("Asking for its members", inside->QueryInterface(__uuidof(_ucSendReceive), control.out())) ||
        !connect(control.value, sink, point, cookie) || !setUp(control.value, globals, webAddress)) {
        DestroyWindow(window);
        return false;
    }
    ShowWindow(window, SW_SHOW);
    handleMessages(window, globals);
    DestroyWindow(window); // the user may have closed it already
    return done("Disconnecting", point->Unadvise(cookie));
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    std::setvbuf(stdout, nullptr, _IONBF, 0); // whoever reads along sees each event at once
    OleInitialize(nullptr);
    const bool succeeded = run(count > 1 ? arguments[1] : L"", count > 2 ? arguments[2] : L"http://localhost/");
    OleUninitialize();
    if (succeeded) {
        std::printf("END\n");
    }
    return succeeded ? 0 : 1;
}
