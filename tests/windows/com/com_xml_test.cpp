// The component's XML objects as compiled hosts call them.
#include "fakes/fake_file_system.h"
#include "windows/com/adopt.h"
#include "windows/com/automation_text.h"
#include "windows/com/com_support.h"
#include "windows/com/variant_conversion.h"
#include "windows/objects/xml_document_object.h"

#include <gtest/gtest.h>

#include <string>

namespace com_test {
namespace {

using Microsoft::WRL::ComPtr;
using windows::com::Bstr;
using windows::com::ScopedVariant;
using windows::com::XmlDocumentObject;

HRESULT failed(int number) {
    return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number);
}

std::string errorText() {
    ComPtr<IErrorInfo> info;
    Bstr text;
    if (GetErrorInfo(0, &info) == S_OK) {
        info->GetDescription(text.out());
    }
    return text.text();
}

class XmlObjects : public testing::Test {
protected:
    XmlObjects() { EXPECT_TRUE(load("<r><a i='1'>x</a><b i='2'><a i='3'/></b></r>")); }

    bool load(std::string_view text) const {
        VARIANT_BOOL done = VARIANT_FALSE;
        EXPECT_EQ(document->loadXML(Bstr(text).get(), &done), S_OK);
        return done == VARIANT_TRUE;
    }
    ComPtr<_XmlNode> select(std::string_view expression) const {
        ComPtr<_XmlNode> node;
        EXPECT_EQ(document->selectSingleNode(Bstr(expression).get(), &node), S_OK);
        return node;
    }
    [[nodiscard]] std::string xml() const {
        Bstr text;
        EXPECT_EQ(document->get_xml(text.out()), S_OK);
        return text.text();
    }

    fakes::FakeFileSystem files;
    std::shared_ptr<xml::XmlDocument> core = std::make_shared<xml::XmlDocument>();
    ComPtr<_XmlDocument> document = windows::com::adopt<_XmlDocument>(new XmlDocumentObject(core, files));
};

TEST_F(XmlObjects, ChangeTheirDocumentByNodesThatTheyHandOut) {
    ComPtr<_XmlNode> root;
    ComPtr<_XmlNode> made;
    ComPtr<_XmlNode> appended;
    ASSERT_EQ(document->get_documentElement(&root), S_OK);
    ASSERT_EQ(document->createElement(Bstr("c").get(), &made), S_OK);
    EXPECT_EQ(made->put_text(Bstr("<t>").get()), S_OK);
    VARIANT number;
    V_VT(&number) = VT_I2;
    V_I2(&number) = 7;
    EXPECT_EQ(made->setAttribute(Bstr("n").get(), number), S_OK);
    EXPECT_EQ(root->appendChild(made.Get(), &appended), S_OK);
    ComPtr<_XmlNode> taken;
    EXPECT_EQ(root->removeChild(select("r/a").Get(), &taken), S_OK);
    EXPECT_EQ(core->xml(), "<r><b i=\"2\"><a i=\"3\"/></b><c n=\"7\">&lt;t&gt;</c></r>");
    EXPECT_EQ(xml(), core->xml());

    EXPECT_EQ(made->removeAttribute(Bstr("n").get()), S_OK);
    EXPECT_EQ(made->removeAttribute(Bstr("n").get()), S_OK) << "gone already";
    EXPECT_FALSE(core->selectSingleNode("r/c/@n"));

    ScopedVariant present;
    ScopedVariant absent;
    EXPECT_EQ(taken->getAttribute(Bstr("i").get(), &present.get()), S_OK);
    EXPECT_EQ(windows::com::fromVariant(present.get()), base::Variant("1"));
    EXPECT_EQ(taken->getAttribute(Bstr("none").get(), &absent.get()), S_OK);
    EXPECT_EQ(V_VT(&absent.get()), VT_NULL);
}

TEST_F(XmlObjects, WhatIsNotThereIsNothing) {
    ComPtr<_XmlNode> node = select("r/none");
    EXPECT_FALSE(node);
    ComPtr<_XmlNodeList> list;
    ASSERT_EQ(document->selectNodes(Bstr("//a").get(), &list), S_OK);
    LONG length = 0;
    EXPECT_EQ(list->get_length(&length), S_OK);
    EXPECT_EQ(length, 2);
    for (const LONG index : {-1L, 2L, LONG_MIN, LONG_MAX}) {
        EXPECT_EQ(list->get_item(index, &node), S_OK) << index;
        EXPECT_FALSE(node) << index;
    }
    EXPECT_EQ(document->get_parentNode(&node), S_OK);
    EXPECT_FALSE(node);
    EXPECT_FALSE(load("<r>")) << "not well-formed";
    EXPECT_EQ(document->get_documentElement(&node), S_OK);
    EXPECT_FALSE(node);
    EXPECT_EQ(xml(), "");
}

TEST_F(XmlObjects, AListIsEnumeratedInAnyPortions) {
    ComPtr<_XmlNodeList> list;
    ComPtr<IUnknown> unknown;
    ComPtr<IEnumVARIANT> nodes;
    ASSERT_EQ(document->selectNodes(Bstr("//@i").get(), &list), S_OK);
    ASSERT_EQ(list->_NewEnum(&unknown), S_OK);
    ASSERT_EQ(unknown.As(&nodes), S_OK);
    const auto next = [](IEnumVARIANT& from, ULONG wanted) {
        std::vector<ScopedVariant> items(wanted);
        static_assert(sizeof(ScopedVariant) == sizeof(VARIANT));
        ULONG fetched = 99;
        const HRESULT result = from.Next(wanted, reinterpret_cast<VARIANT*>(items.data()), &fetched);
        std::string texts = result == S_OK ? "" : "end:";
        for (ULONG i = 0; i < fetched; ++i) {
            ComPtr<_XmlNode> node;
            Bstr text;
            V_DISPATCH(&items[i].get())->QueryInterface(IID_PPV_ARGS(&node));
            node->get_text(text.out());
            texts += text.text();
        }
        return texts;
    };
    EXPECT_EQ(next(*nodes.Get(), 2), "12");
    ComPtr<IEnumVARIANT> copy;
    EXPECT_EQ(nodes->Clone(&copy), S_OK);
    EXPECT_EQ(next(*nodes.Get(), 2), "end:3");
    EXPECT_EQ(next(*nodes.Get(), 1), "end:");
    EXPECT_EQ(next(*copy.Get(), 1), "3") << "a copy goes on by itself";
    EXPECT_EQ(nodes->Reset(), S_OK);
    EXPECT_EQ(nodes->Skip(1), S_OK);
    EXPECT_EQ(next(*nodes.Get(), 1), "2");
    EXPECT_EQ(nodes->Skip(2), S_FALSE);
    EXPECT_EQ(nodes->Next(2, nullptr, nullptr), E_POINTER);
}

TEST_F(XmlObjects, RefusalsSayWhyAndChangeNothing) {
    const std::string before = xml();
    ComPtr<_XmlNode> node;
    ComPtr<_XmlNode> root;
    ComPtr<_XmlNode> out;
    document->get_documentElement(&root);
    EXPECT_EQ(document->selectSingleNode(Bstr("//p[@f1='O'NEIL']").get(), &node), E_FAIL);
    EXPECT_NE(errorText().find("O'NEIL"), std::string::npos);
    EXPECT_EQ(document->createElement(Bstr("no name").get(), &node), failed(5));
    EXPECT_EQ(root->put_text(Bstr("\x01").get()), failed(5));
    EXPECT_EQ(document->put_text(Bstr("text").get()), failed(5)) << "a document holds no text itself";
    EXPECT_EQ(select("//b/a")->appendChild(root.Get(), &out), failed(5)) << "would hold itself";
    EXPECT_EQ(root->appendChild(nullptr, &out), failed(5));
    EXPECT_EQ(root->removeChild(select("//b/a").Get(), &out), failed(5)) << "not its child";
    EXPECT_EQ(root->appendChild(root.Get(), nullptr), E_POINTER);
    ScopedVariant null;
    V_VT(&null.get()) = VT_NULL;
    EXPECT_EQ(root->setAttribute(Bstr("n").get(), null.get()), failed(94));
    EXPECT_EQ(xml(), before);
}

TEST_F(XmlObjects, FilesAreReadAndReplacedAsTheFileSystemSays) {
    files.addFile("C:\\good.xml", "<?xml version='1.0' encoding='windows-1252'?><r a='\xE9'/>");
    files.addFile("C:\\bad.xml", "<r>");
    const auto loadFile = [&](std::string_view path, bool expected) {
        VARIANT_BOOL done = VARIANT_FALSE;
        const HRESULT result = document->load(Bstr(path).get(), &done);
        EXPECT_EQ(done == VARIANT_TRUE, expected) << path;
        return result;
    };
    EXPECT_EQ(loadFile("C:\\missing.xml", false), failed(53));
    EXPECT_EQ(core->documentElement().nodeName(), "r") << "an unreadable file changes nothing";
    EXPECT_EQ(loadFile("C:\\bad.xml", false), S_OK);
    EXPECT_EQ(xml(), "");
    EXPECT_EQ(loadFile("C:\\good.xml", true), S_OK);
    EXPECT_EQ(document->save(Bstr("C:\\saved.xml").get()), S_OK);
    EXPECT_EQ(files.contents("C:\\saved.xml"), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r a=\"\xC3\xA9\"/>");
    files.lock("C:\\saved.xml");
    EXPECT_EQ(document->save(Bstr("C:\\saved.xml").get()), failed(70));
    EXPECT_EQ(document->save(Bstr("C:\\no\\saved.xml").get()), failed(76));
}

TEST_F(XmlObjects, NodesOutliveTheirDocument) {
    ComPtr<_XmlNode> node = select("//b");
    document.Reset();
    core.reset();
    Bstr text;
    EXPECT_EQ(node->get_xml(text.out()), S_OK);
    EXPECT_EQ(text.text(), "<b i=\"2\"><a i=\"3\"/></b>");
}

} // namespace
} // namespace com_test
