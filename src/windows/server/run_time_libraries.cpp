#include "windows/server/run_time_libraries.h"

#include "windows/server/posix_threads.h"

// Frees the memory that the C++ library has put aside to raise errors when there is no other; made for tools that look
// for leaks.
namespace __gnu_cxx {      // NOLINT(readability-identifier-naming): its name there
void __freeres() noexcept; // NOLINT(readability-identifier-naming): its name there
}

namespace windows::com {
namespace {

// The first static object to be made, and so the last to go: those before it may still raise, which needs both.
struct LastToGo {
    ~LastToGo() {
        if (unloading) {
            freeThreadKeys();
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
