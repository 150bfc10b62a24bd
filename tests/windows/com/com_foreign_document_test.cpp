// Documents that hosts hand over: the platform's own, ours, and objects that only look like documents.
#include "base/error_number.h"
#include "base/runtime_error.h"
#include "fakes/fake_file_system.h"
#include "windows/com/adopt.h"
#include "windows/com/com_support.h"
#include "windows/com/dispatch_object.h"
#include "windows/com/host_object.h"
#include "windows/com/quorvantisimage.h"
#include "windows/objects/foreign_document.h"
#include "windows/objects/xml_document_object.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace com_test {
namespace {

using base::Variant;
using Microsoft::WRL::ComPtr;
using windows::com::DispatchObject;
using windows::com::ForeignDocument;
using windows::com::fromHost;

// The platform's document.
class PlatformDocument : public testing::Test {
protected:
    PlatformDocument() {
        CLSID clsid{};
        EXPECT_EQ(CLSIDFromProgID(L"Msxml2.DOMDocument", &clsid), S_OK);
        EXPECT_EQ(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&dispatch)), S_OK);
        host = std::make_shared<DispatchObject>(dispatch);
    }
    void load(const std::string& text) const { EXPECT_EQ(host->call("loadXML", {text}), Variant(true)); }
    // What the document holds now, in our spelling.
    [[nodiscard]] std::string content() const { return ForeignDocument(host).read()->xml(); }

    ComApartment apartment;
    ComPtr<IDispatch> dispatch;
    std::shared_ptr<DispatchObject> host;
};

TEST_F(PlatformDocument, IsCopiedAndWhatIsSetOnTheCopyCanBeSetOnIt) {
    load("<commands><command name='a'/><group><command name='b' text='caf\xC3\xA9 &lt;'/></group></commands>");
    const auto [copy, original] = fromHost(dispatch.Get());
    ASSERT_TRUE(original);
    EXPECT_EQ(copy->selectSingleNode("//command[2]/@text | //group/command/@text").text(), "caf\xC3\xA9 <");
    original->setRootAttribute("profile", "1001");
    original->setCommandAttribute(1, "lastdate", "20261115 \"'<");
    EXPECT_EQ(content(), "<commands profile=\"1001\"><command name=\"a\"/><group><command name=\"b\" "
                         "text=\"caf\xC3\xA9 &lt;\" lastdate=\"20261115 &quot;'&lt;\"/></group></commands>");
    EXPECT_FALSE(copy->documentElement().hasAttribute("profile"));
    original->removeRootAttribute("profile");
    original->removeRootAttribute("profile");
    EXPECT_EQ(content().find("profile"), std::string::npos);
    EXPECT_EQ(base::errorNumber([&] { original->setCommandAttribute(2, "a", "b"); }), base::error::kObjectNotSet);
}

TEST_F(PlatformDocument, TakesResultsWhole) {
    const ForeignDocument foreign(host);
    xml::XmlDocument results;
    ASSERT_TRUE(results.load("<?xml version='1.0' encoding='ISO-8859-1'?><results><a b='\xE9'>&lt;</a></results>"));
    foreign.write(results);
    EXPECT_EQ(foreign.read()->documentElement().xml(), "<results><a b=\"\xC3\xA9\">&lt;</a></results>");
    foreign.write(xml::XmlDocument());
    EXPECT_EQ(content(), "");
}

TEST_F(PlatformDocument, WithoutContentIsAnEmptyDocument) {
    const auto [copy, original] = fromHost(dispatch.Get());
    ASSERT_TRUE(original);
    EXPECT_FALSE(copy->documentElement());
    EXPECT_EQ(base::errorNumber([&] { original->setRootAttribute("a", "b"); }), base::error::kObjectNotSet);
    EXPECT_EQ(base::errorNumber([&] { original->removeRootAttribute("a"); }), base::error::kObjectNotSet);
    EXPECT_EQ(base::errorNumber([&] { original->setCommandAttribute(0, "a", "b"); }), base::error::kObjectNotSet);
}

TEST(HostDocument, OursIsRecognisedAndNotCopied) {
    fakes::FakeFileSystem files;
    const auto document = std::make_shared<xml::XmlDocument>();
    const auto object = windows::com::adopt<IDispatch>(new windows::com::XmlDocumentObject(document, files));
    const auto [same, original] = fromHost(object.Get());
    EXPECT_EQ(same, document);
    EXPECT_FALSE(original);
    EXPECT_FALSE(fromHost(nullptr).document);
}

TEST(HostDocument, OursInAnotherApartmentIsForeignThere) {
    const ComApartment apartment;
    const Registered registered;
    ComPtr<_ucSendReceive> control;
    ComPtr<IDispatch> document;
    ComPtr<IStream> stream;
    ASSERT_EQ(CoCreateInstance(__uuidof(ucSendReceive), nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&control)), S_OK);
    ASSERT_EQ(control->get_domCommands(&document), S_OK);
    DispatchObject(document).call("loadXML", {std::string("<c><command/></c>")});
    ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(IID_IDispatch, document.Get(), &stream), S_OK);
    const DWORD mainThread = GetCurrentThreadId();
    std::string copied;
    std::thread other([&] {
        {
            const ComApartment second;
            ComPtr<IDispatch> proxy;
            CoGetInterfaceAndReleaseStream(stream.Detach(), IID_PPV_ARGS(&proxy));
            const auto [copy, original] = fromHost(proxy.Get());
            copied = copy->xml();
            if (original) {
                original->setCommandAttribute(0, "from", "afar");
            }
        }
        PostThreadMessageW(mainThread, WM_QUIT, 0, 0);
    });
    pumpUntilEnd(other);
    EXPECT_EQ(copied, "<c><command/></c>");
    EXPECT_EQ(DispatchObject(document).get("xml"), Variant("<c><command from=\"afar\"/></c>"));
}

TEST(HostDocument, AScriptsObjectWillDoIfItHasTheMembers) {
    const ComApartment apartment;
    JScript script;
    const auto [copy, original] = fromHost(
        script
            .object(L"(function () { var root = { log: '', setAttribute: function (n, v) { this.log += n + '=' "
                    L"+ v + ';'; } }; return { xml: '<c><command/></c>', documentElement: root, selectNodes: "
                    L"function (e) { return { item: function (i) { return root; } }; } }; })()")
            .Get());
    ASSERT_TRUE(original);
    EXPECT_EQ(copy->xml(), "<c><command/></c>");
    EXPECT_EQ(base::errorNumber([&] { original->setRootAttribute("a", "1"); }), 0);
    EXPECT_EQ(base::errorNumber([&] { original->setCommandAttribute(0, "b", "2"); }), 0);
}

TEST(HostDocument, WhatOnlyLooksLikeADocumentRaisesWhatIsWrongWithIt) {
    struct Row {
        const char* name;
        Variant xml;
        std::int32_t failure; // of every member
        std::int32_t expected;
    };
    const Row rows[] = {
        {"not XML", std::string("<r>"), 0, base::error::kUnspecified},
        {"a number", 12, 0, base::error::kUnspecified},
        {"Empty is blank", base::Empty{}, 0, 0},
        {"Null", base::Null{}, 0, 94},
        {"an object", base::ObjectRef(), 0, base::error::kTypeMismatch},
        {"raises", std::string("<r/>"), 1234, 1234},
    };
    for (const Row& row : rows) {
        const auto fake = std::make_shared<fakes::FakeLateBound>();
        fake->addProperty("xml", row.xml);
        fake->failOn("xml", row.failure);
        EXPECT_EQ(base::errorNumber([&] { static_cast<void>(ForeignDocument(fake).read()); }), row.expected)
            << row.name;
    }
    const auto fake = std::make_shared<fakes::FakeLateBound>();
    ForeignDocument document(fake);
    xml::XmlDocument content;
    ASSERT_TRUE(content.loadXml("<r/>"));
    EXPECT_EQ(base::errorNumber([&] { static_cast<void>(document.read()); }), base::error::kNoSuchMember);
    EXPECT_EQ(base::errorNumber([&] { document.setRootAttribute("a", "b"); }), base::error::kNoSuchMember);
    fake->addProperty("documentElement", std::string("r"));
    EXPECT_EQ(base::errorNumber([&] { document.setRootAttribute("a", "b"); }), base::error::kTypeMismatch);
    fake->addMethod("loadXML", [](const std::vector<Variant>&) { return Variant(false); });
    EXPECT_EQ(base::errorNumber([&] { document.write(content); }), base::error::kUnspecified);
}

} // namespace
} // namespace com_test
