#include "host/modStyles.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace host {
namespace {

struct NamedColor {
    std::string_view name;
    ui::Color color;
};

constexpr std::array kColors{
    NamedColor{"BLACK", 0x000000},       NamedColor{"RED", 0x0000FF},
    NamedColor{"GREEN", 0x00FF00},       NamedColor{"YELLOW", 0x00FFFF},
    NamedColor{"BLUE", 0xFF0000},        NamedColor{"MAGENTA", 0xFF00FF},
    NamedColor{"CYAN", 0xFFFF00},        NamedColor{"WHITE", 0xFFFFFF},
    NamedColor{"LIGHTORANGE", 0x80C0FF}, NamedColor{"LIGHTBROWN", 0xA8E0EC},
    NamedColor{"LIGHTYELLOW", 0xC0FFFF}, NamedColor{"LIGHTGREEN", 0xC0FFC0},
    NamedColor{"LIGHTBLUE", 0xFFC0C0},   NamedColor{"LIGHTPURPLE", 0xFFC0FF},
    NamedColor{"LIGHTRED", 0xC0C0FF},    NamedColor{"LIGHTGREY", ui::color::kLight3d}, // follows the desktop's colours
};

} // namespace

std::int32_t colorFromName(const base::Variant& name, std::int32_t otherwise) {
    if (std::holds_alternative<base::Null>(name)) {
        return otherwise;
    }
    const std::string wanted = base::upperCase(base::toText(name));
    const auto* const found =
        std::find_if(kColors.begin(), kColors.end(), [&](const NamedColor& color) { return color.name == wanted; });
    return found == kColors.end() ? otherwise : static_cast<std::int32_t>(found->color);
}

} // namespace host
