// Key names to virtual keys, and pressing them.
#include "drive/keyboard.h"

#include "drive/failure.h"

#include <algorithm>
#include <array>
#include <ranges>
#include <string>

namespace drive {
namespace {

struct Named {
    std::string_view name;
    std::uint8_t key;
};

constexpr auto kModifiers = std::to_array<Named>({{"Alt", VK_MENU}, {"Ctrl", VK_CONTROL}, {"Shift", VK_SHIFT}});

constexpr auto kKeys = std::to_array<Named>({
    {"Enter", VK_RETURN},
    {"Escape", VK_ESCAPE},
    {"Tab", VK_TAB},
    {"Space", VK_SPACE},
    {"Delete", VK_DELETE},
    {"Home", VK_HOME},
    {"End", VK_END},
    {"Up", VK_UP},
    {"Down", VK_DOWN},
    {"Left", VK_LEFT},
    {"Right", VK_RIGHT},
    {"PageUp", VK_PRIOR},
    {"PageDown", VK_NEXT},
    {"Backspace", VK_BACK},
    {"F1", VK_F1},
    {"F4", VK_F4},
    {"F5", VK_F5},
    {"F10", VK_F10},
});

template <class Table>
std::uint8_t lookUp(const Table& table, std::string_view name) {
    const auto* const found = std::ranges::find(table, name, &Named::name);
    return found == table.end() ? std::uint8_t{0} : found->key;
}

bool isExtended(std::uint8_t key) {
    return key >= VK_PRIOR && key <= VK_DELETE; // the block of arrows, Home, End, Insert and Delete
}

void send(std::uint8_t key, DWORD direction) {
    const DWORD flags = direction | (isExtended(key) ? KEYEVENTF_EXTENDEDKEY : 0U);
    keybd_event(key, static_cast<BYTE>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC)), flags, 0);
}

} // namespace

Stroke parseStroke(std::string_view name) {
    Stroke stroke;
    std::string_view rest = name;
    for (std::size_t plus = rest.find('+'); plus != std::string_view::npos && rest.size() > 1; plus = rest.find('+')) {
        const std::uint8_t modifier = lookUp(kModifiers, rest.substr(0, plus));
        if (modifier == 0) {
            throw Failure("'" + std::string(name) + "' is no key");
        }
        stroke.modifiers.push_back(modifier);
        rest.remove_prefix(plus + 1);
    }
    stroke.key = lookUp(kKeys, rest);
    if (rest.size() == 1 && ((rest[0] >= 'A' && rest[0] <= 'Z') || (rest[0] >= '0' && rest[0] <= '9'))) {
        stroke.key = static_cast<std::uint8_t>(rest[0]); // their codes are the letters and digits themselves
    }
    if (stroke.key == 0) {
        throw Failure("'" + std::string(name) + "' is no key");
    }
    return stroke;
}

void press(const Stroke& stroke) {
    for (const std::uint8_t modifier : stroke.modifiers) {
        send(modifier, 0);
    }
    send(stroke.key, 0);
    send(stroke.key, KEYEVENTF_KEYUP);
    for (const std::uint8_t modifier : std::views::reverse(stroke.modifiers)) {
        send(modifier, KEYEVENTF_KEYUP);
    }
}

} // namespace drive
