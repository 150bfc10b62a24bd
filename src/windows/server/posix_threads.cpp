// The POSIX thread functions that the compiler's run-time libraries and the XML library call. The compiler's own thread
// library would keep a slot for thread-local values, an exception handler, handles and records of threads for the rest
// of the process, so none of it may come in: the linker finds the names here first, and when a new use needs more of
// that library than stands here, it stops at names that are defined twice.
#include "windows/server/posix_threads.h"

#include <windows.h>

#include <pthread.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <utility>

namespace windows::com {
namespace {

// A mutex and a condition are one word, as the system's lock and condition variable are, which begin with 0. The static
// initialisers are other values, which neither of the two ever takes.
template <typename Native, typename Word>
Native* native(Word* word) noexcept {
    static_assert(sizeof(Native) == sizeof(Word) && alignof(Native) == alignof(Word));
    static_assert(PTHREAD_MUTEX_INITIALIZER == -1 && PTHREAD_ERRORCHECK_MUTEX_INITIALIZER == -2 &&
                  PTHREAD_RECURSIVE_MUTEX_INITIALIZER == -3 && PTHREAD_COND_INITIALIZER == -1);
    const std::atomic_ref<Word> value(*word);
    if (Word initial = value.load(std::memory_order_relaxed); initial < 0 && initial >= -3) {
        value.compare_exchange_strong(initial, 0);
    }
    return reinterpret_cast<Native*>(word);
}

// All that wait for others to do something once. It is rare and short.
constinit SRWLOCK onceLock = SRWLOCK_INIT;
constinit CONDITION_VARIABLE onceChanged = CONDITION_VARIABLE_INIT;

using OnceState = std::atomic_ref<pthread_once_t>;
constexpr pthread_once_t kNotDone = PTHREAD_ONCE_INIT;
constexpr pthread_once_t kRunning = 1;
constexpr pthread_once_t kDone = 2;

// Says whether the caller is the one to do it.
bool takeOnce(OnceState state) noexcept {
    AcquireSRWLockExclusive(&onceLock);
    while (state == kRunning) {
        SleepConditionVariableSRW(&onceChanged, &onceLock, INFINITE, 0);
    }
    const bool take = state == kNotDone;
    if (take) {
        state = kRunning;
    }
    ReleaseSRWLockExclusive(&onceLock);
    return take;
}

// Tells those who wait how it ended; after an exception the next one tries.
class OnceRun {
public:
    explicit OnceRun(OnceState state) noexcept : m_state(state) {}
    OnceRun(const OnceRun&) = delete;
    OnceRun& operator=(const OnceRun&) = delete;
    ~OnceRun() {
        AcquireSRWLockExclusive(&onceLock);
        m_state = m_result;
        ReleaseSRWLockExclusive(&onceLock);
        WakeAllConditionVariable(&onceChanged);
    }
    void succeeded() noexcept { m_result = kDone; }

private:
    OnceState m_state;
    pthread_once_t m_result = kNotDone;
};

// Keys of thread-local values are slots of the fiber-local storage: the system ends a value with its thread, or all of
// them with the slot.
using Destroy = void (*)(void*);
constexpr std::size_t kMostKeys = 8; // the run-time libraries and the XML library make three

struct Key {
    std::atomic<bool> taken = false;
    std::atomic<DWORD> slot = FLS_OUT_OF_INDEXES;
    std::atomic<Destroy> destroy = nullptr;
};

constinit std::array<Key, kMostKeys> keys;

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

DWORD slotOf(pthread_key_t key) noexcept {
    return key < kMostKeys ? keys[key].slot.load() : FLS_OUT_OF_INDEXES;
}

} // namespace

void freeThreadKeys() noexcept {
    for (pthread_key_t key = 0; key < kMostKeys; ++key) {
        pthread_key_delete(key);
    }
}

} // namespace windows::com

using namespace windows::com;

// NOLINTBEGIN(readability-identifier-naming): POSIX names
extern "C" {

int pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attributes) {
    *mutex = 0;
    return attributes == nullptr ? 0 : ENOTSUP;
}

int pthread_mutex_destroy(pthread_mutex_t*) {
    return 0;
}

// Not for a thread that has it already, whatever its initialiser says. The run-time library lets go of its one
// recursive mutex before it calls anybody, and the XML library counts for itself.
int pthread_mutex_lock(pthread_mutex_t* mutex) {
    AcquireSRWLockExclusive(native<SRWLOCK>(mutex));
    return 0;
}

int pthread_mutex_unlock(pthread_mutex_t* mutex) {
    ReleaseSRWLockExclusive(native<SRWLOCK>(mutex));
    return 0;
}

int pthread_cond_init(pthread_cond_t* condition, const pthread_condattr_t* attributes) {
    *condition = 0;
    return attributes == nullptr ? 0 : ENOTSUP;
}

int pthread_cond_destroy(pthread_cond_t*) {
    return 0;
}

int pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* mutex) {
    SleepConditionVariableSRW(native<CONDITION_VARIABLE>(condition), native<SRWLOCK>(mutex), INFINITE, 0);
    return 0;
}

int pthread_cond_signal(pthread_cond_t* condition) {
    WakeConditionVariable(native<CONDITION_VARIABLE>(condition));
    return 0;
}

int pthread_cond_broadcast(pthread_cond_t* condition) {
    WakeAllConditionVariable(native<CONDITION_VARIABLE>(condition));
    return 0;
}

int pthread_once(pthread_once_t* once, void (*function)()) {
    const OnceState state(*once);
    if (state != kDone && takeOnce(state)) {
        OnceRun run(state);
        function();
        run.succeeded();
    }
    return 0;
}

pthread_t pthread_self() {
    return GetCurrentThreadId();
}

int pthread_equal(pthread_t one, pthread_t other) {
    return one == other ? 1 : 0;
}

int pthread_key_create(pthread_key_t* key, void (*destroy)(void*)) {
    static constexpr auto kEndValues = endValues(std::make_index_sequence<kMostKeys>());
    for (pthread_key_t index = 0; index < kMostKeys; ++index) {
        if (keys[index].taken.exchange(true)) {
            continue;
        }
        keys[index].destroy = destroy;
        keys[index].slot = FlsAlloc(kEndValues[index]);
        if (slotOf(index) == FLS_OUT_OF_INDEXES) {
            keys[index].taken = false;
            return EAGAIN;
        }
        *key = index;
        return 0;
    }
    return EAGAIN;
}

// Ends the values too, of all threads: those who delete a key here are about to be unloaded.
int pthread_key_delete(pthread_key_t key) {
    const DWORD slot = key < kMostKeys ? keys[key].slot.exchange(FLS_OUT_OF_INDEXES) : FLS_OUT_OF_INDEXES;
    if (slot == FLS_OUT_OF_INDEXES) {
        return EINVAL;
    }
    FlsFree(slot);
    keys[key].taken = false;
    return 0;
}

void* pthread_getspecific(pthread_key_t key) {
    const DWORD slot = slotOf(key);
    if (slot == FLS_OUT_OF_INDEXES) {
        return nullptr;
    }
    const DWORD error = GetLastError(); // a look-up of ours, in the middle of others' code, must not change it
    void* const value = FlsGetValue(slot);
    SetLastError(error);
    return value;
}

int pthread_setspecific(pthread_key_t key, const void* value) {
    return FlsSetValue(slotOf(key), const_cast<void*>(value)) != FALSE ? 0 : EINVAL;
}

// Behind the standard library's clocks; the thread library's brings all of it along.
int clock_gettime(clockid_t clock, timespec* time) {
    constexpr std::int64_t kNanosecondsInASecond = 1'000'000'000;
    LARGE_INTEGER ticks;
    LARGE_INTEGER ticksInASecond;
    if (clock == CLOCK_MONOTONIC) {
        QueryPerformanceCounter(&ticks);
        QueryPerformanceFrequency(&ticksInASecond);
    } else if (clock == CLOCK_REALTIME) {
        constexpr std::int64_t kTicksBefore1970 = 116'444'736'000'000'000;
        FILETIME now;
        GetSystemTimeAsFileTime(&now);
        ticks = {{now.dwLowDateTime, static_cast<LONG>(now.dwHighDateTime)}};
        ticks.QuadPart -= kTicksBefore1970;
        ticksInASecond.QuadPart = 10'000'000;
    } else {
        errno = EINVAL;
        return -1;
    }
    time->tv_sec = static_cast<time_t>(ticks.QuadPart / ticksInASecond.QuadPart);
    time->tv_nsec =
        static_cast<long>(ticks.QuadPart % ticksInASecond.QuadPart * kNanosecondsInASecond / ticksInASecond.QuadPart);
    return 0;
}

} // extern "C"
// NOLINTEND(readability-identifier-naming)
