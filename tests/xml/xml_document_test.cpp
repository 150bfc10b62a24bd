// What the XML layer promises: which sources load and as what, what is written back, and how long nodes live.
#include "xml/support.h"

#include "xml/code_page.h"

#include <gmock/gmock.h>
#include <optional>
#include <string>

namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using xml::loaded;
using xml::XmlDocument;
using xml::XmlNode;

std::string utf16(std::u16string_view text, bool bigEndian) {
    std::string bytes;
    for (const char16_t unit : text) {
        const char low = static_cast<char>(unit & 0xFFU);
        const char high = static_cast<char>(unit >> 8U);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

TEST(XmlDocument, LoadsEveryEncodingAndWritesUtf8WithoutMark) {
    const struct {
        const char* name;
        std::string bytes;
        std::string text;
    } rows[] = {
        {"UTF-8", "<a b='\xC3\xA9'/>", "<a b=\"\xC3\xA9\"/>"},
        {"UTF-8 mark", "\xEF\xBB\xBF<a b='\xC3\xA9'/>", "<a b=\"\xC3\xA9\"/>"},
        {"ISO-8859-1", "<?xml version='1.0' encoding='ISO-8859-1'?><a b='\xE9'/>",
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a b=\"\xC3\xA9\"/>"},
        {"windows-1252", "<?xml version=\"1.0\" encoding=\"Windows-1252\" standalone=\"yes\"?><a b='\x80\x81\xE9'/>",
         "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<a b=\"\xE2\x82\xAC\xC2\x81\xC3\xA9\"/>"},
        {"UTF-16 little", utf16(u"\uFEFF<a b='\u00E9'/>", false), "<a b=\"\xC3\xA9\"/>"},
        {"UTF-16 big, declared", utf16(u"\uFEFF<?xml version='1.0' encoding='UTF-16'?><a b='\U0001F600'/>", true),
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a b=\"\xF0\x9F\x98\x80\"/>"},
        {"declaration without encoding", "<?xml version=\"1.0\"?>\n<a/>", "<?xml version=\"1.0\"?>\n<a/>"},
    };
    for (const auto& row : rows) {
        XmlDocument document;
        ASSERT_TRUE(document.load(row.bytes)) << row.name << ": " << document.parseError();
        EXPECT_EQ(document.xml(), row.text) << row.name;
    }
    XmlDocument long1252; // longer than the converter's buffer
    ASSERT_TRUE(
        long1252.load("<?xml version='1.0' encoding='windows-1252'?><a>" + std::string(70000, '\x80') + "</a>"));
    EXPECT_EQ(long1252.documentElement().text(), xml::fromWindows1252(std::string(70000, '\x80')));
}

TEST(XmlDocument, TextInMemoryIsUtf8WhateverItsDeclarationSays) {
    for (const auto* encoding : {"UTF-16", "windows-1252", "no-such-encoding"}) {
        XmlDocument document;
        ASSERT_TRUE(document.loadXml("<?xml version='1.0' encoding='"s + encoding + "'?><a b='\xC3\xA9'/>"))
            << encoding;
        EXPECT_EQ(document.xml(), "<?xml version=\"1.0\"?>\n<a b=\"\xC3\xA9\"/>") << encoding;
    }
}

TEST(XmlDocument, RefusesWhatIsNotWellFormedAndIsEmptyThen) {
    const auto nested = [](int depth) {
        std::string text;
        for (int i = 0; i < depth; ++i) {
            text += "<a>";
        }
        for (int i = 0; i < depth; ++i) {
            text += "</a>";
        }
        return text;
    };
    const std::pair<const char*, std::string> rows[] = {
        {"empty", ""},
        {"blank", "  \n"},
        {"cut off", "<a><b/>"},
        {"two roots", "<a/><b/>"},
        {"text after the root", "<a/>x"},
        {"duplicate attribute", "<a b='1' b='2'/>"},
        {"less-than in an attribute", "<a b='<'/>"},
        {"undefined entity", "<a>&e;</a>"},
        {"control character", "<a b='\x01'/>"},
        {"control character by number", "<a b='&#1;'/>"},
        {"null character", "<a>\0</a>"s},
        {"invalid UTF-8", "<a b='\xE9'/>"},
        {"surrogate", "<a b='\xED\xA0\x80'/>"},
        {"unknown encoding", "<?xml version='1.0' encoding='x-none'?><a/>"},
        {"declared UTF-16 but is not", "<?xml version='1.0' encoding='UTF-16'?><a/>"},
        {"too deep", nested(300)},
    };
    for (const auto& [name, bytes] : rows) {
        XmlDocument document = loaded("<old/>");
        const XmlNode old = document.documentElement();
        EXPECT_FALSE(document.load(bytes)) << name;
        EXPECT_THAT(document.parseError(), Not(IsEmpty())) << name;
        EXPECT_THAT(document.childNodes(), IsEmpty()) << name;
        EXPECT_EQ(document.xml(), "") << name;
        EXPECT_EQ(old.nodeName(), "old") << name;
    }
    EXPECT_TRUE(XmlDocument().load(nested(250)));
    XmlDocument document;
    EXPECT_FALSE(document.load("<a>\n<b></a>"));
    EXPECT_THAT(document.parseError(), HasSubstr("line 2"));
}

TEST(XmlDocument, WhiteSpaceOnlyTextDoesNotExistAndAllElseStaysInPlace) {
    const std::pair<const char*, const char*> rows[] = {
        {"<a>\n <b/>\n <c/>\n</a>", "<a><b/><c/></a>"},
        {"<a> </a>", "<a/>"},
        {"<a>x<b/> <b/> y</a>", "<a>x<b/><b/> y</a>"},
        {"<a>x<b> </b></a>", "<a>x<b/></a>"},
        {"<a>&#32;</a>", "<a/>"},
        {"<a> &amp; </a>", "<a> &amp; </a>"},
        {"<a> <!-- c --> <?p i?> </a>", "<a><!-- c --><?p i?></a>"},
        {"<a><![CDATA[ ]]></a>", "<a><![CDATA[ ]]></a>"},
        {"<!--1--> <a/> <!--2-->", "<!--1-->\n<a/>\n<!--2-->"},
        {"<a b=' &#10;&#9;\"'></a>", "<a b=\" &#10;&#9;&quot;\"/>"},
        {"<a b='>'>></a>", "<a b=\"&gt;\">&gt;</a>"},
    };
    for (const auto& [source, text] : rows) {
        EXPECT_EQ(loaded(source).xml(), text);
    }
    const std::string blanks(100000, ' ');
    EXPECT_EQ(loaded("<a>x<b>" + blanks + "</b></a>").xml(), "<a>x<b/></a>");
}

// Each entity is ten of the one before: followed, the last of 9 levels is 10^9 letters.
std::string bomb(int levels, std::string_view use) {
    std::string text = "<!DOCTYPE a [<!ENTITY e0 \"lol\">";
    for (int i = 1; i <= levels; ++i) {
        text += "<!ENTITY e" + std::to_string(i) + " \"";
        for (int k = 0; k < 10; ++k) {
            text += "&e" + std::to_string(i - 1) + ";";
        }
        text += "\">";
    }
    return text + "]>" + std::string(use);
}

TEST(XmlDocument, DeclaredEntitiesAreKeptAndNeverExpanded) {
    XmlDocument document = loaded(bomb(1, "<a>x&e1;y<b f1='1'/></a>"));
    EXPECT_EQ(document.documentElement().text(), "xy");
    EXPECT_THAT(document.xml(), HasSubstr("x&e1;y"));
    EXPECT_EQ(document.selectSingleNode("//b[../text()='x']").getAttribute("f1"), "1");
    EXPECT_FALSE(document.selectSingleNode("//a[contains(., 'lol')]"));
    XmlDocument copy = loaded("<c/>");
    EXPECT_EQ(copy.documentElement().appendChild(document.documentElement()).text(), "xy");

    document = loaded("<!DOCTYPE a [<!ENTITY e \"lol\">]><a b='1&e;2&lt;'/>");
    EXPECT_EQ(document.documentElement().getAttribute("b"), "12<");
    EXPECT_TRUE(document.selectSingleNode("a[@b='12<']"));
    EXPECT_FALSE(document.selectSingleNode("a[@b='1lol2<']"));
    EXPECT_THAT(document.xml(), HasSubstr("b=\"1&e;2&lt;\""));

    // Many levels: refused, or loaded in no time and without the text.
    for (const auto* use : {"<a>x&e9;</a>", "<a b='&e9;'/>"}) {
        if (document.load(bomb(9, use))) {
            EXPECT_LE(document.documentElement().text().size(), 1U);
            EXPECT_EQ(document.documentElement().getAttribute("b"), "");
        }
        EXPECT_TRUE(document.load(bomb(9, "<a/>")));
    }
}

TEST(XmlDocument, OtherFilesAreNeverRead) {
    XmlDocument document = loaded("<!DOCTYPE a SYSTEM 'file:///etc/passwd' [<!ENTITY e SYSTEM 'file:///etc/passwd'>]>"
                                  "<a>&e;</a>");
    EXPECT_EQ(document.documentElement().text(), "");
}

TEST(XmlDocument, RefusesADocumentTypeWhereTheCallerSaysSo) {
    for (const std::string& source : {"<!DOCTYPE a><a/>"s, "<!DOCTYPE a SYSTEM 'x'><a/>"s, bomb(1, "<a>&e1;</a>")}) {
        XmlDocument document;
        EXPECT_FALSE(document.load(source, xml::DocTypePolicy::Refuse));
        EXPECT_THAT(document.parseError(), HasSubstr("document type"));
        EXPECT_FALSE(document.documentElement());
        EXPECT_TRUE(document.load(source));
    }
    XmlDocument document;
    EXPECT_TRUE(document.loadXml("<a/>", xml::DocTypePolicy::Refuse));
}

} // namespace
