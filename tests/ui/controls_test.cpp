// The control model without a window: which events and notices a change gives.
#include "fakes/fake_desktop.h"
#include "ui/controls.h"
#include "ui/form.h"

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
