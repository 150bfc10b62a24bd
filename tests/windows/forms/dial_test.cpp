// The connection settings on the real desktop, worked by keys: tabs, options, the field for digits, a long answer.
#include "connection/frmDial.h"
#include "fakes/fake_file_system.h"
#include "fakes/fake_network.h"
#include "fakes/fake_settings.h"
#include "windows/forms/person.h"
#include "windows/forms/window_text.h"
#include "windows/forms/windows_desktop.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <vector>

namespace test {
namespace {

constexpr std::string_view kDial = "frmDial";

class DialTest : public testing::Test {
protected:
    DialTest() {
        settings.set("Shop", "Dialup", "DialType", "Proxy");
        network.phoneBook = {"Home", "Office"};
    }
    void tabThrough(std::size_t stops) {
        for (std::size_t i = 0; i < stops; ++i) {
            person.press(VK_TAB).then(
                [this] { visited.push_back(windows::controlName(kDial, GetDlgCtrlID(GetFocus()))); });
        }
    }
    void pressMnemonic(wchar_t letter) {
        person.then([letter] { PostMessageW(GetFocus(), WM_SYSCHAR, letter, 1 << 29); });
    }
    // The state of the keyboard goes with the messages of this thread.
    void pressWithControl(WPARAM key, bool shift = false) {
        person.then([=] { hold(true, shift); }).press(key).then([] { hold(false, false); });
    }
    static void hold(bool control, bool shift) {
        std::array<BYTE, 256> keys{};
        keys[VK_CONTROL] = control ? 0x80 : 0;
        keys[VK_SHIFT] = shift ? 0x80 : 0;
        SetKeyboardState(keys.data());
    }
    std::string stored(std::string_view key) { return settings.get("Shop", "Dialup", key); }

    using Names = std::vector<std::string_view>;
    Names visited;
    fakes::FakeFileSystem files;
    fakes::FakeSettings settings;
    fakes::FakeNetwork network;
    std::unique_ptr<ports::Dialer> dialer = network.createDialer();
    windows::WindowsDesktop desktop{GetModuleHandleW(nullptr)};
    connection::frmDial form{{desktop, files, settings, network, *dialer, [](std::string_view) {}},
                             {"Shop", "Supplier", "http://supplier/", "C:\\Component"}};
    Person person;
};

TEST_F(DialTest, EveryPageIsReachedAndWorkedByKeysAlone) {
    tabThrough(5); // the proxy's page, without a proxy
    pressMnemonic(L'f');
    tabThrough(9);
    pressMnemonic(L't');
    person.then([&] { EXPECT_EQ(form.tabPages.selected(), 2U); });
    tabThrough(7);
    pressWithControl(VK_TAB); // round to the first
    person.then([&] {
        EXPECT_EQ(form.tabPages.selected(), 0U);
        EXPECT_EQ(GetFocus(), control(kDial, "tabPages"));
        EXPECT_TRUE(IsWindowVisible(control(kDial, "lPhonebook")));
        EXPECT_FALSE(IsWindowVisible(control(kDial, "txtURL")));
    });
    tabThrough(6);
    pressWithControl(VK_TAB, true);
    person.then([&] { EXPECT_EQ(form.tabPages.selected(), 2U); });
    pressWithControl(VK_PRIOR);
    person.then([&] { EXPECT_EQ(form.tabPages.selected(), 1U); });
    person.press(VK_RETURN);
    form.showModal();
    EXPECT_EQ(visited, (Names{"chkProxy", "chkUseWinInet", "cmdOK", "bCancel2", "tabPages",
                              // from the check box that its letter ticked
                              "comType", "txtServer", "txtPort", "txtUserID", "txtPassword", "chkUseWinInet", "cmdOK",
                              "bCancel2", "tabPages",
                              // the test
                              "txtURL", "cmdGet", "chkEvents", "cmdWinsock", "txtTransfer", "cmdOK", "bCancel2",
                              // dialling: only the option that is chosen is a stop
                              "Option1_2", "lPhonebook", "bPhoneBookConnect", "cmdOK", "bCancel2", "tabPages"}));
    EXPECT_FALSE(form.Cancelled);
    EXPECT_EQ(stored("UseProxy"), "1");
    EXPECT_EQ(stored("DialType"), "Proxy") << "looking at the options is no choice";
}

TEST_F(DialTest, AnOptionIsChosenByArrowOrLetterAndStoredThen) {
    pressMnemonic(L'c');
    person.press(VK_TAB).press(VK_UP).then([&] {
        EXPECT_EQ(stored("DialType"), "Manual");
        EXPECT_EQ(SendMessageW(control(kDial, "Option1_2"), BM_GETCHECK, 0, 0), BST_UNCHECKED);
    });
    pressMnemonic(L'd');
    person
        .then([&] {
            EXPECT_EQ(stored("DialType"), "DialUp");
            EXPECT_EQ(SendMessageW(control(kDial, "Option1_0"), BM_GETCHECK, 0, 0), BST_CHECKED);
            EXPECT_EQ(linesOf(control(kDial, "lPhonebook")), (std::vector<std::wstring>{L"Home", L"Office"}));
        })
        .press(VK_ESCAPE);
    form.showModal();
    EXPECT_TRUE(form.Cancelled);
}

TEST_F(DialTest, ThePortTakesDigitsHoweverTheyCome) {
    settings.set("Shop", "Dialup", "UseProxy", "1");
    settings.set("Shop", "Dialup", "ProxyPort", "3128x");
    const auto port = [] { return windows::windowText(control(kDial, "txtPort")); };
    const auto paste = [](std::wstring_view text) {
        OpenClipboard(nullptr);
        EmptyClipboard();
        const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
        auto* const target = static_cast<wchar_t*>(GlobalLock(memory));
        target[text.copy(target, text.size())] = L'\0';
        GlobalUnlock(memory);
        SetClipboardData(CF_UNICODETEXT, memory);
        CloseClipboard();
        SendMessageW(control(kDial, "txtPort"), WM_PASTE, 0, 0); // as the context menu does
    };
    person.then([&] { EXPECT_EQ(port(), L"3128x") << "as it is stored"; });
    pressMnemonic(L'o');
    person
        .type(L"8a0 -\x16") // the last is Ctrl+V
        .then([&] {
            EXPECT_EQ(port(), L"80");
            paste(L"a8 x0");
            EXPECT_EQ(port(), L"8080");
        })
        .type(L"\b")
        .then([&] { EXPECT_EQ(port(), L"808"); });
    pressMnemonic(L'y');
    person.press(VK_DOWN)
        .then([&] { EXPECT_EQ(port(), L"1080"); })
        .then([] { SendMessageW(control(kDial, "comType"), CB_SHOWDROPDOWN, TRUE, 0); })
        .press(VK_ESCAPE) // the list's
        .then([&] {
            EXPECT_TRUE(form.shown());
            EXPECT_FALSE(SendMessageW(control(kDial, "comType"), CB_GETDROPPEDSTATE, 0, 0));
        })
        .press(VK_RETURN);
    form.showModal();
    EXPECT_EQ(stored("ProxyPort"), "1080");
    EXPECT_EQ(stored("FirewallType"), "1");
}

TEST_F(DialTest, AnAnswerIsShownLineByLineAndAVeryLongOneKeepsTheWindowAlive) {
    constexpr int kBlocks = 1600; // of 64 KB: 100 MB
    const std::string block(64 * 1024, 'x');
    std::vector<std::string> body(kBlocks, block);
    body.front() = std::string("one\ntwo\r\nthr\0e\nlong ", 20) + std::string(2500, 'y') + "\r";
    body.at(1) = "\nafter";
    network.willAnswer(fakes::Answer{.body = body});
    pressMnemonic(L't');
    pressMnemonic(L'g');
    int looks = 0; // at the messages, while the answer comes
    const auto shownLength = [] { return GetWindowTextLengthW(control(kDial, "txtTransfer")); };
    person.waitFor("the end of the test", [&] {
        looks += network.requests.size() == 1 && !form.cmdGet.enabled() ? 1 : 0;
        return network.requests.size() == 1 && form.cmdGet.enabled() && shownLength() > 200'000;
    });
    person
        .then([] {
            const std::wstring text = windows::windowText(control(kDial, "txtTransfer"));
            EXPECT_TRUE(text.starts_with(L"one\r\ntwo\r\nthr\xFFFD"
                                         L"e\r\nlong yyy"))
                << text.size();
            EXPECT_NE(text.find(L"yyy\r\nyyy"), std::wstring::npos) << "a long line is cut";
            EXPECT_NE(text.find(L"yyy\r\nafter"), std::wstring::npos);
        })
        .press(VK_ESCAPE); // long before all of it is there
    form.showModal();
    EXPECT_GE(looks, 1);
}

TEST_F(DialTest, ClosingTheWindowEndsARunningTest) {
    network.willAnswer(fakes::Answer{.body = {"never seen"}, .meanwhile = [&] {
                                         PostMessageW(formWindow(kDial), WM_CLOSE, 0, 0);
                                         while (form.shown()) {
                                             desktop.doEvents();
                                         }
                                     }});
    pressMnemonic(L't');
    pressMnemonic(L'g');
    form.showModal();
    EXPECT_TRUE(form.Cancelled);
    EXPECT_EQ(form.txtTransfer.text(), "");
    EXPECT_EQ(formWindow(kDial), nullptr);
}

// The least that is an icon: one picture of one pixel.
std::string icon() {
    const std::array<unsigned char, 70> kBytes{0, 0, 1, 0,  1, 0, 1, 1, 0, 0, 1, 0, 32, 0, 48, 0, 0, 0, 22,
                                               0, 0, 0, 40, 0, 0, 0, 1, 0, 0, 0, 2, 0,  0, 0,  1, 0, 32};
    return {kBytes.begin(), kBytes.end()};
}

TEST_F(DialTest, AnIconFileIsShownAndABrokenOneIgnored) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path();
    for (const bool good : {true, false}) {
        const std::string path = (folder / (good ? "good.ico" : "bad.ico")).string();
        std::ofstream(path, std::ios::binary) << (good ? icon() : "no icon");
        person
            .then([&] {
                const LRESULT shown = SendMessageW(formWindow(kDial), WM_GETICON, ICON_SMALL, 0);
                EXPECT_EQ(shown != 0, good);
            })
            .press(VK_ESCAPE);
        form.load();
        form.setIconFile(path);
        form.showModal();
        std::filesystem::remove(path);
    }
}

} // namespace
} // namespace test
