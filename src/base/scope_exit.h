// Something to be done when a scope ends, however it ends.
#pragma once

#include <utility>

namespace base {

template <typename Action>
class [[nodiscard]] ScopeExit {
public:
    // `action` must not throw.
    explicit ScopeExit(Action action) : m_action(std::move(action)) {}
    ScopeExit(const ScopeExit&) = delete;
    ScopeExit& operator=(const ScopeExit&) = delete;
    ~ScopeExit() { m_action(); }

private:
    Action m_action;
};

} // namespace base
