// Nodes: reading and changing them, expressions, moving and copying, and how long they live.
#include "xml/support.h"

#include <gmock/gmock.h>
#include <string>

namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using xml::loaded;
using xml::NodeType;
using xml::XmlDocument;
using xml::XmlNode;

TEST(XmlNode, ReadsNodesOfEveryKind) {
    XmlDocument document =
        loaded("<!DOCTYPE r><!--c--><r xmlns:n='u' z='1' n:a='2'><?pi data?><n:e>t<![CDATA[<]]></n:e></r>");
    std::string kinds;
    for (const XmlNode& node : document.childNodes()) {
        kinds += node.nodeName() + "|" + node.text() + ";";
    }
    EXPECT_EQ(kinds, "r|;#comment|c;r|t<;");
    XmlNode root = document.documentElement();
    EXPECT_THAT(root.attributes(), ElementsAre(xml::Attribute{"z", "1"}, xml::Attribute{"n:a", "2"}));
    EXPECT_EQ(root.getAttribute("n:a"), "2");
    EXPECT_FALSE(root.hasAttribute("a"));
    EXPECT_EQ(root.firstChild().type(), NodeType::ProcessingInstruction);
    EXPECT_EQ(root.lastChild().nodeName(), "n:e");
    EXPECT_EQ(root.lastChild().lastChild().nodeName(), "#cdata-section");
    EXPECT_EQ(root.lastChild().previousSibling(), root.firstChild());
    EXPECT_EQ(root.parentNode(), document.node());
    EXPECT_FALSE(document.node().parentNode());

    const XmlNode attribute = document.selectSingleNode("r/@z");
    EXPECT_EQ(attribute.nodeName() + "=" + attribute.text(), "z=1");
    EXPECT_FALSE(attribute.nextSibling());
    EXPECT_FALSE(attribute.parentNode());

    XmlNode none;
    EXPECT_EQ(none.nodeName() + none.text() + none.xml() + none.getAttribute("z"), "");
    EXPECT_FALSE(none.firstChild() || none.nextSibling() || none.parentNode() || none.selectSingleNode("*"));
    EXPECT_THAT(none.childNodes(), IsEmpty());
    EXPECT_EQ(base::errorNumber([&] { none.setAttribute("a", ""); }), base::error::kObjectNotSet);
    EXPECT_EQ(base::errorNumber([&] { none.appendChild(root); }), base::error::kObjectNotSet);
    EXPECT_FALSE(none.removeChild(none));
}

TEST(XmlNode, RefusesWhatXmlCannotHoldBeforeAnythingChanges) {
    XmlDocument document = loaded("<a b='old'/>");
    XmlNode root = document.documentElement();
    const std::pair<const char*, std::string_view> values[] = {
        {"null", "x\0"sv},          {"control", "\x1F"},
        {"bell", "a\x07"},          {"lone surrogate", "\xED\xB0\x80"},
        {"U+FFFE", "\xEF\xBF\xBE"}, {"U+FFFF", "\xEF\xBF\xBF"},
        {"overlong", "\xC0\x80"},   {"cut off", "\xE2\x82"}};
    for (const auto& [name, value] : values) {
        EXPECT_EQ(base::errorNumber([&, v = value] { root.setAttribute("b", v); }), 5) << name;
    }
    for (const std::string_view name : {""sv, "1a"sv, "a b"sv, "a\0b"sv, "\xED\xA0\x80"sv, "<"sv}) {
        EXPECT_EQ(base::errorNumber([&] { root.setAttribute(name, "x"); }), 5) << name;
        EXPECT_EQ(base::errorNumber([&] { static_cast<void>(document.createElement(name)); }), 5) << name;
    }
    EXPECT_EQ(document.xml(), "<a b=\"old\"/>");

    const std::string hard = "\t\n\r <>&\"' \xC2\x80\x7F\xF0\x9F\x98\x80 " + std::string(10000, 'x');
    root.setAttribute("b", hard);
    EXPECT_EQ(root.getAttribute("b"), hard);
    EXPECT_EQ(loaded(document.xml()).documentElement().getAttribute("b"), hard);
}

TEST(XmlNode, ATextTakesThePlaceOfAllThatAnElementHolds) {
    XmlDocument document = loaded("<r a='1'>x<b>y</b><!--z--></r>");
    XmlNode root = document.documentElement();
    XmlNode b = root.selectSingleNode("b");
    root.setText("<&>");
    EXPECT_EQ(document.xml(), "<r a=\"1\">&lt;&amp;&gt;</r>");
    EXPECT_EQ(b.xml(), "<b>y</b>") << "what was inside lives on";
    EXPECT_EQ(base::errorNumber([&] { root.setText("\x01"); }), 5);
    EXPECT_EQ(base::errorNumber([&] { root.firstChild().setText("t"); }), 5) << "not an element";
    root.setText("");
    EXPECT_EQ(document.xml(), "<r a=\"1\"/>");
    root.appendChild(b);
    EXPECT_EQ(document.xml(), "<r a=\"1\"><b>y</b></r>");
}

TEST(XmlNode, ExpressionsSelectInDocumentOrderOrSayWhatIsWrong) {
    XmlDocument document = loaded("<r><a i='1'/><b i='2'><a i='3'/></b><a i='4'/></r>");
    const auto select = [&](std::string_view expression) {
        std::string ids;
        for (const XmlNode& node : document.selectNodes(expression)) {
            ids += node.getAttribute("i");
        }
        return ids;
    };
    EXPECT_EQ(select("r/a"), "14");
    EXPECT_EQ(select("//a"), "134");
    EXPECT_EQ(select("//b | //a[@i='4'] | //a[@i='1']"), "124");
    EXPECT_EQ(document.documentElement().selectSingleNode("b/a").getAttribute("i"), "3");
    EXPECT_THAT(document.selectNodes("//namespace::*"), IsEmpty());

    const std::string parentheses(10000, '(');
    for (const std::string& bad : {"r["s, "//p[@f1='O'NEIL']"s, "count(//a)"s, "'text'"s, "unknown()"s, ""s, "r\0"s,
                                   "a[@b='\x01']"s, parentheses}) {
        try {
            static_cast<void>(document.selectNodes(bad));
            ADD_FAILURE() << bad;
        } catch (const base::RuntimeError& e) {
            EXPECT_EQ(e.number(), base::error::kUnspecified) << bad;
            EXPECT_THAT(e.description(), Not(IsEmpty())) << bad;
        }
    }
}

TEST(XmlNode, MovesWithinATreeAndCopiesBetweenTrees) {
    XmlDocument document = loaded("<r><a>x</a><b/></r>");
    XmlDocument other = loaded("<o><c d='1'>t</c></o>");
    XmlNode root = document.documentElement();
    XmlNode a = root.firstChild();
    XmlNode b = root.lastChild();

    EXPECT_EQ(b.appendChild(a), a);
    XmlNode imported = a.appendChild(other.documentElement().firstChild());
    imported.setAttribute("d", "2");
    EXPECT_EQ(document.xml(), "<r><b><a>x<c d=\"2\">t</c></a></b></r>");
    EXPECT_EQ(other.xml(), "<o><c d=\"1\">t</c></o>");

    // A text that lands beside another text stays a node of its own: its handle must not die.
    XmlNode text = imported.firstChild();
    a.removeChild(imported);
    XmlNode x = a.firstChild();
    a.appendChild(text);
    EXPECT_EQ(x.text() + "|" + text.text() + "|" + a.text(), "x|t|xt");

    EXPECT_EQ(base::errorNumber([&] { a.appendChild(root); }), 5) << "would hold itself";
    EXPECT_EQ(base::errorNumber([&] { a.appendChild(a); }), 5);
    EXPECT_EQ(base::errorNumber([&] { text.appendChild(b); }), 5);
    EXPECT_EQ(base::errorNumber([&] { a.appendChild(document.node()); }), 5);
    EXPECT_EQ(base::errorNumber([&] { a.appendChild(XmlNode()); }), 5);
    EXPECT_EQ(base::errorNumber([&] { document.node().appendChild(document.createElement("second")); }), 5);
    EXPECT_EQ(base::errorNumber([&] { root.removeChild(a); }), 5) << "not its child";
    EXPECT_EQ(document.xml(), "<r><b><a>xt</a></b></r>");

    XmlDocument fresh;
    XmlNode documentNode = fresh.node();
    documentNode.appendChild(fresh.createElement("r"));
    EXPECT_EQ(fresh.xml(), "<r/>");
    documentNode.removeChild(fresh.documentElement());
    EXPECT_EQ(fresh.xml(), "");
}

TEST(XmlNode, OutlivesItsRemovalItsDocumentAndTheNextLoad) {
    XmlNode removed;
    XmlNode nested;
    {
        XmlDocument document = loaded("<r><a i='1'><b i='2'/></a><c/></r>");
        XmlNode root = document.documentElement();
        removed = root.removeChild(root.firstChild());
        nested = removed.firstChild();
        EXPECT_FALSE(removed.parentNode());
        XmlNode never = document.createElement("never-attached");
        ASSERT_TRUE(document.load("<new/>"));
        EXPECT_EQ(root.xml(), "<r><c/></r>");
        EXPECT_EQ(never.nodeName(), "never-attached");
        EXPECT_FALSE(document.owns(root));
        // A node that the load left behind comes back as a copy.
        XmlNode copy = document.documentElement().appendChild(removed);
        EXPECT_NE(copy, removed);
    }
    removed.setAttribute("i", "3");
    EXPECT_EQ(removed.xml(), "<a i=\"3\"><b i=\"2\"/></a>");
    EXPECT_EQ(nested.parentNode(), removed);
    removed.removeChild(nested);
    removed.appendChild(nested);
    nested = {};
    EXPECT_EQ(removed.selectSingleNode("b").getAttribute("i"), "2");
}

} // namespace
