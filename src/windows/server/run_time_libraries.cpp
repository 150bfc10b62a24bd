#include "windows/server/run_time_libraries.h"

#include "windows/base/module.h"

#include <windows.h>

#include <pthread.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <utility>

// The thread library's own callback for starting and ending threads.
extern "C" const PIMAGE_TLS_CALLBACK __xl_f; // NOLINT(readability-identifier-naming): its name there

// Frees the memory that the C++ library has put aside to raise errors when there is no other; made for tools that look
// for leaks.
namespace __gnu_cxx {      // NOLINT(readability-identifier-naming): its name there
void __freeres() noexcept; // NOLINT(readability-identifier-naming): its name there
}

namespace windows::com {
namespace {

// Keys of thread-local values. The thread library's own take four semaphores that it never closes, so the linker leads
// its users here (--wrap): the system keeps the values, and ends them with their threads or with the key.
using Destroy = void (*)(void*);
constexpr std::size_t kMostKeys = 8; // the run-time libraries and the XML library make three

struct Key {
    std::atomic<DWORD> slot = FLS_OUT_OF_INDEXES;
    std::atomic<Destroy> destroy = nullptr;
};

constinit std::array<Key, kMostKeys> keys;
constinit std::atomic<std::size_t> keysMade = 0;

template <std::size_t Index>
void WINAPI endValue(void* value) {
    const Destroy destroy = keys[Index].destroy;
    if (value != nullptr && destroy != nullptr) {
        destroy(value);
    }
}

template <std::size_t... Index>
constexpr std::array<PFLS_CALLBACK_FUNCTION, kMostKeys> endValues(std::index_sequence<Index...>) {
    return {endValue<Index>...};
}

void freeKeys() noexcept {
    for (Key& key : keys) {
        if (const DWORD slot = key.slot.exchange(FLS_OUT_OF_INDEXES); slot != FLS_OUT_OF_INDEXES) {
            FlsFree(slot);
        }
    }
}

using ThreadValues = std::array<void*, TLS_MINIMUM_AVAILABLE + 1024>;

ThreadValues valuesOfThisThread() noexcept {
    ThreadValues values;
    for (DWORD slot = 0; slot < values.size(); ++slot) {
        values[slot] = TlsGetValue(slot);
    }
    return values;
}

// The thread library's record of this thread, with its handles, and the slot for such records, which every loading
// takes anew. A process has 1,088 slots, and without one the library ends the process. Nobody tells which slot it is,
// but it is the one that loses its value when the library is told that this thread ends.
void freeRecordAndSlot() noexcept {
    static_cast<void>(pthread_self()); // has a record from here on
    const ThreadValues before = valuesOfThisThread();
    __xl_f(moduleHandle(), DLL_THREAD_DETACH, nullptr);
    for (DWORD slot = 0; slot < before.size(); ++slot) {
        if (before[slot] != nullptr && TlsGetValue(slot) == nullptr) {
            TlsFree(slot);
        }
    }
}

// The first static object to be made, and so the last to go: those before it may still raise, which needs the keys.
struct LastToGo {
    ~LastToGo() {
        if (unloading) {
            freeKeys();
            freeRecordAndSlot();
            __gnu_cxx::__freeres();
        }
    }
    bool unloading = false;
};

constexpr int kFirst = 101;
[[gnu::init_priority(kFirst)]] LastToGo lastToGo;

} // namespace

void letRunTimeLibrariesGo() noexcept {
    lastToGo.unloading = true;
}

} // namespace windows::com

// NOLINTBEGIN(readability-identifier-naming): the linker's names for what stands in the place of the library's
// functions
extern "C" {

int __wrap_pthread_key_create(pthread_key_t* key, void (*destroy)(void*)) {
    using namespace windows::com;
    const std::size_t index = keysMade++;
    if (index >= kMostKeys) {
        return EAGAIN;
    }
    keys[index].destroy = destroy;
    static constexpr auto kEndValues = endValues(std::make_index_sequence<kMostKeys>());
    const DWORD slot = FlsAlloc(kEndValues[index]);
    keys[index].slot = slot;
    *key = slot;
    return slot == FLS_OUT_OF_INDEXES ? EAGAIN : 0;
}

int __wrap_pthread_key_delete(pthread_key_t key) {
    for (windows::com::Key& known : windows::com::keys) {
        if (DWORD slot = key; known.slot.compare_exchange_strong(slot, FLS_OUT_OF_INDEXES)) {
            return FlsFree(key) != FALSE ? 0 : EINVAL;
        }
    }
    return EINVAL;
}

void* __wrap_pthread_getspecific(pthread_key_t key) {
    const DWORD error = GetLastError(); // a look-up of ours, in the middle of others' code, must not change it
    void* const value = FlsGetValue(key);
    SetLastError(error);
    return value;
}

int __wrap_pthread_setspecific(pthread_key_t key, const void* value) {
    return FlsSetValue(key, const_cast<void*>(value)) != FALSE ? 0 : EINVAL;
}

} // extern "C"
// NOLINTEND(readability-identifier-naming)
