// What is started around the end-to-end tests, by its names in the environment: the supplier's service, the peers,
// signed programs. Their files are outside Wine.
#pragma once

#include <string>

namespace end_to_end {

// A variable of the environment; a failure and "" without it.
[[nodiscard]] std::string environment(const std::string& name);
// The port of a peer: peer("HTTP").
[[nodiscard]] std::string peer(const std::string& name);
// The address of a peer that answers one request after another as these paths say, with commas between them.
[[nodiscard]] std::string peerThatPlays(const std::string& paths);

// A path outside Wine, as Windows programs open it.
[[nodiscard]] std::string onDrive(std::string path);
// Of such a path as it is outside; "" when there is no file.
[[nodiscard]] std::string contentsOf(const std::string& path);

// A file of the supplier's data folder: its path outside.
[[nodiscard]] std::string supplierFile(const std::string& name);
// The supplier behaves so from now on: the text of behaviour.xml.
void setSupplierBehaviour(const std::string& text);

} // namespace end_to_end
