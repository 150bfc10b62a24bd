// Keys, focus and the close box of a real form.
#include "windows/forms/image_manager.h"

namespace test {
namespace {

using KeysTest = ImageManagerTest;

std::vector<std::string_view> focusableControls() {
    std::vector<std::string_view> names;
    const HWND window = formWindow(kForm);
    const HWND first = GetNextDlgTabItem(window, nullptr, FALSE);
    HWND next = first;
    do {
        names.push_back(windows::controlName(kForm, GetDlgCtrlID(next)));
        next = GetNextDlgTabItem(window, next, FALSE);
    } while (next != first);
    return names;
}

TEST_F(KeysTest, ReturnHidesAndEscapeClosesFromAnyFocus) {
    std::vector<std::string_view> names;
    person.then([&] { names = focusableControls(); }).press(VK_ESCAPE);
    showUntilClosed();
    ASSERT_EQ(names.size(), 15U) << "buttons, check boxes and lists that Tab reaches";

    struct Row {
        const char* description;
        UINT message;
        WPARAM key;
        const char* newImageFile;
    };
    constexpr Row kRows[] = {{"Return", WM_KEYDOWN, VK_RETURN, "untouched"},
                             {"Escape", WM_KEYDOWN, VK_ESCAPE, ""},
                             {"Return as a character", WM_CHAR, 13, "untouched"},
                             {"Escape as a character", WM_CHAR, 27, ""}};
    for (const std::string_view name : names) {
        for (const Row& row : kRows) {
            SCOPED_TRACE(std::string(row.description) + " on " + std::string(name));
            form.NewImageFile = "untouched";
            form.setFocus(*form.find(name));
            person.then([&] {
                EXPECT_EQ(GetFocus(), control(kForm, name));
                PostMessageW(GetFocus(), row.message, row.key, 1);
            });
            showUntilClosed();
            EXPECT_EQ(form.NewImageFile, row.newImageFile);
        }
    }
}

TEST_F(KeysTest, AKeyHeldDownSinceBeforeTheWindowCameDoesNotCount) {
    constexpr LPARAM kRepeated = 1 << 30;
    bool stillThere = false;
    person.press(VK_RETURN, kRepeated)
        .press(VK_ESCAPE, kRepeated)
        .then([&] { stillThere = form.shown(); })
        .press(VK_RETURN);
    showUntilClosed();
    EXPECT_TRUE(stillThere);
    EXPECT_EQ(form.NewImageFile, "untouched");
}

TEST_F(KeysTest, TheCloseBoxRunsClose) {
    person.then([] { PostMessageW(formWindow(kForm), WM_SYSCOMMAND, SC_CLOSE, 0); });
    showUntilClosed();
    EXPECT_EQ(form.NewImageFile, "");
}

TEST_F(KeysTest, KeysOfABoxStayInTheBox) {
    ui::Answer answer{};
    form.cmdCleanUp.onClick = [&] { answer = desktop.messageBox("Sure?", ui::Buttons::OkCancel); };
    bool usableAfterwards = false;
    person.click(kForm, "cmdCleanUp")
        .waitFor("the box", [] { return systemDialog() != nullptr; })
        .press(VK_ESCAPE)
        .waitFor("the end of the box", [] { return systemDialog() == nullptr; })
        .then([&] { usableAfterwards = form.shown() && IsWindowEnabled(formWindow(kForm)); })
        .press(VK_RETURN);
    showUntilClosed();
    EXPECT_EQ(answer, ui::Answer::Cancel);
    EXPECT_TRUE(usableAfterwards);
}

TEST_F(KeysTest, TheFocusIsNeverLostAndTheFormKnowsWhereItIs) {
    std::vector<std::string_view> seen;
    const auto note = [&] {
        ASSERT_NE(form.focused(), nullptr);
        EXPECT_EQ(GetFocus(), control(kForm, form.focused()->name()));
        seen.push_back(form.focused()->name());
    };
    person.then(note)
        .press(VK_TAB)
        .then([&] {
            note();
            form.chkExactMatch.setEnabled(false); // it has the focus
        })
        .then([&] {
            note();
            // As a tool does when it starts: everything goes dead but Close, which gets the focus.
            for (ui::Control* const control : form.controls()) {
                control->setEnabled(control == &form.cmdCancel);
            }
            form.setFocus(form.cmdCancel);
        })
        .then(note)
        .press(VK_RETURN);
    showUntilClosed();
    EXPECT_EQ(seen, (std::vector<std::string_view>{"cmdAutoLink", "chkExactMatch", "cmdCleanUp", "cmdCancel"}));
}

} // namespace
} // namespace test
