#include "windows/embedding/control_picture.h"

namespace windows::com {

void drawInactive(HDC device, const RECT& bounds) {
    constexpr wchar_t kName[] = L"ucSendReceive";
    const int saved = SaveDC(device);
    RECT area = bounds;
    FillRect(device, &area, GetSysColorBrush(COLOR_BTNFACE));
    DrawEdge(device, &area, EDGE_ETCHED, BF_RECT);
    SetBkMode(device, TRANSPARENT);
    SetTextColor(device, GetSysColor(COLOR_BTNTEXT));
    SelectObject(device, GetStockObject(DEFAULT_GUI_FONT));
    DrawTextW(device, kName, -1, &area, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    RestoreDC(device, saved);
}

} // namespace windows::com
