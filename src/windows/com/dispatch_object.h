// A host's automation object, reached by member names.
#pragma once

#include "base/late_bound.h"

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

namespace windows::com {

// Used from the apartment that it was made in.
class DispatchObject final : public base::LateBoundObject {
public:
    // `dispatch` is not null.
    explicit DispatchObject(Microsoft::WRL::ComPtr<IDispatch> dispatch) : m_dispatch(std::move(dispatch)) {}

    [[nodiscard]] base::Variant get(std::string_view property) override;
    void put(std::string_view property, const base::Variant& value) override;
    base::Variant call(std::string_view method, const std::vector<base::Variant>& arguments) override;

    [[nodiscard]] const Microsoft::WRL::ComPtr<IDispatch>& dispatch() const noexcept { return m_dispatch; }

private:
    // Raises 438.
    [[nodiscard]] DISPID find(std::string_view member) const;

    Microsoft::WRL::ComPtr<IDispatch> m_dispatch;
};

// An automation object for the core, and the way back; null for Nothing. An object that did not come from a host raises
// 13 on the way back.
[[nodiscard]] base::ObjectRef toObjectRef(Microsoft::WRL::ComPtr<IDispatch> dispatch);
[[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> toDispatch(const base::ObjectRef& object);

} // namespace windows::com
