// The link document's searches against the XPath expressions that they stand for, on many random documents.
#include "fakes/fake_clock.h"
#include "fakes/fake_code_page.h"
#include "fakes/fake_file_system.h"
#include "images/link_document.h"
#include "images/link_searches.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace {

using images::LinkDocument;
using images::LinkKind;

class RandomLinks {
public:
    explicit RandomLinks(std::uint32_t seed) : m_random(seed) {}

    std::size_t below(std::size_t limit) { return m_random() % limit; }

    // Few different values, so that duplicates and near misses are frequent.
    std::string value() {
        static const std::vector<std::string> kValues{"A",      "B",           "AB",  "",  "a",  "\xC3\xA9",   "A\"B",
                                                      "O'NEIL", "' or '1'='1", "A&B", "<", " A", "'] | //q['", "\x01"};
        return kValues[below(kValues.size())];
    }

    std::string document() {
        static const char* const kRoots[] = {"images", "images", "rtf", "p", "other", "images xmlns='u'"};
        m_text = below(3) == 0 ? "<!DOCTYPE images [<!ENTITY e 'A'>]>" : "";
        m_hasEntity = !m_text.empty();
        const std::string root = kRoots[below(std::size(kRoots))];
        element(root, 0);
        return m_text;
    }

private:
    void element(const std::string& tag, int depth) {
        m_text += "<" + tag;
        for (const auto* name : {"f1", "f2", "f3"}) {
            if (below(6) != 0) {
                attribute(name);
            }
        }
        m_text += ">";
        for (std::size_t i = below(depth == 0 ? 12 : 3); i > 0 && depth < 4; --i) {
            static const char* const kTags[] = {"p", "p", "p", "p", "q", "p xmlns='u'"};
            element(kTags[below(std::size(kTags))], depth + 1);
        }
        m_text += "</" + tag.substr(0, tag.find(' ')) + ">";
    }

    void attribute(const std::string& name) {
        std::string escaped;
        for (const char c : below(4) == 0 && name == "f3" ? "deleted" : value()) {
            escaped += c == '&'      ? "&amp;"
                       : c == '<'    ? "&lt;"
                       : c == '"'    ? "&quot;"
                       : c == '\x01' ? ""
                                     : std::string(1, c);
        }
        m_text += " " + name + "=\"" + escaped + (m_hasEntity && below(5) == 0 ? "&e;" : "") + "\"";
    }

    std::mt19937 m_random;
    std::string m_text;
    bool m_hasEntity = false;
};

TEST(LinkIndex, AnswersAsTheExpressionsDoWhileLinksComeAndGo) {
    fakes::FakeFileSystem files;
    fakes::FakeClock clock;
    fakes::FakeCodePage ansi;
    for (std::uint32_t seed = 0; seed < 2000; ++seed) {
        RandomLinks random(seed);
        const LinkKind kind = random.below(2) == 0 ? LinkKind::Images : LinkKind::Specifications;
        files.addFile("C:\\h\\images.xml", random.document());
        files.addFile("C:\\h\\rtf.xml", files.contents("C:\\h\\images.xml"));
        LinkDocument links(kind, files, clock, ansi);
        links.open("C:\\h\\");
        for (int step = 0; step < 8; ++step) {
            const std::string code = random.value();
            const std::string file = random.value();
            ASSERT_EQ(link_searches::difference(links, kind, code, file), "")
                << "seed " << seed << ", \"" << code << "\", \"" << file << "\": " << links.xml();
            try {
                if (random.below(2) == 0) {
                    // f4 tells the links apart.
                    links.add(code, file, std::to_string(step));
                } else {
                    links.remove(links.findLinkAnywhere(code, file));
                }
            } catch (const base::RuntimeError&) { // a foreign root, an invalid expression, a forbidden character
            }
        }
    }
}

// Long chains, growth and room taken back: one code with all links, files added and removed many times over.
TEST(LinkIndex, StaysRightAndSmallOverManyAdditionsAndRemovals) {
    fakes::FakeFileSystem files;
    fakes::FakeClock clock;
    fakes::FakeCodePage ansi;
    files.addFolder("C:\\h");
    LinkDocument links(LinkKind::Images, files, clock, ansi);
    links.open("C:\\h\\");
    std::vector<std::string> expected;
    std::mt19937 random(1);
    for (int i = 0; i < 20000; ++i) {
        if (expected.size() < 300 || random() % 2 == 0) {
            expected.push_back(std::to_string(i));
            links.add("CODE", expected.back());
        } else {
            const auto victim = expected.begin() + static_cast<std::ptrdiff_t>(random() % expected.size());
            const images::Link link = links.findLinkAnywhere("CODE", *victim);
            links.remove(link);
            ASSERT_EQ(link.status(), "deleted");
            expected.erase(victim);
        }
        if (i % 1000 == 0) {
            ASSERT_EQ(links.linkedFiles("CODE"), expected);
        }
    }
    EXPECT_EQ(links.linkedFiles("CODE"), expected);
    xml::XmlDocument model;
    ASSERT_TRUE(model.loadXml(links.xml()));
    EXPECT_EQ(model.documentElement().childNodes().size(), expected.size());
}

} // namespace
