#include "ui/controls.h"

#include "ui/container.h"
#include "ui/keys.h"

#include <algorithm>
#include <utility>

namespace ui {
namespace {

// The handler is copied: it may replace itself or end the form that holds it.
void raise(const Handler& handler) {
    if (const Handler copy = handler) {
        copy();
    }
}

bool isDigit(char16_t unit) noexcept {
    return unit >= u'0' && unit <= u'9';
}

} // namespace

void Button::userClick() {
    if (usable()) {
        raise(onClick);
    }
}

void CheckBox::setChecked(bool checked) {
    if (m_checked != checked) {
        m_checked = checked;
        changed(Aspect::Value);
        raise(onClick);
    }
}

void CheckBox::userClick() {
    if (usable()) {
        setChecked(!m_checked);
    }
}

void OptionButton::choose() {
    for (Control* const control : owner().controls()) {
        if (auto* const option = dynamic_cast<OptionButton*>(control)) {
            option->setChosen(option == this);
        }
    }
}

void OptionButton::setChosen(bool chosen) {
    if (m_chosen != chosen) {
        m_chosen = chosen;
        changed(Aspect::Value);
    }
}

void OptionButton::userClick() {
    if (usable()) {
        choose();
        raise(onClick);
    }
}

void ListBox::add(std::string_view item) {
    m_items.emplace_back(item);
    changed(Aspect::Items);
}

void ListBox::clear() {
    m_items.clear();
    m_selected.reset();
    ++m_generation;
    changed(Aspect::Items);
    changed(Aspect::Selection);
}

std::string ListBox::selectedText() const {
    return m_selected ? m_items[*m_selected] : std::string();
}

void ListBox::setSelected(std::optional<std::size_t> index) {
    if (index && *index >= m_items.size()) {
        index.reset();
    }
    if (m_selected != index) {
        m_selected = index;
        changed(Aspect::Selection);
        raise(onClick);
    }
}

void ListBox::userSelect(std::size_t index) {
    if (usable() && index < m_items.size()) {
        setSelected(index);
    }
}

void TextBox::setText(std::string_view text) {
    if (storeText(text)) {
        ++m_generation;
        raise(onChange);
    }
}

void TextBox::append(std::string_view text) {
    if (!text.empty()) {
        appendText(text);
        raise(onChange);
    }
}

bool TextBox::userKey(char16_t key) const noexcept {
    return !digitsOnly || isDigit(key) || key == key::kBackspace;
}

// What the logic put there stays, whatever it holds, until a person changes it.
void TextBox::userText(std::string_view text) {
    if (!usable() || text == this->text()) {
        return;
    }
    std::string accepted(text);
    if (digitsOnly) {
        std::erase_if(accepted, [](char byte) { return !isDigit(static_cast<unsigned char>(byte)); });
    }
    setText(accepted);
}

void ListBox::userDoubleClick(std::size_t index) {
    if (usable() && index < m_items.size()) {
        setSelected(index);
        raise(onDoubleClick);
    }
}

void ComboBox::setItems(std::vector<std::string> items) {
    m_items = std::move(items);
    m_selected.reset();
    changed(Aspect::Items);
    changed(Aspect::Selection);
}

std::string ComboBox::selectedText() const {
    return m_selected ? m_items[*m_selected] : std::string();
}

void ComboBox::setSelected(std::optional<std::size_t> index) {
    if (index && *index >= m_items.size()) {
        index.reset();
    }
    if (m_selected != index) {
        m_selected = index;
        changed(Aspect::Selection);
        raise(onChange);
    }
}

void ComboBox::userSelect(std::size_t index) {
    if (usable() && index < m_items.size()) {
        setSelected(index);
    }
}

void ProgressBar::setProgress(std::size_t done, std::size_t total) {
    if (m_done != done || m_total != total) {
        m_done = done;
        m_total = total;
        changed(Aspect::Value);
    }
}

void FramedBar::setBarWidth(std::int64_t twips) {
    const auto width = static_cast<std::int32_t>(std::clamp<std::int64_t>(twips, 0, kFrameWidth));
    if (m_barWidth != width) {
        m_barWidth = width;
        changed(Aspect::Value);
    }
}

void PictureBox::setPicture(std::shared_ptr<const base::Picture> picture) {
    if (m_picture != picture) {
        m_picture = std::move(picture);
        changed(Aspect::Picture);
    }
}

} // namespace ui
