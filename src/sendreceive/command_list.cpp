#include "sendreceive/command_list.h"

#include "base/runtime_error.h"

#include <cstdint>
#include <limits>

namespace sendreceive {
namespace {

bool isYes(const xml::XmlNode& command, std::string_view attribute) {
    return command.getAttribute(attribute) == "yes";
}

void addRow(ui::ListView& list, const xml::XmlNode& command, const LastDateOf& lastDateOf) {
    const std::string name = command.getAttribute("name");
    const std::size_t row = list.addRow(name);
    const auto set = [&](CommandColumn column, const std::string& text) {
        list.setCell(row, static_cast<std::size_t>(column), text);
    };
    if (isYes(command, "required") || isYes(command, "checked")) {
        list.setChecked(row, true);
    }
    set(CommandColumn::Name, name);
    set(CommandColumn::Description, command.getAttribute("displaytext"));
    set(CommandColumn::LastDate, lastDateOf(name, command.getAttribute("lastdateaccountspecific")));
    set(CommandColumn::Status, " ");
}

} // namespace

std::vector<ui::ListView::Column> commandColumns() {
    return {{"Command", 30}, {"Description", 42}, {"Last date", 14}, {"Status", 14}};
}

void fillCommandList(ui::ListView& list, const xml::XmlDocument& commands, const LastDateOf& lastDateOf) {
    list.clear();
    for (const xml::XmlNode command : commands.selectNodes("//command")) {
        // A command that is not shown has no row to tick or to write to; it can still run.
        if (!isYes(command, "show")) {
            continue;
        }
        if (list.rowCount() == static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max())) {
            throw base::RuntimeError(base::error::kOverflow);
        }
        addRow(list, command, lastDateOf);
    }
}

xml::XmlNode findCommand(const xml::XmlDocument& commands, const std::string& name) {
    return commands.selectSingleNode("//command[@name='" + name + "']");
}

} // namespace sendreceive
