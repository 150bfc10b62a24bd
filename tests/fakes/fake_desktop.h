// A scripted user: says what happens when a form or box appears. Whatever no script expects fails the test.
#pragma once

#include "ui/desktop.h"
#include "ui/form.h"

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace fakes {

class FakeDesktop : public ui::Desktop {
public:
    // Fails the test when something scripted never happened.
    ~FakeDesktop() override;

    // What the user does on the next showing of this form; showings are scripted in order. The form must be hidden
    // when the action returns.
    void whenShown(std::string_view form, std::function<void()> action);

    // The next box must have exactly this text and is answered so.
    void whenAsked(std::string_view text, ui::Answer answer = ui::Answer::Ok, ui::Icon icon = ui::Icon::None);
    // The next input box must have this prompt.
    void whenPrompted(std::string_view prompt, std::string_view answer);
    // The next file dialog yields this path ("" = cancelled).
    void whenPicking(std::string_view path);
    // Acts once, in the n-th doEvents from now (the first is 1).
    void atDoEvents(int n, std::function<void()> action);

    // The form shown last, for what a form's own code makes and shows; null without one.
    [[nodiscard]] ui::Form* shownForm() const { return m_shown.empty() ? nullptr : m_shown.back(); }

    // The request of the last file dialog.
    [[nodiscard]] const ui::OpenFileRequest& lastPick() const { return m_lastPick; }
    // The title of the last box or input box.
    [[nodiscard]] const std::string& lastTitle() const { return m_lastTitle; }

    void showModal(ui::Form& form) override;
    [[nodiscard]] bool showsForm() const noexcept override { return !m_shown.empty(); }
    ui::Answer messageBox(std::string_view text, ui::Buttons buttons, ui::Icon icon, std::string_view title) override;
    [[nodiscard]] std::string inputBox(std::string_view prompt, std::string_view title,
                                       std::string_view initial) override;
    [[nodiscard]] std::string openFile(const ui::OpenFileRequest& request) override;
    void doEvents() override;

private:
    struct Box {
        std::string text;
        ui::Answer answer;
        ui::Icon icon;
    };
    struct Prompt {
        std::string prompt;
        std::string answer;
    };

    std::map<std::string, std::deque<std::function<void()>>, std::less<>> m_showings;
    std::deque<Box> m_boxes;
    std::deque<Prompt> m_prompts;
    std::deque<std::string> m_picks;
    std::multimap<int, std::function<void()>> m_atDoEvents;
    int m_doEvents = 0;
    std::vector<ui::Form*> m_shown;
    ui::OpenFileRequest m_lastPick;
    std::string m_lastTitle;
};

} // namespace fakes
