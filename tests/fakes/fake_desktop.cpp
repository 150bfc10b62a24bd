#include "fakes/fake_desktop.h"

#include "base/runtime_error.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace fakes {

FakeDesktop::~FakeDesktop() {
    for (const auto& [form, actions] : m_showings) {
        EXPECT_TRUE(actions.empty()) << "never shown: " << form;
    }
    EXPECT_TRUE(m_boxes.empty()) << "never asked: " << m_boxes.front().text;
    EXPECT_TRUE(m_prompts.empty()) << "never prompted: " << m_prompts.front().prompt;
    EXPECT_TRUE(m_picks.empty()) << "never picked: " << m_picks.front();
    EXPECT_TRUE(m_atDoEvents.empty()) << "doEvents was called only " << m_doEvents << " times";
}

void FakeDesktop::whenShown(std::string_view form, std::function<void()> action) {
    m_showings[std::string(form)].push_back(std::move(action));
}

void FakeDesktop::whenAsked(std::string_view text, ui::Answer answer, ui::Icon icon) {
    m_boxes.push_back({std::string(text), answer, icon});
}

void FakeDesktop::whenPrompted(std::string_view prompt, std::string_view answer) {
    m_prompts.push_back({std::string(prompt), std::string(answer)});
}

void FakeDesktop::whenPicking(std::string_view path) {
    m_picks.emplace_back(path);
}

void FakeDesktop::atDoEvents(int n, std::function<void()> action) {
    m_atDoEvents.emplace(m_doEvents + n, std::move(action));
}

void FakeDesktop::showModal(ui::Form& form) {
    if (std::find(m_shown.begin(), m_shown.end(), &form) != m_shown.end()) {
        throw base::RuntimeError(base::error::kFormAlreadyDisplayed);
    }
    const auto script = m_showings.find(form.name());
    if (script == m_showings.end() || script->second.empty()) {
        ADD_FAILURE() << "no script expects the form " << form.name();
        return;
    }
    const std::function<void()> action = std::move(script->second.front());
    script->second.pop_front();
    m_shown.push_back(&form);
    try {
        action();
    } catch (...) {
        m_shown.pop_back();
        throw;
    }
    m_shown.pop_back();
    EXPECT_FALSE(form.shown()) << form.name() << " was left open";
}

ui::Answer FakeDesktop::messageBox(std::string_view text, ui::Buttons /*buttons*/, ui::Icon icon,
                                   std::string_view title) {
    m_lastTitle = title;
    if (m_boxes.empty()) {
        ADD_FAILURE() << "no script expects the box: " << text;
        return ui::Answer::Cancel;
    }
    const Box expected = std::move(m_boxes.front());
    m_boxes.pop_front();
    EXPECT_EQ(expected.text, text);
    EXPECT_EQ(expected.icon, icon) << text;
    return expected.answer;
}

std::string FakeDesktop::inputBox(std::string_view prompt, std::string_view title, std::string_view /*initial*/) {
    m_lastTitle = title;
    if (m_prompts.empty()) {
        ADD_FAILURE() << "no script expects the prompt: " << prompt;
        return {};
    }
    const Prompt expected = std::move(m_prompts.front());
    m_prompts.pop_front();
    EXPECT_EQ(expected.prompt, prompt);
    return expected.answer;
}

std::string FakeDesktop::openFile(const ui::OpenFileRequest& request) {
    m_lastPick = request;
    if (m_picks.empty()) {
        ADD_FAILURE() << "no script expects a file dialog in " << request.initialFolder;
        return {};
    }
    std::string path = std::move(m_picks.front());
    m_picks.pop_front();
    return path;
}

void FakeDesktop::doEvents() {
    ++m_doEvents;
    const auto [first, last] = m_atDoEvents.equal_range(m_doEvents);
    std::vector<std::function<void()>> actions;
    for (auto i = first; i != last; ++i) {
        actions.push_back(i->second);
    }
    m_atDoEvents.erase(first, last);
    for (const auto& action : actions) {
        action();
    }
}

} // namespace fakes
