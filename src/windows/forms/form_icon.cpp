#include "windows/forms/form_icon.h"

#include "windows/base/wide.h"

namespace windows {
namespace {

void showOne(HWND window, const std::wstring& path, WPARAM kind, int width, int height, UniqueIcon& icon) {
    icon.reset(static_cast<HICON>(LoadImageW(nullptr, path.c_str(), IMAGE_ICON, GetSystemMetrics(width),
                                             GetSystemMetrics(height), LR_LOADFROMFILE)));
    if (icon) {
        SendMessageW(window, WM_SETICON, kind, reinterpret_cast<LPARAM>(icon.get()));
    }
}

} // namespace

void FormIcon::show(HWND window, const std::string& path) {
    if (path.empty()) {
        return;
    }
    const std::wstring file = toWide(path);
    showOne(window, file, ICON_SMALL, SM_CXSMICON, SM_CYSMICON, m_small);
    showOne(window, file, ICON_BIG, SM_CXICON, SM_CYICON, m_big);
}

} // namespace windows
