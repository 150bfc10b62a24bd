// The controls a form is made of. Setters are for the form's logic; what only a person can do is user...(), which the
// logic never calls. A person cannot act on a control that is disabled or hidden: such a call does nothing.
#pragma once

#include "base/picture.h"
#include "ui/control.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ui {

using Handler = std::function<void()>;

// Text that explains; wraps at the control's width.
class Label : public Control {
public:
    using Control::Control;
    // The form opens as high as the whole text needs, within the screen; for a label anchored to top and bottom.
    bool growsForm = false;

    void setText(std::string_view text) { storeText(text); }
};

// A titled box around controls that belong together.
class Frame : public Control {
public:
    using Control::Control;
    void setText(std::string_view text) { storeText(text); }
};

class Button : public Control {
public:
    using Control::Control;
    Handler onClick;

    void setText(std::string_view text) { storeText(text); }
    void userClick();
};

// Assigning a new value raises onClick, as the platform does.
class CheckBox : public Control {
public:
    using Control::Control;
    Handler onClick;

    void setText(std::string_view text) { storeText(text); }
    [[nodiscard]] bool checked() const noexcept { return m_checked; }
    void setChecked(bool checked);
    void userClick();

private:
    bool m_checked = false;
};

// One of several choices: choosing it takes the choice from the others of its container. Only a person's click raises
// onClick, also on the one that is chosen already; assigning is silent.
class OptionButton : public Control {
public:
    using Control::Control;
    Handler onClick;

    void setText(std::string_view text) { storeText(text); }
    [[nodiscard]] bool chosen() const noexcept { return m_chosen; }
    void choose();
    void userClick();

private:
    void setChosen(bool chosen);

    bool m_chosen = false;
};

// A list of lines in the order they were added, duplicates included; at most one is selected.
class ListBox : public Control {
public:
    using Control::Control;
    Handler onClick;       // the selection changed, by a person or by setSelected
    Handler onDoubleClick; // by a person, on the selected line

    [[nodiscard]] const std::vector<std::string>& items() const noexcept { return m_items; }
    // Only grows until the next clear(): a presenter that has shown n lines of this generation adds the rest.
    [[nodiscard]] std::uint64_t generation() const noexcept { return m_generation; }
    void add(std::string_view item);
    void clear(); // also clears the selection, silently

    [[nodiscard]] std::optional<std::size_t> selected() const noexcept { return m_selected; }
    // Empty when nothing is selected.
    [[nodiscard]] std::string selectedText() const;
    // An index past the end selects nothing.
    void setSelected(std::optional<std::size_t> index);
    void userSelect(std::size_t index);
    void userDoubleClick(std::size_t index);

private:
    std::vector<std::string> m_items;
    std::uint64_t m_generation = 0;
    std::optional<std::size_t> m_selected;
};

// A field for one or more lines of text.
class TextBox : public Control {
public:
    using Control::Control;
    Handler onChange; // the text changed, by a person, by setText or by append
    // A person can enter only 0 to 9: every other key but Backspace is discarded, and so is what else a paste brings.
    bool digitsOnly = false;
    // A person moves the focus to another control; false keeps it here. Not asked when the form closes.
    std::function<bool(const Control& gaining)> onValidate;

    void setText(std::string_view text);
    // At the end; costs what the addition does, not what is there already.
    void append(std::string_view text);
    // Only append() leaves it as it is: a presenter that has shown n bytes of this generation adds the rest.
    [[nodiscard]] std::uint64_t generation() const noexcept { return m_generation; }

    // A key that reaches the field; false when it discards it.
    [[nodiscard]] bool userKey(char16_t key) const noexcept;
    void userText(std::string_view text);

private:
    std::uint64_t m_generation = 0;
};

// One line chosen from a drop-down list. Choosing another raises onChange, by a person or by setSelected.
class ComboBox : public Control {
public:
    using Control::Control;
    Handler onChange;

    [[nodiscard]] const std::vector<std::string>& items() const noexcept { return m_items; }
    void setItems(std::vector<std::string> items); // selects nothing, silently
    [[nodiscard]] std::optional<std::size_t> selected() const noexcept { return m_selected; }
    // Empty when nothing is selected.
    [[nodiscard]] std::string selectedText() const;
    // An index past the end selects nothing.
    void setSelected(std::optional<std::size_t> index);
    void userSelect(std::size_t index);

private:
    std::vector<std::string> m_items;
    std::optional<std::size_t> m_selected;
};

// How far a run of known length has come.
class ProgressBar : public Control {
public:
    using Control::Control;

    // `total` 0 shows an empty bar.
    void setProgress(std::size_t done, std::size_t total);
    [[nodiscard]] std::size_t done() const noexcept { return m_done; }
    [[nodiscard]] std::size_t total() const noexcept { return m_total; }

private:
    std::size_t m_done = 0;
    std::size_t m_total = 0;
};

// A bar in a frame, drawn as two shapes: how wide the inner one is says how far something has come.
class FramedBar : public Control {
public:
    // Twips, a twentieth of a point: the unit in which hosts of this control count.
    static constexpr std::int32_t kFrameWidth = 6000;

    using Control::Control;

    // Kept between 0 and the frame's width. The frame's back colour is the control's.
    void setBarWidth(std::int64_t twips);
    [[nodiscard]] std::int32_t barWidth() const noexcept { return m_barWidth; }

private:
    std::int32_t m_barWidth = 0;
};

// Shows a picture shrunk to its own size, or its text as a quiet placeholder.
class PictureBox : public Control {
public:
    using Control::Control;

    void setText(std::string_view text) { storeText(text); }
    // Null shows the placeholder text.
    [[nodiscard]] const std::shared_ptr<const base::Picture>& picture() const noexcept { return m_picture; }
    void setPicture(std::shared_ptr<const base::Picture> picture);

private:
    std::shared_ptr<const base::Picture> m_picture;
};

} // namespace ui
