// The border that no exception crosses: the body of every automation method runs inside guarded().
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <utility>

namespace windows::com {

// The HRESULT of the exception being handled, after handing its source and description to the thread's error object in
// the name of interface `iid`. A run-time error 1..65535 leaves as 0x800A0000 + number, because a bare positive number
// would mean success; a negative one is an HRESULT already. Out of memory leaves as error 7, anything else as 51.
[[nodiscard]] HRESULT reportCurrentException(REFIID iid) noexcept;

// Runs the body of a method of interface `iid`; S_OK when it returns.
template <typename Body>
[[nodiscard]] HRESULT guarded(REFIID iid, Body&& body) noexcept {
    try {
        std::forward<Body>(body)();
        return S_OK;
    } catch (...) {
        return reportCurrentException(iid);
    }
}

// Raises E_POINTER.
[[noreturn]] void failNullPointer();

// What a caller's result pointer points at, cleared first. A null pointer raises E_POINTER.
template <typename T>
[[nodiscard]] T& target(T* pointer) {
    if (pointer == nullptr) {
        failNullPointer();
    }
    *pointer = T{};
    return *pointer;
}

} // namespace windows::com
