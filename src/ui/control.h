// What all controls share: a name, an owner, being enabled and visible, and telling the presenter what changed.
//
// A form is a plain object whose members are its controls. The state lives here; a window, if there is one, is kept in
// step by a presenter that observes the changes. No window is needed to run a form.
#pragma once

#include "ui/color.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ui {

class Container;

// Which part of a control's state changed; the presenter brings only that part of the window up to date.
enum class Aspect : std::uint8_t { Text, Enabled, Visible, Value, Items, Selection, Picture, Colors };

// The edges of its container that a control keeps its distance to when the form is resized. Left and top only: the
// control stays; left and right: it stretches; right only: it moves along.
struct Anchors {
    bool left = true;
    bool top = true;
    bool right = false;
    bool bottom = false;
};

class Control {
public:
    // `name` must outlive the control (a literal); it is the control's name in code, templates and test scripts.
    Control(Container& owner, std::string_view name);
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control() = default;

    [[nodiscard]] std::string_view name() const noexcept { return m_name; }
    [[nodiscard]] Container& owner() const noexcept { return m_owner; }

    [[nodiscard]] bool enabled() const noexcept { return m_enabled; }
    void setEnabled(bool enabled);
    [[nodiscard]] bool visible() const noexcept { return m_visible; }
    void setVisible(bool visible);

    // Caption or text; "&" marks the mnemonic letter in controls that have one.
    [[nodiscard]] const std::string& text() const noexcept { return m_text; }

    // None: the platform's own.
    [[nodiscard]] std::optional<Color> backColor() const noexcept { return m_backColor; }
    void setBackColor(Color color);
    [[nodiscard]] std::optional<Color> foreColor() const noexcept { return m_foreColor; } // the text's; likewise
    void setForeColor(std::optional<Color> color);

    Anchors anchors;

protected:
    // Stores the text; true when it differs from what was there.
    bool storeText(std::string_view text);
    void appendText(std::string_view text);
    void changed(Aspect aspect);
    // A person can act only on what is shown and enabled.
    [[nodiscard]] bool usable() const noexcept { return m_enabled && m_visible; }

private:
    Container& m_owner;
    std::string_view m_name;
    std::string m_text;
    std::optional<Color> m_backColor;
    std::optional<Color> m_foreColor;
    bool m_enabled = true;
    bool m_visible = true;
};

} // namespace ui
