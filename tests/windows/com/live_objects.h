// What this process has open now, to find what it has lost. Wine's own counts (GetGuiResources,
// GetProcessHandleCount) are always 0, so every place of the tables is asked.
#pragma once

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace com_test {

struct LiveObjects {
    int kernelHandles = 0; // those of the first 4,096 places
    int gdiObjects = 0;
    int windows = 0;         // of this thread, without those inside other windows
    int freeThreadSlots = 0; // a process has 1,088
    int freeFiberSlots = 0;  // 128 until Windows 10
    int memoryBlocks = 0;    // of all heaps

    friend bool operator==(const LiveObjects&, const LiveObjects&) = default;
};

namespace detail {

inline BOOL CALLBACK countWindow(HWND, LPARAM count) {
    ++*reinterpret_cast<int*>(count);
    return TRUE;
}

template <typename Take, typename Free>
int freeSlots(Take take, Free free) {
    std::vector<DWORD> taken;
    for (DWORD slot = take(); slot != TLS_OUT_OF_INDEXES; slot = take()) {
        taken.push_back(slot);
    }
    std::ranges::for_each(taken, free);
    return static_cast<int>(taken.size());
}

inline int memoryBlocks() {
    int blocks = 0;
    std::array<HANDLE, 64> heaps;
    const DWORD count = GetProcessHeaps(heaps.size(), heaps.data());
    for (const HANDLE heap : std::span(heaps).first(std::min<std::size_t>(count, heaps.size()))) {
        PROCESS_HEAP_ENTRY entry{};
        HeapLock(heap);
        while (HeapWalk(heap, &entry)) {
            blocks += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? 1 : 0;
        }
        HeapUnlock(heap);
    }
    return blocks;
}

} // namespace detail

[[nodiscard]] inline LiveObjects liveObjects() {
    LiveObjects live;
    constexpr std::uintptr_t kKernelPlaces = 4096;
    for (std::uintptr_t place = 1; place <= kKernelPlaces; ++place) {
        DWORD flags = 0;
        live.kernelHandles += GetHandleInformation(reinterpret_cast<HANDLE>(4 * place), &flags) != FALSE ? 1 : 0;
    }
    constexpr std::uintptr_t kGdiPlaces = 0x4000;
    for (std::uintptr_t place = 0; place < kGdiPlaces; ++place) { // no upper half: whatever use of the place it is
        live.gdiObjects += GetObjectType(reinterpret_cast<HGDIOBJ>(place)) != 0 ? 1 : 0;
    }
    live.freeThreadSlots = detail::freeSlots(TlsAlloc, TlsFree);
    live.freeFiberSlots = detail::freeSlots([] { return FlsAlloc(nullptr); }, FlsFree);
    live.memoryBlocks = detail::memoryBlocks();
    EnumThreadWindows(GetCurrentThreadId(), detail::countWindow, reinterpret_cast<LPARAM>(&live.windows));
    return live;
}

// Loses twenty objects of each kind for a moment, and says whether they are counted: a look that sees no leak proves
// nothing.
[[nodiscard]] inline bool twentyLostObjectsShow() {
    const auto makeWindow = [] {
        return CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    };
    const HWND first = makeWindow(); // with it, what a thread with windows has besides
    const LiveObjects before = liveObjects();
    struct Lost {
        HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
        HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
        HWND window = nullptr;
        DWORD threadSlot = TlsAlloc();
        DWORD fiberSlot = FlsAlloc(nullptr);
        void* memory = HeapAlloc(GetProcessHeap(), 0, 1);
    };
    std::array<Lost, 20> lost;
    for (Lost& one : lost) {
        one.window = makeWindow();
    }
    const LiveObjects now = liveObjects();
    for (const Lost& one : lost) {
        CloseHandle(one.event);
        DeleteObject(one.brush);
        DestroyWindow(one.window);
        TlsFree(one.threadSlot);
        FlsFree(one.fiberSlot);
        HeapFree(GetProcessHeap(), 0, one.memory);
    }
    const bool show = now.kernelHandles == before.kernelHandles + 20 && now.gdiObjects == before.gdiObjects + 20 &&
                      now.windows == before.windows + 20 && now.freeThreadSlots == before.freeThreadSlots - 20 &&
                      now.freeFiberSlots == before.freeFiberSlots - 20 && now.memoryBlocks >= before.memoryBlocks + 20;
    DestroyWindow(first);
    return show;
}

} // namespace com_test
