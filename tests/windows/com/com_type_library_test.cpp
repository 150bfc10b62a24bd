// The type library as compiled hosts rely on it: identifiers, slots and flags must never change.
#include "windows/com/com_support.h"

#include "base/runtime_error.h"
#include "windows/com/quorvantisimage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace com_test {
namespace {

using Microsoft::WRL::ComPtr;

struct Attributes {
    explicit Attributes(ComPtr<ITypeInfo> of) : info(std::move(of)) { info->GetTypeAttr(&value); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    ~Attributes() { info->ReleaseTypeAttr(value); }
    ComPtr<ITypeInfo> info;
    TYPEATTR* value = nullptr;
};

std::string textOf(const GUID& guid) {
    wchar_t wide[39];
    StringFromGUID2(guid, wide, 39);
    const std::wstring text = wide;
    return {text.begin(), text.end()};
}

struct Documentation {
    std::string name;
    std::string help;
};

// Of a library (-1: its own) or of a type (MEMBERID_NIL: its own).
template <typename Documented>
Documentation documentationOf(Documented& documented, int member) {
    BSTR name = nullptr;
    BSTR help = nullptr;
    documented.GetDocumentation(member, &name, &help, nullptr, nullptr);
    Documentation result;
    result.name.assign(name, name + SysStringLen(name));
    result.help.assign(help, help + SysStringLen(help));
    SysFreeString(name);
    SysFreeString(help);
    return result;
}

std::string nameOf(ITypeInfo& info, MEMBERID member) {
    return documentationOf(info, member).name;
}

// "get ProductCode 1 @7": what it does, its name, its id, its slot in the virtual table.
std::vector<std::string> membersOf(ITypeInfo& info, const TYPEATTR& attributes) {
    std::vector<std::string> members;
    for (UINT i = 0; i < attributes.cFuncs; ++i) {
        FUNCDESC* function = nullptr;
        info.GetFuncDesc(i, &function);
        const char* kind = function->invkind == INVOKE_PROPERTYGET      ? "get "
                           : function->invkind == INVOKE_PROPERTYPUT    ? "put "
                           : function->invkind == INVOKE_PROPERTYPUTREF ? "putref "
                                                                        : "call ";
        members.push_back(kind + nameOf(info, function->memid) + " " + std::to_string(function->memid) + " @" +
                          std::to_string(static_cast<std::size_t>(function->oVft) / sizeof(void*)));
        info.ReleaseFuncDesc(function);
    }
    return members;
}

using Constants = std::map<std::string, long>;

Constants constantsOf(ITypeInfo& info, const TYPEATTR& attributes) {
    Constants constants;
    for (UINT i = 0; i < attributes.cVars; ++i) {
        VARDESC* constant = nullptr;
        info.GetVarDesc(i, &constant);
        constants[nameOf(info, constant->memid)] = V_I4(constant->lpvarValue);
        info.ReleaseVarDesc(constant);
    }
    return constants;
}

class TypeLibrary : public testing::Test {
protected:
    TypeLibrary() { LoadTypeLibEx(dllPath().c_str(), REGKIND_NONE, &library); }

    std::vector<ComPtr<ITypeInfo>> types() const {
        std::vector<ComPtr<ITypeInfo>> all(library->GetTypeInfoCount());
        for (UINT i = 0; i < all.size(); ++i) {
            library->GetTypeInfo(i, &all[i]);
        }
        return all;
    }

    ComPtr<ITypeInfo> typeOf(REFGUID guid) const {
        ComPtr<ITypeInfo> type;
        library->GetTypeInfoOfGuid(guid, &type);
        return type;
    }

    // The interface half of a dual interface, which alone has the flags of the interface.
    ComPtr<ITypeInfo> interfaceHalf(REFIID iid) const {
        const ComPtr<ITypeInfo> dispatch = typeOf(iid);
        HREFTYPE reference = 0;
        ComPtr<ITypeInfo> result;
        dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference);
        dispatch->GetRefTypeInfo(reference, &result);
        return result;
    }

    ComApartment apartment;
    ComPtr<ITypeLib> library;
};

TEST_F(TypeLibrary, IsNamedAndVersionedAsHostsReferToIt) {
    ASSERT_TRUE(library);
    TLIBATTR* attributes = nullptr;
    ASSERT_EQ(library->GetLibAttr(&attributes), S_OK);
    EXPECT_EQ(textOf(attributes->guid), "{DC824E71-183A-45B1-9128-FD5880046AC7}");
    EXPECT_EQ(attributes->lcid, 0x409U);
    EXPECT_EQ(attributes->wMajorVerNum, 1);
    EXPECT_EQ(attributes->wMinorVerNum, 0);
    EXPECT_EQ(attributes->syskind, sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32);
    library->ReleaseTLibAttr(attributes);
    EXPECT_EQ(documentationOf(*library.Get(), -1).name, "QuorvantisImage");
}

TEST_F(TypeLibrary, InterfacesKeepTheirIdentifiersFlagsAndSlots) {
    struct Row {
        const char* name;
        IID iid;
        const char* guid;
        std::vector<std::string> members;
    };
    const Row rows[] = {
        {"_clsQVI_Link",
         __uuidof(_clsQVI_Link),
         "{1A80D469-410C-48CE-B824-C112BF629BB6}",
         {"get ProductCode 1 @7", "put ProductCode 1 @8", "get ImagesFile 2 @9", "put ImagesFile 2 @10",
          "get DeleteLink 3 @11", "put DeleteLink 3 @12", "get NewImageFile 4 @13", "put NewImageFile 4 @14",
          "get gQuorVantisPath 5 @15", "put gQuorVantisPath 5 @16", "get gWebAddress 6 @17", "put gWebAddress 6 @18",
          "get gProfileNumber 7 @19", "put gProfileNumber 7 @20", "get gSettingString 8 @21",
          "put gSettingString 8 @22", "call ShowForm 9 @23", "call ShowFormSendReceive 10 @24"}},
        {"_clsQVI_Globals",
         __uuidof(_clsQVI_Globals),
         "{1DFAAB92-58D1-46E9-B5FF-F92774115194}",
         {"get gProfileNumber 1 @7", "put gProfileNumber 1 @8", "get gQuorVantisPath 2 @9", "put gQuorVantisPath 2 @10",
          "get gWebService 3 @11", "put gWebService 3 @12", "get gSettingString 4 @13", "put gSettingString 4 @14",
          "call GetValue 5 @15"}},
        {"_XmlNode",
         __uuidof(_XmlNode),
         "{2DE0049C-AE62-4AE4-870F-33B56155C2A6}",
         {"get nodeName 1 @7", "get text 2 @8", "put text 2 @9", "get xml 3 @10", "get parentNode 4 @11",
          "get childNodes 5 @12", "call selectSingleNode 6 @13", "call selectNodes 7 @14", "call appendChild 8 @15",
          "call removeChild 9 @16", "call getAttribute 10 @17", "call setAttribute 11 @18",
          "call removeAttribute 12 @19"}},
        {"_XmlNodeList",
         __uuidof(_XmlNodeList),
         "{9BD898E8-B8BD-49AD-BBC4-37FFEF27C243}",
         {"get length 1 @7", "get item 0 @8", "call _NewEnum -4 @9"}},
        {"_XmlDocument",
         __uuidof(_XmlDocument),
         "{C8FD2B37-C77B-4E8C-B3DE-30B65BD57556}",
         {"get nodeName 1 @7", "get text 2 @8", "put text 2 @9", "get xml 3 @10", "get parentNode 4 @11",
          "get childNodes 5 @12", "call selectSingleNode 6 @13", "call selectNodes 7 @14", "call appendChild 8 @15",
          "call removeChild 9 @16", "get documentElement 10 @17", "call createElement 11 @18", "call loadXML 12 @19",
          "call load 13 @20", "call save 14 @21"}},
        {"_ucSendReceive",
         __uuidof(_ucSendReceive),
         "{E2B79CE8-AF6D-4C2A-B798-7AC06BDC39D7}",
         {"get domCommands 1 @7",
          "put domCommands 1 @8",
          "putref domCommands 1 @9",
          "get Globals 2 @10",
          "put Globals 2 @11",
          "putref Globals 2 @12",
          "get sWebAddress 3 @13",
          "put sWebAddress 3 @14",
          "get bLoginNotRequired 4 @15",
          "put bLoginNotRequired 4 @16",
          "get gUsingAlternate 5 @17",
          "put gUsingAlternate 5 @18",
          "get Account 6 @19",
          "put Account 6 @20",
          "putref Account 6 @21",
          "call SetDownloadVisible 7 @22",
          "call LoadfrmDial 8 @23",
          "call DownloadFile 9 @24",
          "call SendReceive 10 @25",
          "call LoadCommands 11 @26",
          "call SetMessage 12 @27",
          "call SetProgressBar 13 @28",
          "call SetProgressBarMax 14 @29",
          "call SetProgressBarMinimum 15 @30",
          "call DownloadUpgrade 16 @31",
          "call DisconnectFromInternet 17 @32",
          "call Setcolors 18 @33",
          "call UserControl_SetImage 19 @34",
          "call CheckForFileDownloads 20 @35",
          "call RunSetup 21 @36",
          "call SetHTTPSettings 22 @37",
          "call WriteSingleLog 23 @38"}},
        {"_clsCABFile",
         __uuidof(_clsCABFile),
         "{CA7616A2-18E3-4A84-9459-A8D202C3F904}",
         {"get CabName 1 @7", "put CabName 1 @8", "get FileCount 2 @9", "call Extract 3 @10", "call GetInfo 4 @11",
          "call GetXML 5 @12", "call SetuAPIisPresent 6 @13"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Attributes attributes(interfaceHalf(row.iid));
        EXPECT_EQ(nameOf(*attributes.info.Get(), MEMBERID_NIL), row.name);
        EXPECT_EQ(textOf(attributes.value->guid), row.guid);
        EXPECT_EQ(attributes.value->wTypeFlags, TYPEFLAG_FHIDDEN | TYPEFLAG_FDUAL | TYPEFLAG_FNONEXTENSIBLE |
                                                    TYPEFLAG_FOLEAUTOMATION | TYPEFLAG_FDISPATCHABLE);
        EXPECT_EQ(membersOf(*attributes.info.Get(), *attributes.value), row.members);
    }
}

TEST_F(TypeLibrary, GetValueTakesAVariantByReferenceAndReturnsOne) {
    const Attributes attributes(interfaceHalf(__uuidof(_clsQVI_Globals)));
    FUNCDESC* function = nullptr;
    ASSERT_EQ(attributes.info->GetFuncDesc(8, &function), S_OK);
    ASSERT_EQ(function->cParams, 2);
    const ELEMDESC& name = function->lprgelemdescParam[0];
    EXPECT_EQ(name.tdesc.vt, VT_PTR);
    EXPECT_EQ(name.tdesc.lptdesc->vt, VT_VARIANT);
    EXPECT_EQ(name.paramdesc.wParamFlags, PARAMFLAG_FIN | PARAMFLAG_FOUT);
    EXPECT_EQ(function->lprgelemdescParam[1].paramdesc.wParamFlags, PARAMFLAG_FOUT | PARAMFLAG_FRETVAL);
    attributes.info->ReleaseFuncDesc(function);
}

TEST_F(TypeLibrary, ClassesAreCreatableWithTheirDefaultInterface) {
    const std::pair<CLSID, const char*> classes[] = {
        {__uuidof(clsQVI_Link), "{163D87C8-36B0-481C-873F-8AEDC4846B6A}"},
        {__uuidof(clsQVI_Globals), "{B7432407-26C8-4C9D-A338-DA4A68149CD8}"},
        {__uuidof(ucSendReceive), "{09989595-8470-4B41-9273-E1F56ACD064B}"},
        {__uuidof(clsCABFile), "{E8F584F4-8397-47C8-8989-BAE973FE49A6}"},
    };
    for (const auto& [clsid, guid] : classes) {
        const ComPtr<ITypeInfo> info = typeOf(clsid);
        ASSERT_TRUE(info);
        const Attributes attributes(info);
        EXPECT_EQ(textOf(attributes.value->guid), guid);
        EXPECT_EQ(attributes.value->typekind, TKIND_COCLASS);
        EXPECT_EQ(attributes.value->wTypeFlags & (TYPEFLAG_FCANCREATE | TYPEFLAG_FHIDDEN), TYPEFLAG_FCANCREATE);
        INT flags = 0;
        EXPECT_EQ(info->GetImplTypeFlags(0, &flags), S_OK);
        EXPECT_EQ(flags, IMPLTYPEFLAG_FDEFAULT);
    }
}

TEST_F(TypeLibrary, EventsKeepTheirNumbersAndTheirClassesAreTheSources) {
    struct Row {
        CLSID source;
        IID events;
        const char* guid;
        std::vector<std::string> members;
    };
    const Row rows[] = {
        {__uuidof(ucSendReceive),
         __uuidof(__ucSendReceive),
         "{51757839-AEAB-4367-9539-2B6FF3BEACF7}",
         {"call DownloadComplete 1 @0", "call DownloadStart 2 @0", "call Cancelled 3 @0",
          "call SendReceiveCompleted 4 @0", "call CloseQuorVantis 5 @0", "call OpenfrmOptions 6 @0",
          "call RegisterServer 7 @0", "call UnregisterServer 8 @0"}},
        {__uuidof(clsCABFile),
         __uuidof(__clsCABFile),
         "{42D20C3A-F7D5-416D-A73D-1A9FC7E43E4D}",
         {"call FileFound 1 @0", "call BeforeExtract 2 @0", "call AfterExtract 3 @0"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.guid);
        const ComPtr<ITypeInfo> events = typeOf(row.events);
        ASSERT_TRUE(events);
        const Attributes attributes(events);
        EXPECT_EQ(textOf(attributes.value->guid), row.guid);
        EXPECT_EQ(membersOf(*events.Get(), *attributes.value), row.members);
        const ComPtr<ITypeInfo> source = typeOf(row.source);
        ASSERT_TRUE(source);
        INT flags = 0;
        EXPECT_EQ(source->GetImplTypeFlags(1, &flags), S_OK);
        EXPECT_EQ(flags, IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE);
        HREFTYPE reference = 0;
        ComPtr<ITypeInfo> named;
        EXPECT_EQ(source->GetRefTypeOfImplType(1, &reference), S_OK);
        EXPECT_EQ(source->GetRefTypeInfo(reference, &named), S_OK);
        EXPECT_EQ(textOf(Attributes(named).value->guid), row.guid);
    }
}

TEST_F(TypeLibrary, AnObjectBrowserHasAHelpTextForEverything) {
    EXPECT_NE(documentationOf(*library.Get(), -1).help, "");
    for (const ComPtr<ITypeInfo>& type : types()) {
        const auto [name, help] = documentationOf(*type.Get(), MEMBERID_NIL);
        EXPECT_NE(help, "") << name;
        const Attributes attributes(type);
        for (UINT i = 0; i < attributes.value->cFuncs; ++i) {
            FUNCDESC* function = nullptr;
            type->GetFuncDesc(i, &function);
            const auto member = documentationOf(*type.Get(), function->memid);
            const bool isOfTheSystem = (function->wFuncFlags & FUNCFLAG_FRESTRICTED) != 0; // IDispatch's own
            EXPECT_TRUE(isOfTheSystem || !member.help.empty()) << name << "." << member.name;
            type->ReleaseFuncDesc(function);
        }
    }
}

TEST_F(TypeLibrary, ConstantsNameWhatTheComponentRaisesAndFires) {
    std::map<std::string, Constants> enumerations;
    for (const ComPtr<ITypeInfo>& type : types()) {
        const Attributes attributes(type);
        if (attributes.value->typekind == TKIND_ENUM) {
            enumerations[nameOf(*type.Get(), MEMBERID_NIL)] = constantsOf(*type.Get(), *attributes.value);
        }
    }
    for (const auto& [events, numbers] :
         {std::pair{__uuidof(__ucSendReceive), "qviSendReceiveEvent"}, {__uuidof(__clsCABFile), "qviCabinetEvent"}}) {
        const Attributes attributes(typeOf(events));
        Constants named;
        for (UINT i = 0; i < attributes.value->cFuncs; ++i) {
            FUNCDESC* function = nullptr;
            attributes.info->GetFuncDesc(i, &function);
            named["qviEvent" + nameOf(*attributes.info.Get(), function->memid)] = function->memid;
            attributes.info->ReleaseFuncDesc(function);
        }
        EXPECT_EQ(enumerations[numbers], named);
    }
    EXPECT_FALSE(enumerations["qviError"].empty());
    for (const auto& [name, number] : enumerations["qviError"]) {
        EXPECT_TRUE(number == base::error::kUnspecified || base::standardText(number) != base::standardText(0)) << name;
    }
}

} // namespace
} // namespace com_test
