// Failures of a host's automation object as run-time errors.
#pragma once

#include <windows.h>

#include <oleauto.h>

namespace windows::com {

// Owns the exception that a late-bound call fills in.
class Exception {
public:
    Exception() = default;
    Exception(const Exception&) = delete;
    Exception& operator=(const Exception&) = delete;
    ~Exception();

    [[nodiscard]] EXCEPINFO* out() noexcept { return &m_info; }

    // Raises the error that a failed IDispatch::Invoke (`result`) stands for: the object's own number, source and
    // description when it gave them; 438 for a member that is not there; else the run-time error that comes nearest.
    [[noreturn]] void raise(HRESULT result);

private:
    [[noreturn]] void raiseOwn();

    EXCEPINFO m_info{};
};

} // namespace windows::com
