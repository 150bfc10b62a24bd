#include "windows/forms/window_class.h"

#include <utility>

namespace windows {
namespace {

bool registerDialogClass(HINSTANCE module, const wchar_t* name) noexcept {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.style = CS_DBLCLKS;
    description.lpfnWndProc = DefDlgProcW;
    description.cbWndExtra = DLGWINDOWEXTRA;
    description.hInstance = module;
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = name;
    return RegisterClassExW(&description) != 0;
}

} // namespace

WindowClass::WindowClass(HINSTANCE module, std::wstring name)
    : m_module(module), m_name(std::move(name)), m_registered(registerDialogClass(module, m_name.c_str())) {
    // Registered already: an outer window of the same class will take it away again.
}

WindowClass::~WindowClass() {
    if (m_registered) {
        UnregisterClassW(m_name.c_str(), m_module);
    }
}

} // namespace windows
