#include "accounts.h"

#include "base/text.h"

namespace supplier {
namespace {

constexpr std::string_view kFile = "accounts.xml";

} // namespace

Accounts::Accounts(const DataFolder& folder) : m_folder(folder) {
    // A file that cannot be read leaves the document empty: nobody is let in.
    static_cast<void>(m_document.load(folder.read(kFile).value_or("")));
}

xml::XmlNode Accounts::find(std::string_view profile, std::string_view password) const {
    for (const xml::XmlNode& account : m_document.documentElement().childNodes()) {
        if (account.nodeName() == "account" && account.getAttribute("profile") == profile) {
            return base::equalInUpperCase(account.getAttribute("password"), password) ? account : xml::XmlNode();
        }
    }
    return {};
}

void Accounts::changePassword(xml::XmlNode account, std::string_view password) const {
    account.setAttribute("password", password);
    m_folder.replace(kFile, m_document.xml());
}

} // namespace supplier
