// The list of commands that a person can tick, made from the command document.
#pragma once

#include "ui/list_view.h"
#include "xml/xml_document.h"

#include <functional>
#include <string>
#include <vector>

namespace sendreceive {

// The columns of the list. The texts of a row come from its command; the status says how its exchange went.
enum class CommandColumn : std::size_t { Name, Description, LastDate, Status };

[[nodiscard]] std::vector<ui::ListView::Column> commandColumns();

// "" when it is not available.
using LastDateOf = std::function<std::string(const std::string& name, const std::string& accountSpecific)>;

// Clears the list and adds a row for every command with show="yes", keyed by its name. Raises 6 at the 32,768th row and
// 35602 for a second row of the same name; the rows before stay.
void fillCommandList(ui::ListView& list, const xml::XmlDocument& commands, const LastDateOf& lastDateOf);

// The first command of that name. Raises what the search raises: an apostrophe in the name makes it invalid.
[[nodiscard]] xml::XmlNode findCommand(const xml::XmlDocument& commands, const std::string& name);

} // namespace sendreceive
