#include "windows/embedding/ambient_properties.h"

#include "windows/com/variant_conversion.h"

#include <olectl.h>
#include <wrl/client.h>

namespace windows::com {
namespace {

std::optional<COLORREF> colorOf(IDispatch& container, DISPID property) {
    DISPPARAMS none{};
    ScopedVariant value;
    COLORREF color = 0;
    const bool told = SUCCEEDED(container.Invoke(property, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                                 &value.get(), nullptr, nullptr)) &&
                      SUCCEEDED(VariantChangeType(&value.get(), &value.get(), 0, VT_I4)) &&
                      SUCCEEDED(OleTranslateColor(static_cast<OLE_COLOR>(V_I4(&value.get())), nullptr, &color));
    return told ? std::optional(color) : std::nullopt;
}

} // namespace

ControlWindow::Colors ambientColors(IOleClientSite& client) {
    Microsoft::WRL::ComPtr<IDispatch> container;
    if (FAILED(client.QueryInterface(IID_PPV_ARGS(&container)))) {
        return {};
    }
    return {colorOf(*container.Get(), DISPID_AMBIENT_BACKCOLOR), colorOf(*container.Get(), DISPID_AMBIENT_FORECOLOR)};
}

} // namespace windows::com
