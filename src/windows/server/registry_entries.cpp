#include "windows/server/registry_entries.h"

#include "base/runtime_error.h"
#include "windows/com/automation_text.h"
#include "windows/server/class_table.h"

#include <wrl/client.h>

#include <array>
#include <charconv>
#include <memory>
#include <utility>

namespace windows::com {
namespace {

// The system's marshallers: of dual interfaces, which work from type libraries, and of plain dispatch interfaces.
constexpr wchar_t kDualMarshaller[] = L"{00020424-0000-0000-C000-000000000046}";
constexpr wchar_t kDispatchMarshaller[] = L"{00020420-0000-0000-C000-000000000046}";

std::wstring textOf(const GUID& guid) {
    std::array<wchar_t, 39> text{}; // braces, 36 characters, the final zero
    StringFromGUID2(guid, text.data(), static_cast<int>(text.size()));
    return text.data();
}

// The registry has version and locale numbers in lower-case hexadecimal.
std::wstring hexText(unsigned long number) {
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number, 16).ptr;
    return {digits.data(), end};
}

void check(HRESULT result) {
    if (FAILED(result)) {
        throw base::RuntimeError(base::error::kInternalError);
    }
}

std::wstring toWide(const Bstr& text) {
    return {text.get(), SysStringLen(text.get())};
}

struct LibraryFacts {
    std::wstring id;
    std::wstring version;
    std::wstring locale;
    std::wstring platform; // the registry's name of the systems that this build is for
    std::wstring description;
};

LibraryFacts factsOf(ITypeLib& library) {
    TLIBATTR* attributes = nullptr;
    check(library.GetLibAttr(&attributes));
    const auto release = [&](TLIBATTR* a) { library.ReleaseTLibAttr(a); };
    const std::unique_ptr<TLIBATTR, decltype(release)> owner(attributes, release);
    Bstr description;
    check(library.GetDocumentation(-1, nullptr, description.out(), nullptr, nullptr));
    return {textOf(attributes->guid), hexText(attributes->wMajorVerNum) + L"." + hexText(attributes->wMinorVerNum),
            hexText(attributes->lcid), attributes->syskind == SYS_WIN64 ? L"win64" : L"win32", toWide(description)};
}

struct InterfaceFacts {
    std::wstring id;
    std::wstring name;
    const wchar_t* marshaller;
};

InterfaceFacts factsOf(ITypeInfo& info) {
    TYPEATTR* attributes = nullptr;
    check(info.GetTypeAttr(&attributes));
    const auto release = [&](TYPEATTR* a) { info.ReleaseTypeAttr(a); };
    const std::unique_ptr<TYPEATTR, decltype(release)> owner(attributes, release);
    Bstr name;
    check(info.GetDocumentation(MEMBERID_NIL, name.out(), nullptr, nullptr, nullptr));
    const bool isDual = (attributes->wTypeFlags & TYPEFLAG_FDUAL) != 0;
    return {textOf(attributes->guid), toWide(name), isDual ? kDualMarshaller : kDispatchMarshaller};
}

// The category of controls: how containers find what they can insert.
constexpr wchar_t kControls[] = L"{40FC6ED4-2438-11CF-A3DB-080036F12502}";

std::wstring folderOf(const std::wstring& path) {
    return path.substr(0, path.find_last_of(L'\\'));
}

void addClass(RegistryEntries& all, const CreatableClass& c, const std::wstring& path, const LibraryFacts& library) {
    const std::wstring id = textOf(c.clsid);
    const std::wstring progId = c.progId;
    const std::wstring classKey = L"CLSID\\" + id;
    const auto add = [&](std::wstring key, const wchar_t* name, std::wstring value) {
        all.entries.push_back({RegistryPart::Classes, std::move(key), name, std::move(value)});
    };
    add(progId, nullptr, c.description);
    add(progId + L"\\CLSID", nullptr, id);
    add(classKey, nullptr, c.description);
    add(classKey + L"\\ProgID", nullptr, progId);
    add(classKey + L"\\InprocServer32", nullptr, path);
    add(classKey + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
    add(classKey + L"\\TypeLib", nullptr, library.id);
    add(classKey + L"\\Version", nullptr, library.version);
    add(classKey + L"\\Programmable", nullptr, L"");
    if (c.miscStatus) {
        add(classKey + L"\\Control", nullptr, L"");
        add(classKey + L"\\MiscStatus", nullptr, L"0");
        add(classKey + L"\\MiscStatus\\1", nullptr, std::to_wstring(*c.miscStatus)); // 1: the content aspect
        add(classKey + L"\\Implemented Categories\\" + kControls, nullptr, L"");
    }
    all.ownedKeys.push_back(classKey);
    all.commonKeys.push_back(progId);
}

void addInterface(RegistryEntries& all, const InterfaceFacts& facts, const LibraryFacts& library) {
    const std::wstring key = L"Interface\\" + facts.id;
    const auto add = [&](const std::wstring& subkey, const wchar_t* name, std::wstring value) {
        all.entries.push_back({RegistryPart::TypeLibrary, key + subkey, name, std::move(value)});
    };
    add(L"", nullptr, facts.name);
    add(L"\\ProxyStubClsid32", nullptr, facts.marshaller);
    add(L"\\TypeLib", nullptr, library.id);
    add(L"\\TypeLib", L"Version", library.version);
    all.ownedKeys.push_back(key);
}

void addInterfaces(RegistryEntries& all, ITypeLib& library, const LibraryFacts& facts) {
    for (UINT i = 0; i < library.GetTypeInfoCount(); ++i) {
        TYPEKIND kind{};
        check(library.GetTypeInfoType(i, &kind));
        if (kind == TKIND_DISPATCH) { // dual interfaces count as these
            Microsoft::WRL::ComPtr<ITypeInfo> info;
            check(library.GetTypeInfo(i, &info));
            addInterface(all, factsOf(*info.Get()), facts);
        }
    }
}

void addLibrary(RegistryEntries& all, const std::wstring& path, const LibraryFacts& library) {
    const std::wstring libraryKey = L"TypeLib\\" + library.id;
    const std::wstring key = libraryKey + L"\\" + library.version;
    const auto add = [&](const std::wstring& subkey, std::wstring value) {
        all.entries.push_back({RegistryPart::TypeLibrary, key + subkey, nullptr, std::move(value)});
    };
    add(L"", library.description);
    // Wine's marshaller looks under the neutral locale only.
    for (const std::wstring& locale : {library.locale, std::wstring(L"0")}) {
        const std::wstring subkey = L"\\" + locale + L"\\" + library.platform;
        add(subkey, path);
        all.ownedKeys.push_back(key + subkey);
    }
    add(L"\\FLAGS", L"0");
    add(L"\\HELPDIR", folderOf(path));
    all.commonKeys.push_back(key);
    all.sharedKeys = {libraryKey, L"CLSID", L"Interface", L"TypeLib"};
}

} // namespace

RegistryEntries registryEntries(const std::wstring& path, ITypeLib& library) {
    const LibraryFacts facts = factsOf(library);
    RegistryEntries all;
    for (const CreatableClass& creatable : creatableClasses()) {
        addClass(all, creatable, path, facts);
    }
    all.telltaleKey = all.ownedKeys.front();
    addInterfaces(all, library, facts);
    addLibrary(all, path, facts);
    return all;
}

} // namespace windows::com
