#include "fakes/fake_host_document.h"

#include "base/runtime_error.h"

#include <stdexcept>

namespace fakes {
namespace {

using Arguments = std::vector<base::Variant>;

void enter(const FakeHostDocument::Failures& failures, std::string_view member) {
    if (const auto found = failures.find(member); found != failures.end()) {
        throw base::RuntimeError(found->second);
    }
}

[[noreturn]] void refuse() {
    throw base::RuntimeError(base::error::kNoSuchMember);
}

class FakeHostNode final : public base::LateBoundObject {
public:
    FakeHostNode(xml::XmlNode node, std::shared_ptr<FakeHostDocument::Failures> failures)
        : m_node(std::move(node)), m_failures(std::move(failures)) {}

    base::Variant get(std::string_view /*property*/) override { refuse(); }
    void put(std::string_view /*property*/, const base::Variant& /*value*/) override { refuse(); }
    base::Variant call(std::string_view method, const Arguments& arguments) override {
        enter(*m_failures, method);
        if (method == "appendChild") {
            return wrap(m_node.appendChild(nodeIn(arguments.at(0))));
        }
        const std::string text = base::toText(arguments.at(0));
        if (method == "selectSingleNode") {
            return wrap(m_node.selectSingleNode(text));
        }
        if (method == "getAttribute") {
            return m_node.hasAttribute(text) ? base::Variant(m_node.getAttribute(text)) : base::Null{};
        }
        if (method == "setAttribute") {
            m_node.setAttribute(text, base::toText(arguments.at(1)));
            return {};
        }
        refuse();
    }

private:
    static xml::XmlNode nodeIn(const base::Variant& value) {
        return dynamic_cast<FakeHostNode&>(*std::get<base::ObjectRef>(value)).m_node;
    }
    [[nodiscard]] base::Variant wrap(const xml::XmlNode& node) const {
        return node ? std::make_shared<FakeHostNode>(node, m_failures) : base::ObjectRef();
    }

    xml::XmlNode m_node;
    std::shared_ptr<FakeHostDocument::Failures> m_failures;
};

} // namespace

FakeHostDocument::FakeHostDocument(ports::FileSystem& files, std::string_view text)
    : m_document(std::make_shared<xml::XmlDocument>()), m_files(files) {
    if (!text.empty() && !m_document->loadXml(text)) {
        throw std::invalid_argument(m_document->parseError());
    }
}

base::Variant FakeHostDocument::get(std::string_view property) {
    enter(*m_failures, property);
    if (property == "xml") {
        return text();
    }
    if (property == "documentElement") {
        const xml::XmlNode root = m_document->documentElement();
        return root ? std::make_shared<FakeHostNode>(root, m_failures) : base::ObjectRef();
    }
    refuse();
}

void FakeHostDocument::put(std::string_view /*property*/, const base::Variant& /*value*/) {
    refuse();
}

base::Variant FakeHostDocument::call(std::string_view method, const Arguments& arguments) {
    enter(*m_failures, method);
    const std::string argument = base::toText(arguments.at(0));
    if (method == "createElement") {
        return std::make_shared<FakeHostNode>(m_document->createElement(argument), m_failures);
    }
    if (method == "save") {
        m_files.replaceFile(argument, text());
        return {};
    }
    refuse();
}

} // namespace fakes
