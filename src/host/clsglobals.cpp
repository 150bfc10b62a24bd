#include "host/clsglobals.h"

#include "base/resume_next.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "ui/desktop.h"
#include "xml/xml_document.h"

#include <limits>
#include <utility>

namespace host {

void clsglobals::LoadGlobals(const xml::XmlDocument& doc) {
    const xml::XmlNode options = doc.selectSingleNode("configuration/options");
    if (!options) {
        m_desktop.doEvents();
        return;
    }
    int i = 0;
    for (xml::XmlNode child = options.firstChild(); child; child = child.nextSibling()) {
        Row& target = row(i);
        target.name = child.nodeName();
        target.value = child.text();
        ++i;
        m_desktop.doEvents();
    }
    m_count = static_cast<std::int16_t>(i);
}

std::string clsglobals::GetValue(const base::Variant& name) const {
    for (int i = 0; i <= m_count; ++i) {
        const auto matches = base::resumeNext(
            [&] { return base::upperCase(base::toText(row(i).name)) == base::upperCase(base::toText(name)); });
        if (matches && *matches) {
            return base::resumeNext([&] { return base::toText(row(i).value); }).value_or("NOT_FOUND");
        }
    }
    return "NOT_FOUND";
}

void clsglobals::SetValue(const base::Variant& name, const base::Variant& value) {
    for (int i = 0; i <= m_count; ++i) {
        if (base::equals(row(i).name, name)) {
            row(i).value = value;
            return;
        }
    }
    if (m_count == std::numeric_limits<std::int16_t>::max()) {
        throw base::RuntimeError(base::error::kOverflow);
    }
    ++m_count;
    row(m_count) = {name, value};
}

clsglobals::Row& clsglobals::row(int index) {
    return const_cast<Row&>(std::as_const(*this).row(index));
}

const clsglobals::Row& clsglobals::row(int index) const {
    if (index > kLastRow) {
        throw base::RuntimeError(base::error::kSubscriptOutOfRange);
    }
    return m_rows[static_cast<std::size_t>(index)];
}

} // namespace host
