// Owners of the system's handles, one type per kind: each closes its handle when it goes.
#pragma once

#include <utility>

#include <windows.h>

namespace windows {

// `close` is the function that gives the handle back. Null counts as no handle; the one kind whose failure value is
// INVALID_HANDLE_VALUE is turned into null on the way in.
template <typename Handle, auto close>
class UniqueResource {
public:
    UniqueResource() = default;
    explicit UniqueResource(Handle handle) noexcept : m_handle(valid(handle)) {}
    UniqueResource(UniqueResource&& other) noexcept : m_handle(other.release()) {}
    UniqueResource& operator=(UniqueResource&& other) noexcept {
        reset(other.release());
        return *this;
    }
    UniqueResource(const UniqueResource&) = delete;
    UniqueResource& operator=(const UniqueResource&) = delete;
    ~UniqueResource() { reset(); }

    [[nodiscard]] Handle get() const noexcept { return m_handle; }
    explicit operator bool() const noexcept { return m_handle != Handle{}; }

    void reset(Handle handle = {}) noexcept {
        const Handle old = std::exchange(m_handle, valid(handle));
        if (old != Handle{}) {
            close(old);
        }
    }
    [[nodiscard]] Handle release() noexcept { return std::exchange(m_handle, Handle{}); }
    // For functions that return a handle through a pointer; closes what was held.
    [[nodiscard]] Handle* put() noexcept {
        reset();
        return &m_handle;
    }

private:
    static Handle valid(Handle handle) noexcept {
        return static_cast<const void*>(handle) == INVALID_HANDLE_VALUE ? Handle{} : handle;
    }

    Handle m_handle{};
};

namespace closing {
// The system's functions carry calling conventions and results that a template argument must not depend on.
inline void handle(HANDLE h) noexcept {
    CloseHandle(h);
}
inline void search(HANDLE h) noexcept {
    FindClose(h);
}
inline void key(HKEY h) noexcept {
    RegCloseKey(h);
}
inline void global(HGLOBAL h) noexcept {
    GlobalFree(h);
}
inline void local(void* p) noexcept {
    LocalFree(p);
}
inline void module(HMODULE h) noexcept {
    FreeLibrary(h);
}
inline void object(HGDIOBJ h) noexcept {
    DeleteObject(h);
}
inline void deviceContext(HDC h) noexcept {
    DeleteDC(h);
}
inline void icon(HICON h) noexcept {
    DestroyIcon(h);
}
inline void menu(HMENU h) noexcept {
    DestroyMenu(h);
}
inline void activationContext(HANDLE h) noexcept {
    ReleaseActCtx(h);
}
} // namespace closing

using UniqueHandle = UniqueResource<HANDLE, closing::handle>; // files, events, threads, processes, mappings
using UniqueSearch = UniqueResource<HANDLE, closing::search>; // from FindFirstFile
using UniqueKey = UniqueResource<HKEY, closing::key>;
using UniqueGlobal = UniqueResource<HGLOBAL, closing::global>;
using UniqueLocal = UniqueResource<void*, closing::local>; // what the security functions allocate
using UniqueModule = UniqueResource<HMODULE, closing::module>;
using UniqueFont = UniqueResource<HFONT, closing::object>;
using UniqueBrush = UniqueResource<HBRUSH, closing::object>;
using UniqueBitmap = UniqueResource<HBITMAP, closing::object>;
using UniqueMemoryDc = UniqueResource<HDC, closing::deviceContext>; // from CreateCompatibleDC, not from GetDC
using UniqueIcon = UniqueResource<HICON, closing::icon>;
using UniqueMenu = UniqueResource<HMENU, closing::menu>;
using UniqueActivationContext = UniqueResource<HANDLE, closing::activationContext>;

} // namespace windows
