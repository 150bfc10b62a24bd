// Copies the screen, not the windows one by one: only so do nested dialogs show as the user sees them.
#include "drive/screenshot.h"

#include "drive/failure.h"
#include "drive/wide.h"

#include <objidl.h>

#include <gdiplus.h>

#include <memory>
#include <string>

namespace drive {
namespace {

// The platform's PNG encoder, one of its fixed set.
constexpr CLSID kPngEncoder{0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

class Drawing {
public:
    Drawing() {
        const Gdiplus::GdiplusStartupInput input;
        if (Gdiplus::GdiplusStartup(&m_token, &input, nullptr) != Gdiplus::Ok) {
            throw Failure("the drawing library does not start");
        }
    }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;
    ~Drawing() { Gdiplus::GdiplusShutdown(m_token); }

private:
    ULONG_PTR m_token = 0;
};

HBITMAP copyScreen(const RECT& area) {
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    SelectObject(memory, before);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return bitmap;
}

} // namespace

void saveScreenshot(const RECT& area, std::string_view path) {
    const Drawing drawing;
    const HBITMAP bitmap = copyScreen(area);
    Gdiplus::Status status = Gdiplus::Ok;
    {
        Gdiplus::Bitmap picture(bitmap, nullptr);
        status = picture.Save(wide(path).c_str(), &kPngEncoder, nullptr);
    }
    DeleteObject(bitmap);
    if (status != Gdiplus::Ok) {
        throw Failure("cannot save " + std::string(path) + ": status " + std::to_string(static_cast<int>(status)));
    }
}

} // namespace drive
