// The control model without a window: which events and notices a change gives.
#include "fakes/fake_desktop.h"
#include "ui/controls.h"
#include "ui/form.h"
#include "ui/tab_strip.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

class SampleForm : public ui::Form {
public:
    explicit SampleForm(ui::Desktop& d) : Form(d, "SampleForm") {}
    ui::Button cmdGo{*this, "cmdGo"};
    ui::CheckBox chkOn{*this, "chkOn"};
    ui::ListBox list{*this, "list"};
    ui::OptionButton opt1{*this, "opt1"};
    ui::OptionButton opt2{*this, "opt2"};
    ui::TextBox txtPort{*this, "txtPort"};
    ui::TabStrip tabs{*this, "tabs"};
    int loads = 0;
    bool failLoad = false;

protected:
    void Form_Load() override {
        ++loads;
        if (failLoad) {
            throw std::runtime_error("load");
        }
    }
};

class Recorder : public ui::ContainerObserver {
public:
    void controlChanged(ui::Control& control, ui::Aspect aspect) noexcept override {
        seen.push_back(std::string(control.name()) + std::to_string(static_cast<int>(aspect)));
    }
    void captionChanged() noexcept override { seen.emplace_back("caption"); }
    void hidden() noexcept override { seen.emplace_back("hidden"); }
    void focusMoved(ui::Control& control) noexcept override { seen.push_back("focus " + std::string(control.name())); }
    std::vector<std::string> seen;
};

class ControlsTest : public testing::Test {
protected:
    fakes::FakeDesktop desktop;
    SampleForm form{desktop};
    Recorder recorder;
};

TEST_F(ControlsTest, APersonCannotActOnWhatIsDisabledOrHidden) {
    int clicks = 0;
    form.cmdGo.onClick = [&] { ++clicks; };
    form.list.add("a");
    form.cmdGo.userClick();
    form.cmdGo.setEnabled(false);
    form.cmdGo.userClick();
    form.chkOn.setVisible(false);
    form.chkOn.userClick();
    form.list.setEnabled(false);
    form.list.userSelect(0);
    EXPECT_EQ(clicks, 1);
    EXPECT_FALSE(form.chkOn.checked());
    EXPECT_FALSE(form.list.selected());
}

TEST_F(ControlsTest, AssigningRaisesTheEventOnlyWhenTheValueChanges) {
    int clicks = 0;
    form.chkOn.onClick = [&] { ++clicks; };
    form.chkOn.setChecked(true);
    form.chkOn.setChecked(true);
    form.chkOn.userClick();
    EXPECT_EQ(clicks, 2);

    int selections = 0;
    form.list.onClick = [&] { ++selections; };
    form.list.add("a");
    form.list.add("b");
    form.list.userSelect(1);
    form.list.setSelected(1);
    form.list.userSelect(7); // no such line
    EXPECT_EQ(form.list.selectedText(), "b");
    form.list.setSelected(7); // selects nothing
    EXPECT_EQ(form.list.selectedText(), "");
    EXPECT_EQ(selections, 2);
    form.list.clear(); // silent
    EXPECT_EQ(selections, 2);
}

TEST_F(ControlsTest, OnlyRealChangesReachTheObserver) {
    form.observe(&recorder);
    form.setCaption("A");
    form.setCaption("A");
    form.cmdGo.setText("Go");
    form.cmdGo.setText("Go");
    form.cmdGo.setEnabled(true);
    form.cmdGo.setEnabled(false);
    form.setFocus(form.list);
    EXPECT_EQ(recorder.seen, (std::vector<std::string>{"caption", "cmdGo0", "cmdGo1", "focus list"}));
    EXPECT_EQ(form.focused(), &form.list);
    EXPECT_EQ(form.find("list"), &form.list);
    EXPECT_EQ(form.find("nothing"), nullptr);
}

TEST_F(ControlsTest, OneOptionIsChosenAndOnlyAPersonsChoiceIsAClick) {
    int clicks = 0;
    form.opt1.onClick = form.opt2.onClick = [&] { ++clicks; };
    form.opt1.choose();
    EXPECT_EQ(clicks, 0);
    form.opt2.userClick();
    EXPECT_FALSE(form.opt1.chosen());
    EXPECT_TRUE(form.opt2.chosen());
    form.opt2.userClick(); // confirms it
    EXPECT_EQ(clicks, 2);
    form.opt1.setEnabled(false);
    form.opt1.userClick();
    EXPECT_TRUE(form.opt2.chosen());
}

TEST_F(ControlsTest, ATabShowsItsPageAndHidesTheOthers) {
    int changes = 0;
    form.tabs.onChange = [&] { ++changes; };
    form.tabs.addTab("&One", {&form.opt1, &form.opt2});
    form.tabs.addTab("&Two", {&form.txtPort});
    EXPECT_TRUE(form.opt1.visible());
    EXPECT_FALSE(form.txtPort.visible());
    form.tabs.userSelect(1);
    form.tabs.userSelect(2); // no such tab
    form.tabs.select(1);
    EXPECT_FALSE(form.opt2.visible());
    EXPECT_TRUE(form.txtPort.visible());
    EXPECT_TRUE(form.list.visible()) << "is on no page";
    EXPECT_EQ(changes, 1);
}

TEST_F(ControlsTest, AFieldForDigitsTakesNothingElseFromAPerson) {
    form.txtPort.digitsOnly = true;
    form.txtPort.setText("80x"); // the logic's own stays
    form.txtPort.userText("80x");
    EXPECT_EQ(form.txtPort.text(), "80x");
    form.txtPort.userText("1\xC3\xA9 0,8x0"); // pasted
    EXPECT_EQ(form.txtPort.text(), "1080");

    constexpr char16_t kCtrlV = 22;
    for (const char16_t key : std::u16string{u'a', u' ', u'-', u'\x0663', kCtrlV}) {
        EXPECT_EQ(form.userKey(key), key) << "another control has the focus";
        form.userFocus(form.txtPort);
        EXPECT_EQ(form.userKey(key), 0) << static_cast<int>(key);
        form.userFocus(form.list);
    }
    form.userFocus(form.txtPort);
    for (const char16_t key : std::u16string{u'0', u'9', ui::key::kBackspace, ui::key::kReturn, ui::key::kEscape}) {
        EXPECT_EQ(form.userKey(key), key);
    }
}

TEST_F(ControlsTest, LoadRunsOnceUntilUnloadAndAgainAfterAFailure) {
    form.failLoad = true;
    EXPECT_THROW(form.load(), std::runtime_error);
    EXPECT_FALSE(form.loaded());
    form.failLoad = false;
    desktop.whenShown("SampleForm", [&] { form.hide(); });
    form.showModal();
    desktop.whenShown("SampleForm", [&] {
        EXPECT_THROW(form.showModal(), std::exception); // shown already
        form.userClose();
    });
    form.showModal();
    EXPECT_EQ(form.loads, 2);
    EXPECT_FALSE(form.loaded());
    form.load();
    EXPECT_EQ(form.loads, 3);
}

} // namespace
