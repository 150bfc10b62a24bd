// How long a window's thread leaves questions unanswered while it works: what a person feels as a hanging program.
#pragma once

#include <windows.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace drive {

// Asks the window again and again, from a thread of its own, until it goes.
class Silence {
public:
    explicit Silence(HWND window) : m_thread([this, window](const std::stop_token& stop) { ask(window, stop); }) {}
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;
    ~Silence() = default;

    // Of all questions answered so far.
    [[nodiscard]] std::chrono::milliseconds longest() const { return std::chrono::milliseconds(m_longest.load()); }

private:
    void ask(HWND window, const std::stop_token& stop);

    std::atomic<std::int64_t> m_longest = 0; // milliseconds
    std::jthread m_thread;
};

} // namespace drive
