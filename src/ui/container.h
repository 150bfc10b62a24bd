// A holder of controls: a form, or later a user control that sits on one.
#pragma once

#include "ui/control.h"

#include <string_view>
#include <vector>

namespace ui {

// Implemented by a presenter while it shows the container. It must not throw, and must not call back into the form.
class ContainerObserver {
public:
    ContainerObserver() = default;
    ContainerObserver(const ContainerObserver&) = delete;
    ContainerObserver& operator=(const ContainerObserver&) = delete;
    virtual ~ContainerObserver() = default;

    virtual void controlChanged(Control& control, Aspect aspect) noexcept = 0;
    virtual void captionChanged() noexcept = 0;
    // The form hid or unloaded itself: its window disappears at once, its modal loop ends when the handler returns.
    virtual void hidden() noexcept = 0;
    // The logic moved the focus to this control.
    virtual void focusMoved(Control& control) noexcept = 0;
};

class Container {
public:
    Container() = default;
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;
    virtual ~Container() = default;

    // In the order of their declaration.
    [[nodiscard]] const std::vector<Control*>& controls() const noexcept { return m_controls; }
    // Null when there is none of that exact name.
    [[nodiscard]] Control* find(std::string_view name) const noexcept;

    // One at a time; null detaches. Not owned.
    void observe(ContainerObserver* observer) noexcept { m_observer = observer; }

protected:
    [[nodiscard]] ContainerObserver* observer() const noexcept { return m_observer; }

private:
    friend class Control;
    void add(Control& control) { m_controls.push_back(&control); }
    void controlChanged(Control& control, Aspect aspect) {
        if (m_observer != nullptr) {
            m_observer->controlChanged(control, aspect);
        }
    }

    std::vector<Control*> m_controls;
    ContainerObserver* m_observer = nullptr;
};

} // namespace ui
