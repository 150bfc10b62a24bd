// Another thread of a host, which uses the component at once and ends when its host lets it.
#pragma once

#include "windows/base/handles.h"

#include <functional>
#include <utility>

namespace com_test {

class HostThread {
public:
    // Returns when `use` has.
    explicit HostThread(std::function<void()> use)
        : m_use(std::move(use)), m_thread(CreateThread(nullptr, 0, run, this, 0, nullptr)) {
        WaitForSingleObject(m_used.get(), INFINITE);
    }
    HostThread(const HostThread&) = delete;
    HostThread& operator=(const HostThread&) = delete;
    ~HostThread() {
        SetEvent(m_mayEnd.get());
        WaitForSingleObject(m_thread.get(), INFINITE);
    }

private:
    static DWORD WINAPI run(void* self) {
        const auto& thread = *static_cast<HostThread*>(self);
        thread.m_use();
        SetEvent(thread.m_used.get());
        WaitForSingleObject(thread.m_mayEnd.get(), INFINITE);
        return 0;
    }

    std::function<void()> m_use;
    windows::UniqueHandle m_used{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    windows::UniqueHandle m_mayEnd{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    windows::UniqueHandle m_thread; // last: it uses the others
};

} // namespace com_test
