// A form: a window's worth of controls with its life cycle and keys, as a plain object.
#pragma once

#include "ui/container.h"
#include "ui/keys.h"

#include <string>
#include <string_view>

namespace ui {

class Desktop;

class Form : public Container {
public:
    // `name` must outlive the form (a literal); it names its template and its window class.
    Form(Desktop& desktop, std::string_view name) : m_desktop(desktop), m_name(name) {}

    [[nodiscard]] std::string_view name() const noexcept { return m_name; }
    [[nodiscard]] const std::string& caption() const noexcept { return m_caption; }
    void setCaption(std::string_view caption);
    // The icon in its caption, from the next showing on; the platform's own without a path, or where that is no icon.
    [[nodiscard]] const std::string& iconFile() const noexcept { return m_iconFile; }
    void setIconFile(std::string_view path) { m_iconFile = path; }

    // Runs Form_Load, once until the next unload.
    void load();
    // Loads if need be, activates, shows, and returns when hidden or unloaded. Raises 400 when it is shown already.
    void showModal();
    // Ends showModal; the form stays loaded.
    void hide();
    // Ends showModal; the next load runs Form_Load again. Public fields and control states live on.
    void unload();

    [[nodiscard]] bool loaded() const noexcept { return m_loaded; }
    [[nodiscard]] bool shown() const noexcept { return m_shown; }

    // The control that has the focus; null when none had it yet.
    [[nodiscard]] Control* focused() const noexcept { return m_focused; }
    void setFocus(Control& control);

    // A person's key, before the focused control sees it: the form's first, then its user controls', then the focused
    // text box's. Returns what is left of it: 0 when one of them took it.
    char16_t userKey(char16_t key);
    // A person's click on the window's close box.
    void userClose() { Form_CloseBox(); }
    // A person moved the focus. A text box that does not let go of it gets it back.
    void userFocus(Control& control);

protected:
    virtual void Form_Load() {}
    // Once per showing, before the form appears.
    virtual void Form_Activate() {}
    // Setting the key to 0 swallows it.
    virtual void Form_KeyPress(char16_t& key) { static_cast<void>(key); }
    virtual void Form_CloseBox() { unload(); }

    [[nodiscard]] Desktop& desktop() const noexcept { return m_desktop; }

private:
    Desktop& m_desktop;
    std::string_view m_name;
    std::string m_caption;
    std::string m_iconFile;
    Control* m_focused = nullptr;
    bool m_loaded = false;
    bool m_shown = false;
};

} // namespace ui
