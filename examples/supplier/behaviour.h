// What behaviour.xml says: how the service answers until somebody changes the file. Read anew for every request.
//
//   <behaviour>
//       <off message="Back at noon."/>                          every command is answered with 503 and a SYSDOWN
//       document <wait milliseconds="500"/>                              before every answer <fail
//       command="sendimagelinks210" error="Not today."/>  this command is answered with an error <redo
//       command="sendproductgroups210" times="2"/>        and this one asks for a repetition, twice in a row <answer
//       command="getaccount130"><file .../></answer>    what stands inside is added to the command's results
//   </behaviour>
#pragma once

#include "data_folder.h"
#include "xml/xml_document.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace supplier {

class Behaviour {
public:
    // No file: the service answers as it should. A file that is no XML raises base::RuntimeError with the reason.
    explicit Behaviour(const DataFolder& folder);

    [[nodiscard]] bool isOff() const { return static_cast<bool>(find("off", {})); }
    // "" when the service is off without a word.
    [[nodiscard]] std::string offMessage() const { return find("off", {}).getAttribute("message"); }
    [[nodiscard]] std::chrono::milliseconds wait() const;
    [[nodiscard]] std::string errorFor(std::string_view command) const;
    [[nodiscard]] int repetitionsOf(std::string_view command) const;
    // The element whose children belong into the results of this command; no node when there is none.
    [[nodiscard]] xml::XmlNode additionTo(std::string_view command) const { return find("answer", command); }

private:
    [[nodiscard]] xml::XmlNode find(std::string_view element, std::string_view command) const;

    xml::XmlDocument m_document;
};

} // namespace supplier
