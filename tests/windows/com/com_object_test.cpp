// The automation classes as early-bound and late-bound hosts meet them.
#include "windows/com/com_support.h"

#include "windows/com/quorvantisimage.h"

#include <gtest/gtest.h>
#include <ocidl.h>

#include <string>
#include <thread>
#include <vector>

namespace com_test {
namespace {

using Microsoft::WRL::ComPtr;

class ComObject : public testing::Test {
protected:
    ComApartment apartment;
    LoadedDll dll;
    ComPtr<_clsQVI_Link> link = dll.create<_clsQVI_Link>(__uuidof(clsQVI_Link));
    ComPtr<_clsQVI_Globals> globals = dll.create<_clsQVI_Globals>(__uuidof(clsQVI_Globals));
};

using TextGetter = HRESULT (STDMETHODCALLTYPE _clsQVI_Link::*)(BSTR*);
using TextPutter = HRESULT (STDMETHODCALLTYPE _clsQVI_Link::*)(BSTR);

TEST_F(ComObject, EveryTextPropertyKeepsItsOwnValueUnchanged) {
    const std::vector<std::pair<TextGetter, TextPutter>> properties = {
        {&_clsQVI_Link::get_ProductCode, &_clsQVI_Link::put_ProductCode},
        {&_clsQVI_Link::get_ImagesFile, &_clsQVI_Link::put_ImagesFile},
        {&_clsQVI_Link::get_NewImageFile, &_clsQVI_Link::put_NewImageFile},
        {&_clsQVI_Link::get_gQuorVantisPath, &_clsQVI_Link::put_gQuorVantisPath},
        {&_clsQVI_Link::get_gWebAddress, &_clsQVI_Link::put_gWebAddress},
        {&_clsQVI_Link::get_gProfileNumber, &_clsQVI_Link::put_gProfileNumber},
        {&_clsQVI_Link::get_gSettingString, &_clsQVI_Link::put_gSettingString},
    };
    // A lone surrogate of each kind, a pair, an embedded and a final zero, an accent.
    const std::wstring odd(L"\xDC00 \xD834\xDD1E a\0b \x00E9\xD834\0", 13);
    for (std::size_t i = 0; i < properties.size(); ++i) {
        const Text value(odd + std::to_wstring(i));
        EXPECT_EQ((link.Get()->*properties[i].second)(value.value), S_OK);
    }
    for (std::size_t i = 0; i < properties.size(); ++i) {
        Text value;
        EXPECT_EQ((link.Get()->*properties[i].first)(&value.value), S_OK);
        EXPECT_EQ(value.str(), odd + std::to_wstring(i));
    }
}

TEST_F(ComObject, ANullStringIsTheEmptyOneAndComesBackAllocated) {
    EXPECT_EQ(globals->put_gWebService(Text(L"x").value), S_OK);
    EXPECT_EQ(globals->put_gWebService(nullptr), S_OK);
    Text value;
    EXPECT_EQ(globals->get_gWebService(&value.value), S_OK);
    EXPECT_NE(value.value, nullptr);
    EXPECT_EQ(value.str(), L"");
}

TEST_F(ComObject, TrueIsMinusOneAndAnythingButZeroIsTrue) {
    VARIANT_BOOL value = 7;
    EXPECT_EQ(link->get_DeleteLink(&value), S_OK);
    EXPECT_EQ(value, VARIANT_FALSE);
    EXPECT_EQ(link->put_DeleteLink(1), S_OK);
    EXPECT_EQ(link->get_DeleteLink(&value), S_OK);
    EXPECT_EQ(value, VARIANT_TRUE);
}

TEST_F(ComObject, NullResultPointersAreRefused) {
    VARIANT name;
    VariantInit(&name);
    EXPECT_EQ(link->get_ProductCode(nullptr), E_POINTER);
    EXPECT_EQ(link->get_DeleteLink(nullptr), E_POINTER);
    EXPECT_EQ(globals->GetValue(&name, nullptr), E_POINTER);
    EXPECT_EQ(globals->GetValue(nullptr, &name), E_POINTER);
    EXPECT_EQ(link->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
    EXPECT_EQ(link->GetTypeInfo(0, 0, nullptr), E_POINTER);
    EXPECT_EQ(dll.getClassObject(__uuidof(clsQVI_Link), IID_IClassFactory, nullptr), E_POINTER);
}

TEST_F(ComObject, GetValueAnswersEmptyForANameOfAnyType) {
    VARIANT array;
    VariantInit(&array);
    V_VT(&array) = VT_ARRAY | VT_I4;
    V_ARRAY(&array) = SafeArrayCreateVector(VT_I4, 0, 1);
    VARIANT value;
    V_VT(&value) = VT_I4; // an out parameter may hold rubbish
    EXPECT_EQ(globals->GetValue(&array, &value), S_OK);
    EXPECT_EQ(V_VT(&value), VT_EMPTY);
    VariantClear(&array);
}

TEST_F(ComObject, HasOneIdentityAndOnlyTheInterfacesItShould) {
    ComPtr<IUnknown> first;
    ComPtr<IUnknown> second;
    ComPtr<ISupportErrorInfo> support;
    ASSERT_EQ(link.As(&first), S_OK);
    ASSERT_EQ(link.As(&support), S_OK);
    ASSERT_EQ(support.As(&second), S_OK);
    EXPECT_EQ(first, second);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(_clsQVI_Link)), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IUnknown), S_FALSE);
    ComPtr<IObjectWithSite> site;
    EXPECT_EQ(link.As(&site), E_NOINTERFACE);
    ComPtr<_clsQVI_Globals> other;
    EXPECT_EQ(link.As(&other), E_NOINTERFACE);
}

TEST_F(ComObject, RefusesAggregationAndUnknownClasses) {
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(dll.getClassObject(__uuidof(clsQVI_Link), IID_PPV_ARGS(&factory)), S_OK);
    int rubbish = 0;
    void* object = &rubbish;
    EXPECT_EQ(factory->CreateInstance(link.Get(), IID_IUnknown, &object), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(object, nullptr);
    object = &rubbish;
    EXPECT_EQ(dll.getClassObject(IID_IUnknown, IID_IClassFactory, &object), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(object, nullptr);
    object = &rubbish;
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IPersist, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
}

TEST_F(ComObject, StaysLoadedWhileAnythingOfItIsUsed) {
    EXPECT_EQ(dll.canUnloadNow(), S_FALSE);
    link.Reset();
    EXPECT_EQ(dll.canUnloadNow(), S_FALSE);
    globals.Reset();
    EXPECT_EQ(dll.canUnloadNow(), S_OK);
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(dll.getClassObject(__uuidof(clsQVI_Link), IID_PPV_ARGS(&factory)), S_OK);
    EXPECT_EQ(dll.canUnloadNow(), S_FALSE);
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    factory.Reset();
    EXPECT_EQ(dll.canUnloadNow(), S_FALSE);
    ASSERT_EQ(dll.getClassObject(__uuidof(clsQVI_Link), IID_PPV_ARGS(&factory)), S_OK);
    EXPECT_EQ(factory->LockServer(FALSE), S_OK);
    EXPECT_EQ(factory->LockServer(FALSE), S_OK);
    factory.Reset();
    EXPECT_EQ(dll.canUnloadNow(), S_OK);
}

TEST(Marshalling, AnotherApartmentCallsThroughTheTypeLibrary) {
    const ComApartment apartment;
    const Registered registered;
    ComPtr<_clsQVI_Link> link;
    ASSERT_EQ(CoCreateInstance(__uuidof(clsQVI_Link), nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&link)), S_OK);
    ComPtr<IStream> stream;
    ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(__uuidof(_clsQVI_Link), link.Get(), &stream), S_OK);
    const DWORD mainThread = GetCurrentThreadId();
    HRESULT unmarshalled = E_FAIL;
    HRESULT written = E_FAIL;
    bool isProxy = false;
    std::thread caller([&] {
        {
            const ComApartment second;
            ComPtr<_clsQVI_Link> proxy;
            unmarshalled = CoGetInterfaceAndReleaseStream(stream.Detach(), IID_PPV_ARGS(&proxy));
            if (proxy) {
                isProxy = proxy.Get() != link.Get();
                written = proxy->put_gWebAddress(Text(L"http://localhost/").value);
            }
        }
        PostThreadMessageW(mainThread, WM_QUIT, 0, 0);
    });
    pumpUntilEnd(caller);
    EXPECT_EQ(unmarshalled, S_OK);
    EXPECT_TRUE(isProxy);
    EXPECT_EQ(written, S_OK);
    Text value;
    EXPECT_EQ(link->get_gWebAddress(&value.value), S_OK);
    EXPECT_EQ(value.str(), L"http://localhost/");
}

} // namespace
} // namespace com_test
