// What the windows show against what the control objects hold, and the boxes that ask.
#include "windows/base/wide.h"
#include "windows/forms/image_manager.h"
#include "windows/forms/window_text.h"

#include <fstream>

namespace test {
namespace {

using StateTest = ImageManagerTest;
using windows::windowText;

TEST_F(StateTest, AfterManyChangesInALoopTheWindowsShowExactlyTheLast) {
    constexpr int kLines = 10'000;
    std::vector<std::wstring> expected;
    bool done = false;
    form.cmdAutoLink.onClick = [&] {
        form.List1.add("from before the clearing");
        desktop.doEvents();
        form.List1.clear();
        form.List1.setVisible(true);
        for (int i = 0; i < kLines; ++i) {
            const std::string line = "Zeile \xC3\xA4 " + std::to_string(kLines - i);
            form.List1.add(line);
            expected.push_back(windows::toWide(line));
            form.setCaption("Searching for " + std::to_string(i));
            desktop.doEvents();
        }
        form.List1.add("last");
        form.List1.setSelected(kLines);
        expected.emplace_back(L"last");
        done = true;
    };
    person.click(kForm, "cmdAutoLink")
        .waitFor("the end of the loop", [&] { return done; })
        .then([&] {
            const HWND list = control(kForm, "List1");
            EXPECT_EQ(linesOf(list), expected);
            EXPECT_EQ(SendMessageW(list, LB_GETCURSEL, 0, 0), kLines);
            EXPECT_TRUE(IsWindowVisible(list));
            EXPECT_EQ(windowText(formWindow(kForm)), L"Searching for 9999");
        })
        .press(VK_RETURN);
    showUntilClosed();
}

TEST_F(StateTest, ALoopShowsItsProgressAndABoxFindsEverythingUpToDate) {
    std::wstring inLoop;
    form.cmdAutoLink.onClick = [&] {
        form.setCaption("first");
        // The first change after a pause shows at once, later ones within the repaint interval.
        for (const ULONGLONG end = GetTickCount64() + 5000; inLoop != L"second" && GetTickCount64() < end;) {
            form.setCaption("second");
            desktop.doEvents();
            inLoop = windowText(formWindow(kForm));
        }
        form.setCaption("third");
        desktop.messageBox("Done");
    };
    person.click(kForm, "cmdAutoLink")
        .waitFor("the box", [] { return systemDialog() != nullptr; })
        .then([] { EXPECT_EQ(windowText(formWindow(kForm)), L"third"); })
        .press(VK_ESCAPE)
        .press(VK_RETURN);
    showUntilClosed();
    EXPECT_EQ(inLoop, L"second");
}

TEST_F(StateTest, LongLinesCanBeScrolledTo) {
    form.lImages.add("short.jpg");
    form.lImages.add(std::string(400, 'm') + ".jpg");
    person
        .then([] {
            const HWND list = control(kForm, "lImages");
            const LRESULT wide = SendMessageW(list, LB_GETHORIZONTALEXTENT, 0, 0);
            EXPECT_GT(wide, 400 * 4);
        })
        .then([&] { form.lImages.clear(); })
        .then([] { EXPECT_EQ(SendMessageW(control(kForm, "lImages"), LB_GETHORIZONTALEXTENT, 0, 0), 0); })
        .press(VK_RETURN);
    showUntilClosed();
}

TEST_F(StateTest, TheObjectHasTheLastWordOnACheckBox) {
    form.CheckRTF.onClick = [&] { form.CheckRTF.setChecked(false); };
    const auto shown = [](std::string_view name) { return SendMessageW(control(kForm, name), BM_GETCHECK, 0, 0); };
    person.click(kForm, "CheckRTF")
        .click(kForm, "chkExactMatch")
        .then([&] {
            EXPECT_EQ(shown("CheckRTF"), BST_UNCHECKED);
            EXPECT_EQ(shown("chkExactMatch"), BST_CHECKED);
            EXPECT_TRUE(form.chkExactMatch.checked());
        })
        .press(VK_RETURN);
    showUntilClosed();
}

TEST_F(StateTest, WhatAPersonSelectsReachesTheForm) {
    form.lImages.add("a.jpg");
    form.lImages.add("b.jpg");
    form.setFocus(form.lImages);
    person.press(VK_DOWN)
        .press(VK_DOWN)
        .then([&] { EXPECT_EQ(form.lImages.selectedText(), "b.jpg"); })
        .press(VK_RETURN);
    showUntilClosed();
}

TEST_F(StateTest, AnInputBoxGivesTheTextUnlessCancelled) {
    struct Row {
        const char* initial;
        const wchar_t* typed;
        WPARAM end;
        const char* answer;
    };
    constexpr Row kRows[] = {{"", L"\x00C4pfel & more", VK_RETURN, "\xC3\x84pfel & more"},
                             {"old", L"new", VK_RETURN, "new"}, // the initial text is selected
                             {"old", L"", VK_RETURN, "old"},
                             {"old", L"new", VK_ESCAPE, ""}};
    for (const Row& row : kRows) {
        person.waitFor("the input box", [] { return formWindow("InputBox") != nullptr; })
            .then([] { EXPECT_EQ(windowText(control("InputBox", "lblPrompt")), L"Enter a description"); })
            .type(row.typed)
            .press(row.end);
        EXPECT_EQ(desktop.inputBox("Enter a description", "Description", row.initial), row.answer);
    }
}

// The name field of either generation of the dialog.
HWND nameField(HWND dialog) {
    constexpr int kCombo = 0x47C;
    constexpr int kEdit = 0x480;
    const HWND combo = GetDlgItem(dialog, kCombo);
    return combo != nullptr
               ? FindWindowExW(FindWindowExW(combo, nullptr, L"ComboBox", nullptr), nullptr, L"Edit", nullptr)
               : GetDlgItem(dialog, kEdit);
}

TEST_F(StateTest, TheFileDialogOpensInTheStatedFolderEveryTime) {
    wchar_t temporary[MAX_PATH];
    GetTempPathW(MAX_PATH, temporary);
    const std::wstring root = std::wstring(temporary) + L"forms_test_" + std::to_wstring(GetCurrentProcessId());
    for (const wchar_t* const folder : {L"", L"\\first", L"\\second"}) {
        CreateDirectoryW((root + folder).c_str(), nullptr);
    }
    std::ofstream(windows::fromWide(root + L"\\first\\there.jpg")) << 'x';

    struct Row {
        const wchar_t* folder;
        const wchar_t* typed; // relative, so it shows where the dialog stands; empty: Cancel
        const wchar_t* result;
    };
    constexpr Row kRows[] = {{L"\\first", L"there.jpg", L"\\first\\there.jpg"},
                             {L"\\second", L"new.jpg", L"\\second\\new.jpg"}, // need not exist
                             {L"\\first", L"", L""},
                             {L"\\first", L"new.jpg", L"\\first\\new.jpg"}};
    for (const Row& row : kRows) {
        person
            .waitFor("the dialog",
                     [] {
                         return systemDialog() != nullptr && nameField(systemDialog()) != nullptr &&
                                IsWindowVisible(GetDlgItem(systemDialog(), IDOK));
                     })
            .then([&] {
                SetWindowTextW(nameField(systemDialog()), row.typed);
                PostMessageW(GetDlgItem(systemDialog(), *row.typed == L'\0' ? IDCANCEL : IDOK), BM_CLICK, 0, 0);
            });
        const std::string picked = desktop.openFile(
            {.initialFolder = windows::fromWide(root + row.folder), .fileName = "*", .filter = "Pictures|*.jpg"});
        EXPECT_EQ(picked, *row.result == L'\0' ? "" : windows::fromWide(root + row.result));
    }
    DeleteFileW((root + L"\\first\\there.jpg").c_str());
    for (const wchar_t* const folder : {L"\\first", L"\\second", L""}) {
        RemoveDirectoryW((root + folder).c_str());
    }
}

} // namespace
} // namespace test
