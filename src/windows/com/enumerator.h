// Enumerators over fixed lists: nodes for scripts, connections and connection points for containers.
#pragma once

#include "windows/com/adopt.h"
#include "windows/com/com_object.h"
#include "windows/com/error_boundary.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <utility>

namespace windows::com {

// `Interface` is one of the system's IEnum... interfaces, `Item` what its Next hands out.
template <typename Interface, typename Item>
class Enumerator final : public ComObject<Interface> {
public:
    // Puts the item of this number where a caller wants it; the memory there holds nothing yet.
    using Fill = std::function<void(std::size_t index, Item& item)>;

    Enumerator(std::size_t count, Fill fill) : m_count(count), m_fill(std::move(fill)) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG wanted, Item* items, ULONG* fetched) noexcept override {
        if (items == nullptr || (fetched == nullptr && wanted != 1)) {
            return E_POINTER;
        }
        ULONG given = 0;
        const HRESULT outcome = guarded(__uuidof(Interface), [&] {
            for (; given < wanted && m_next < m_count; ++given, ++m_next) {
                m_fill(m_next, items[given]);
            }
        });
        if (fetched != nullptr) {
            *fetched = given;
        }
        if (FAILED(outcome)) {
            return outcome;
        }
        return given == wanted ? S_OK : S_FALSE;
    }

    HRESULT STDMETHODCALLTYPE Skip(ULONG count) noexcept override {
        const std::size_t left = m_count - m_next;
        m_next += std::min<std::size_t>(count, left);
        return count <= left ? S_OK : S_FALSE;
    }

    HRESULT STDMETHODCALLTYPE Reset() noexcept override {
        m_next = 0;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE Clone(Interface** copy) noexcept override {
        return guarded(__uuidof(Interface), [&] {
            Interface*& result = target(copy);
            auto clone = adopt(new Enumerator(m_count, m_fill));
            clone->m_next = m_next;
            result = clone.Detach();
        });
    }

private:
    std::size_t m_count;
    std::size_t m_next = 0;
    Fill m_fill;
};

} // namespace windows::com
