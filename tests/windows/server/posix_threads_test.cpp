// Whether the compiler's libraries can count on the thread functions that we give them, from several threads at once.
#include "windows/com/host_thread.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <array>
#include <chrono>
#include <ctime>
#include <functional>
#include <stdexcept>

namespace {

using com_test::HostThread;

using Work = std::function<void()>;

DWORD WINAPI doWork(void* work) {
    (*static_cast<const Work*>(work))();
    return 0;
}

void onFourThreads(Work work) {
    std::array<windows::UniqueHandle, 4> threads;
    for (windows::UniqueHandle& thread : threads) {
        thread.reset(CreateThread(nullptr, 0, doWork, &work, 0, nullptr));
    }
    for (const windows::UniqueHandle& thread : threads) {
        WaitForSingleObject(thread.get(), INFINITE);
    }
}

TEST(PosixThreads, OneAtATimeHasAMutexHoweverItBegan) {
    pthread_mutex_t begun = 77;
    ASSERT_EQ(pthread_mutex_init(&begun, nullptr), 0);
    for (pthread_mutex_t mutex : {PTHREAD_MUTEX_INITIALIZER, PTHREAD_RECURSIVE_MUTEX_INITIALIZER, begun}) {
        pthread_cond_t changed = PTHREAD_COND_INITIALIZER;
        int turns = 0; // plain: what the mutex does not guard gets lost
        int done = 0;
        onFourThreads([&] {
            for (int i = 0; i < 5'000; ++i) {
                pthread_mutex_lock(&mutex);
                ++turns;
                pthread_mutex_unlock(&mutex);
            }
            pthread_mutex_lock(&mutex);
            ++done;
            pthread_cond_broadcast(&changed);
            while (done < 4) {
                pthread_cond_wait(&changed, &mutex);
            }
            pthread_mutex_unlock(&mutex);
        });
        EXPECT_EQ(turns, 20'000);
    }
}

TEST(PosixThreads, OnceIsDoneByTheNextOneAfterAnErrorAndThenByNobody) {
    static pthread_once_t once;
    static int runs;
    once = PTHREAD_ONCE_INIT;
    runs = 0;
    int failures = 0; // told by the one whose run failed
    onFourThreads([&] {
        try {
            pthread_once(&once, [] {
                if (++runs == 1) {
                    throw std::runtime_error("the first one");
                }
            });
        } catch (const std::runtime_error&) {
            ++failures;
        }
    });
    EXPECT_EQ(failures, 1);
    EXPECT_EQ(runs, 2);
}

TEST(PosixThreads, ValuesEndWithTheirThreadOrWithTheirKey) {
    static int ended;
    ended = 0;
    pthread_key_t key = 0;
    ASSERT_EQ(pthread_key_create(&key, [](void*) { ++ended; }), 0);
    int value = 0;
    const auto use = [&] {
        EXPECT_EQ(pthread_getspecific(key), nullptr);
        EXPECT_EQ(pthread_setspecific(key, &value), 0);
        SetLastError(4711);
        EXPECT_EQ(pthread_getspecific(key), &value);
        EXPECT_EQ(GetLastError(), 4711U);
    };
    { const HostThread ends(use); }
    EXPECT_EQ(ended, 1);
    const HostThread lives(use);
    EXPECT_EQ(pthread_key_delete(key), 0);
    EXPECT_EQ(ended, 2);
    EXPECT_EQ(pthread_getspecific(key), nullptr);
    EXPECT_NE(pthread_setspecific(key, &value), 0);
}

TEST(PosixThreads, ClocksTellTheSystemsTime) {
    using namespace std::chrono;
    const auto ticks = [] {
        LARGE_INTEGER count;
        LARGE_INTEGER frequency;
        QueryPerformanceCounter(&count);
        QueryPerformanceFrequency(&frequency);
        return static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
    };
    const double before = ticks();
    const double steady = duration<double>(steady_clock::now().time_since_epoch()).count();
    EXPECT_LE(before - 1e-6, steady);
    EXPECT_LE(steady, ticks() + 1e-6);
    const std::time_t second = std::time(nullptr);
    EXPECT_LE(system_clock::from_time_t(second), system_clock::now());
    const auto now = system_clock::now();
    EXPECT_LT(now, system_clock::from_time_t(std::time(nullptr) + 1));
}

} // namespace
