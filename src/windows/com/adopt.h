// Taking over a new object's first reference.
#pragma once

#include <wrl/client.h>

namespace windows::com {

// Not ComPtr::Attach: mingw's adds a reference of its own, so the object would never die.
template <typename T>
[[nodiscard]] Microsoft::WRL::ComPtr<T> adopt(T* created) noexcept {
    Microsoft::WRL::ComPtr<T> owner;
    *owner.GetAddressOf() = created;
    return owner;
}

} // namespace windows::com
