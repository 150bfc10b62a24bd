// The port to the user's desktop: modal forms, boxes, file dialogs, the message loop.
// Real: windows/forms; scripted: tests/fakes/fake_desktop.h.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ui {

class Form;

enum class Buttons : std::uint8_t { Ok, OkCancel, YesNo };
enum class Icon : std::uint8_t { None, Critical };
enum class Answer : std::uint8_t { Ok, Cancel, Yes, No };

// The title of every box that states none.
inline constexpr std::string_view kDefaultTitle = "QuorvantisImage";

struct OpenFileRequest {
    std::string initialFolder; // the dialog opens here every time, whatever was picked before
    std::string fileName;      // text of the name field at the start
    // Pairs of description and pattern separated by "|"; empty: all files, no choice offered.
    std::string filter;
};

// All calls come from the thread that shows the forms. A box or dialog belongs to the form shown last.
class Desktop {
public:
    Desktop() = default;
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;
    virtual ~Desktop() = default;

    // Shows a loaded form and returns once it is hidden or unloaded. The first form has no owner but keeps the
    // thread's other windows disabled meanwhile; a nested one is owned by the form beneath. When a handler raises, the
    // form is hidden and the error comes out here. A form already shown raises 400.
    virtual void showModal(Form& form) = 0;

    // True while any form is shown. The one method that any thread may call.
    [[nodiscard]] virtual bool showsForm() const noexcept = 0;

    // The button that closed the box; closing it otherwise counts as Cancel (Ok in a box with only that).
    virtual Answer messageBox(std::string_view text, Buttons buttons = Buttons::Ok, Icon icon = Icon::None,
                              std::string_view title = kDefaultTitle) = 0;

    // The text entered; "" when cancelled.
    [[nodiscard]] virtual std::string inputBox(std::string_view prompt, std::string_view title,
                                               std::string_view initial = {}) = 0;

    // The full path chosen, which need not exist; "" when cancelled.
    [[nodiscard]] virtual std::string openFile(const OpenFileRequest& request) = 0;

    // Handles the messages that wait, so that windows repaint and buttons work in a long loop. Cheap enough to call
    // once an item.
    virtual void doEvents() = 0;
};

} // namespace ui
