// The clean-up against a literal model on random documents: every child reached by its number, every group searched in
// the whole document.
#include "base/runtime_error.h"
#include "base/text.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_code_page.h"
#include "fakes/fake_file_system.h"
#include "images/link_document.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

xml::XmlNode childAt(const xml::XmlNode& root, std::size_t position) {
    xml::XmlNode child = root.firstChild();
    for (; child && position > 0; --position) {
        child = child.nextSibling();
    }
    return child;
}

void literalCleanUp(xml::XmlDocument& document) {
    const std::size_t count = document.documentElement().childNodes().size();
    for (std::size_t i = 0; i < count; ++i) {
        xml::XmlNode root = document.documentElement();
        const xml::XmlNode child = childAt(root, i);
        if (!child || child.type() != xml::NodeType::Element) {
            continue;
        }
        const std::string code = child.getAttribute("f1");
        const std::string file = child.getAttribute("f2");
        if (base::upperCase(file) == base::upperCase(code + ".JPG")) {
            root.removeChild(child);
        }
        const xml::XmlNodeList equal = document.selectNodes("//p[@f1='" + code + "' and @f2='" + file + "']");
        for (std::size_t k = 2; k < equal.size(); ++k) {
            if (equal[k].parentNode() == root) {
                root.removeChild(equal[k]);
            }
        }
    }
}

class RandomDocument {
public:
    explicit RandomDocument(unsigned seed) : m_random(seed) {}

    std::string text() {
        std::string out = pick(20) == 0 ? "<p f1=\"A\" f2=\"x.jpg\">" : "<images>";
        const std::string end = out.starts_with("<p") ? "</p>" : "</images>";
        for (std::size_t n = pick(14); n > 0; --n) {
            out += node(2);
        }
        return out + end;
    }

private:
    std::size_t pick(std::size_t below) { return m_random() % below; }

    std::string attribute(const char* name, const char* const (&values)[5]) {
        return pick(12) == 0 ? "" : std::string(" ") + name + "=\"" + values[pick(5)] + "\"";
    }

    std::string node(int depth) {
        static constexpr const char* kCodes[] = {"A", "a", "B", "", "' or '1'='1"};
        static constexpr const char* kFiles[] = {"A.JPG", "a.jpg", "x.jpg", "", "' or '1'='1"};
        static constexpr const char* kRareCodes[] = {"A", "a", "B", "A", "O'N"};
        if (pick(15) == 0) {
            return "<!--note-->";
        }
        const std::string name = pick(12) == 0 ? "q" : "p";
        std::string out = "<" + name + attribute("f1", pick(10) == 0 ? kRareCodes : kCodes) + attribute("f2", kFiles);
        if (depth == 0 || pick(6) != 0) {
            return out + "/>";
        }
        out += ">";
        for (std::size_t n = pick(4); n > 0; --n) {
            out += node(depth - 1);
        }
        return out + "</" + name + ">";
    }

    std::mt19937 m_random;
};

TEST(LinkCleanUp, RemovesWhatTheLiteralModelRemoves) {
    constexpr int kDocuments = 10'000;
    fakes::FakeFileSystem fileSystem;
    fakes::FakeClock clock;
    fakes::FakeCodePage ansi;
    int failed = 0;
    for (unsigned seed = 0; seed < kDocuments; ++seed) {
        const std::string text = RandomDocument(seed).text();
        xml::XmlDocument model;
        ASSERT_TRUE(model.loadXml(text)) << text;
        bool modelFailed = false;
        try {
            literalCleanUp(model);
        } catch (const base::RuntimeError&) {
            modelFailed = true;
        }
        fileSystem.addFile("C:\\images.xml", text);
        images::LinkDocument document(images::LinkKind::Images, fileSystem, clock, ansi);
        document.open("C:\\");
        bool documentFailed = false;
        try {
            document.cleanUp([] { return true; });
        } catch (const base::RuntimeError&) {
            documentFailed = true;
        }
        ASSERT_EQ(document.xml(), model.xml()) << "from " << text;
        ASSERT_EQ(documentFailed, modelFailed) << "from " << text;
        failed += modelFailed ? 1 : 0;
    }
    EXPECT_GT(failed, 100); // invalid expressions were among them
    EXPECT_LT(failed, kDocuments / 2);
}

TEST(LinkCleanUp, StopsWhenTold) {
    fakes::FakeFileSystem fileSystem;
    fakes::FakeClock clock;
    fakes::FakeCodePage ansi;
    fileSystem.addFile("C:\\images.xml",
                       R"(<images><p f1="A" f2="A.JPG"/><p f1="B" f2="B.JPG"/><p f1="C" f2="C.JPG"/></images>)");
    images::LinkDocument document(images::LinkKind::Images, fileSystem, clock, ansi);
    document.open("C:\\");
    int children = 0;
    document.cleanUp([&] { return ++children < 2; });
    EXPECT_EQ(document.xml(), R"(<images><p f1="B" f2="B.JPG"/><p f1="C" f2="C.JPG"/></images>)");
}

} // namespace
