// The one table from errno to the component's run-time error numbers, and the owner of a file descriptor.
#pragma once

#include <utility>

#include <unistd.h>

namespace adapters {

// Raises the base::RuntimeError for the current errno: 53 not there, 76 folder not there, 70 write-protected, 61 disk
// full, 7 out of memory, 75 anything else.
[[noreturn]] void raiseErrno();

class UniqueFd {
public:
    explicit UniqueFd(int fd) noexcept : m_fd(fd) {}
    UniqueFd(UniqueFd&& other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}
    UniqueFd(const UniqueFd&) = delete;
    UniqueFd& operator=(const UniqueFd&) = delete;
    ~UniqueFd() { reset(); }

    [[nodiscard]] int get() const noexcept { return m_fd; }
    explicit operator bool() const noexcept { return m_fd >= 0; }
    void reset() noexcept {
        if (m_fd >= 0) {
            ::close(std::exchange(m_fd, -1));
        }
    }

private:
    int m_fd;
};

} // namespace adapters
