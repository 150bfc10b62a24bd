// What behaviour.xml says: how the service answers until somebody changes the file. Read anew for every request.
//
//   <behaviour>
//       <off message="Back at noon."/>
//       <wait milliseconds="500"/>
//       <fail command="sendimagelinks210" error="Not today."/>
//       <cut file="setup.exe" after="1000"/>
//       <redo command="sendproductgroups210" times="2"/>
//       <answer command="upgrade100" latestversion="7.2"><file webname="files/a.exe" filename="a.exe"/></answer>
//   </behaviour>
//
// off: every command is answered with 503 and a SYSDOWN document. wait: before every answer. fail: the command is
// answered with an error. cut: this file breaks off after so many bytes, unless a part of it is asked for. redo: it
// asks for a repetition, so many times in a row. answer: its other attributes and what it holds are added to the
// command's results; a command that the service does not know becomes one that it does.
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
    // After how many bytes the file breaks off; nothing for one that is sent whole.
    [[nodiscard]] std::optional<std::size_t> cutOf(std::string_view file) const;
    // The answer element of this command; no node when there is none.
    [[nodiscard]] xml::XmlNode additionTo(std::string_view command) const { return find("answer", command); }

private:
    [[nodiscard]] xml::XmlNode find(std::string_view element, std::string_view value,
                                    std::string_view attribute = "command") const;

    xml::XmlDocument m_document;
};

} // namespace supplier
