// Being modal: the host's windows, nested forms, handlers that fail, the end of the host's message loop.
#include "windows/forms/image_manager.h"

namespace test {
namespace {

using ModalTest = ImageManagerTest;

// A window of the host; notes whether the form's window still exists when it takes input again.
class HostWindow {
public:
    HostWindow(bool visible, bool enabled)
        : m_window(CreateWindowW(L"Static", L"Host",
                                 WS_OVERLAPPED | (visible ? WS_VISIBLE : 0U) | (enabled ? 0U : WS_DISABLED), 0, 0, 50,
                                 50, nullptr, nullptr, nullptr, nullptr)) {
        SetWindowLongPtrW(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        m_proc = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&HostWindow::proc)));
    }
    ~HostWindow() { DestroyWindow(m_window); }
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    [[nodiscard]] bool enabled() const { return IsWindowEnabled(m_window) != FALSE; }
    [[nodiscard]] bool enabledBeforeTheFormWent() const { return m_formThere; }

private:
    static LRESULT CALLBACK proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        auto* const self = reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message == WM_ENABLE && wParam != FALSE) {
            self->m_formThere = FindWindowW(kFormClass, nullptr) != nullptr;
        }
        return CallWindowProcW(self->m_proc, window, message, wParam, lParam);
    }

    HWND m_window;
    WNDPROC m_proc = nullptr;
    bool m_formThere = false;
};

TEST_F(ModalTest, ExactlyTheWindowsThatTookInputAreDisabledMeanwhile) {
    const HostWindow usable(true, true);
    const HostWindow disabled(true, false);
    const HostWindow hidden(false, true);
    person
        .then([&] {
            EXPECT_FALSE(usable.enabled());
            EXPECT_TRUE(hidden.enabled());
        })
        .press(VK_RETURN);
    showUntilClosed();
    EXPECT_TRUE(usable.enabled());
    EXPECT_TRUE(usable.enabledBeforeTheFormWent());
    EXPECT_FALSE(disabled.enabled());
}

TEST_F(ModalTest, NothingOfTheFormStaysBehind) {
    person.press(VK_RETURN);
    showUntilClosed();
    WNDCLASSW description{};
    EXPECT_FALSE(GetClassInfoW(GetModuleHandleW(nullptr), kFormClass, &description));
    EXPECT_FALSE(desktop.showsForm());
}

TEST_F(ModalTest, AHandlersErrorComesOutAndTheFormCanBeShownAgain) {
    form.cmdUpload.onClick = [] { throw base::RuntimeError(base::error::kPathFileAccess); };
    person.click(kForm, "cmdUpload");
    EXPECT_EQ(errorOfShowing(), base::error::kPathFileAccess);
    EXPECT_FALSE(form.shown());
    person.press(VK_RETURN);
    showUntilClosed();
}

class NestedForm final : public ui::Form {
public:
    explicit NestedForm(ui::Desktop& desktop) : Form(desktop, "InputBox") {
        cmdCancel.onClick = [this] { hide(); };
        cmdOK.onClick = [] { throw base::RuntimeError(base::error::kDiskFull); };
    }
    ui::Label lblPrompt{*this, "lblPrompt"};
    ui::TextBox txtInput{*this, "txtInput"};
    ui::Button cmdOK{*this, "cmdOK"};
    ui::Button cmdCancel{*this, "cmdCancel"};
};

TEST_F(ModalTest, ANestedFormBelongsToTheOneBeneathAndItsErrorGoesThroughBoth) {
    NestedForm nested(desktop);
    form.cmdUpload.onClick = [&] { nested.showModal(); };
    const auto opened = [] { return formWindow("InputBox") != nullptr; };
    person.click(kForm, "cmdUpload")
        .waitFor("the nested form", opened)
        .then([] {
            EXPECT_EQ(GetWindow(formWindow("InputBox"), GW_OWNER), formWindow(kForm));
            EXPECT_FALSE(IsWindowEnabled(formWindow(kForm)));
        })
        .click("InputBox", "cmdCancel")
        .then([] {
            EXPECT_EQ(formWindow("InputBox"), nullptr);
            EXPECT_TRUE(IsWindowEnabled(formWindow(kForm)));
            EXPECT_EQ(GetActiveWindow(), formWindow(kForm));
        })
        .click(kForm, "cmdUpload")
        .waitFor("the nested form again", opened)
        .click("InputBox", "cmdOK");
    EXPECT_EQ(errorOfShowing(), base::error::kDiskFull);
    EXPECT_FALSE(desktop.showsForm());
}

TEST_F(ModalTest, AFormHiddenByARunningHandlerIsGoneAtOnceButStaysModalUntilTheHandlerEnds) {
    const HostWindow host(true, true);
    form.cmdUpload.onClick = [&] {
        form.hide();
        EXPECT_EQ(formWindow(kForm), nullptr) << "still visible";
        EXPECT_NE(FindWindowW(kFormClass, nullptr), nullptr) << "destroyed under its own handler";
        desktop.doEvents();
        EXPECT_FALSE(host.enabled());
        EXPECT_EQ(errorOfShowing(), base::error::kFormAlreadyDisplayed);
    };
    person.click(kForm, "cmdUpload");
    showUntilClosed();
    EXPECT_TRUE(host.enabled());
}

bool takeQuitMessage(WPARAM exitCode) {
    MSG message{};
    return PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != FALSE && message.wParam == exitCode;
}

TEST_F(ModalTest, TheEndOfTheHostsLoopClosesEveryFormAndReachesTheHost) {
    std::string answer = "not asked";
    auto boxAnswer = ui::Answer::Yes;
    form.cmdUpload.onClick = [&] {
        answer = desktop.inputBox("Name?", "Question", "initial");
        boxAnswer = desktop.messageBox("Nobody is left to answer this.", ui::Buttons::YesNo);
    };
    person.click(kForm, "cmdUpload")
        .waitFor("the input box", [] { return formWindow("InputBox") != nullptr; })
        .then([] { PostQuitMessage(7); });
    showUntilClosed();
    EXPECT_EQ(answer, "");
    EXPECT_EQ(boxAnswer, ui::Answer::Cancel);
    EXPECT_EQ(form.NewImageFile, "");
    EXPECT_TRUE(takeQuitMessage(7));
}

TEST_F(ModalTest, TheEndOfTheHostsLoopInsideALongHandlerHidesTheFormAtOnce) {
    bool hiddenInside = false;
    form.cmdUpload.onClick = [&] {
        PostQuitMessage(3);
        desktop.doEvents();
        hiddenInside = !form.shown() && formWindow(kForm) == nullptr;
    };
    person.click(kForm, "cmdUpload");
    showUntilClosed();
    EXPECT_TRUE(hiddenInside);
    EXPECT_TRUE(takeQuitMessage(3));
}

} // namespace
} // namespace test
