// Who may send commands. accounts.xml: <accounts><account profile="1001" name="Miller" password="SECRET"/></accounts>.
// An example can keep passwords readable, where a person sets them up; a real service keeps none.
#pragma once

#include "data_folder.h"
#include "xml/xml_document.h"

#include <string>
#include <string_view>

namespace supplier {

class Accounts {
public:
    // Without a readable accounts.xml nobody has an account.
    explicit Accounts(const DataFolder& folder);

    // The account's element when profile and password belong together; no node otherwise. Letter case of the password
    // does not count: clients send it in upper case.
    [[nodiscard]] xml::XmlNode find(std::string_view profile, std::string_view password) const;

    // Keeps a new password, in the file too.
    void changePassword(xml::XmlNode account, std::string_view password) const;

private:
    const DataFolder& m_folder;
    xml::XmlDocument m_document;
};

} // namespace supplier
