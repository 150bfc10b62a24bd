// A compiled host with the send/receive control in a window of its own. The container is the system's, in atl.dll.
//
//   window_host.exe
//
// Ends, when the window is closed, with the line END and exit code 0, or with the step that failed and exit code 1.
#include "late_bound.h"

#include <cstdio>

#include <windows.h>

#include <oleauto.h>

using namespace late_bound;

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

// What the control needs to know before it can show its commands.
bool setUp(IDispatch* control) {
    Held<IDispatch> globals;
    VARIANT commands;
    VARIANT text;
    VariantInit(&commands);
    V_VT(&text) = VT_BSTR;
    V_BSTR(&text) = SysAllocString(L"<commands><command name='prices' displaytext='Prices' show='yes'/>"
                                   L"<command name='orders' displaytext='Orders' show='yes'/></commands>");
    const bool ready =
        done("Creating globals", create(L"QuorvantisImage.clsQVI_Globals", &globals.value)) &&
        done("Naming the settings", putText(globals.value, L"gSettingString", L"QuorvantisSample")) &&
        done("Setting the globals", putObject(control, L"Globals", globals.value)) &&
        done("Setting the address", putText(control, L"sWebAddress", L"http://localhost/")) &&
        done("Reading the document", invoke(control, L"domCommands", DISPATCH_PROPERTYGET, nullptr, &commands)) &&
        done("Filling it", invoke(V_DISPATCH(&commands), L"loadXML", DISPATCH_METHOD, &text, nullptr)) &&
        done("LoadCommands", invoke(control, L"LoadCommands", DISPATCH_METHOD, nullptr, nullptr));
    VariantClear(&text);
    VariantClear(&commands);
    return ready;
}

bool run() {
    const auto initialise = fromAtl<AtlAxWinInit>("AtlAxWinInit");
    const auto getControl = fromAtl<AtlAxGetControl>("AtlAxGetControl");
    if (initialise == nullptr || getControl == nullptr || !initialise()) {
        std::printf("There is no atl.dll\n");
        return false;
    }
    const HWND window = makeWindow();
    Held<IUnknown> inside;
    Held<IDispatch> control;
    if (!done("Showing the control", getControl(GetWindow(window, GW_CHILD), &inside.value)) ||
        !done("Asking for its members", inside->QueryInterface(IID_IDispatch, control.out())) ||
        !setUp(control.value)) {
        return false;
    }
    ShowWindow(window, SW_SHOW);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
        const bool taken = isKey && SendMessageW(GetWindow(window, GW_CHILD), kForwardedMessage, 0,
                                                 reinterpret_cast<LPARAM>(&message)) != 0;
        if (!taken && !IsDialogMessageW(window, &message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    return true;
}

} // namespace

int main() {
    OleInitialize(nullptr);
    const bool succeeded = run();
    OleUninitialize();
    if (succeeded) {
        std::printf("END\n");
    }
    return succeeded ? 0 : 1;
}
