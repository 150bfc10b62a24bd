#include "windows/forms/file_dialog.h"

#include "windows/base/wide.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include <commdlg.h>
#include <objbase.h>
#include <shobjidl.h>
#include <wrl/client.h>

namespace windows {
namespace {

using Microsoft::WRL::ComPtr;

// A host's thread has initialised COM before it reached us; other callers may not have.
class ApartmentScope {
public:
    ApartmentScope() noexcept : m_result(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)) {}
    ~ApartmentScope() {
        if (SUCCEEDED(m_result)) {
            CoUninitialize();
        }
    }
    ApartmentScope(const ApartmentScope&) = delete;
    ApartmentScope& operator=(const ApartmentScope&) = delete;

    // False in a multi-threaded apartment, where the dialog object does not work.
    [[nodiscard]] bool entered() const noexcept { return SUCCEEDED(m_result); }

private:
    HRESULT m_result;
};

using Filters = std::vector<std::pair<std::wstring, std::wstring>>; // description, pattern

Filters parseFilters(const std::wstring& text) {
    std::vector<std::wstring> parts;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(L'|', start), text.size());
        parts.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    Filters filters;
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
        filters.emplace_back(parts[i], parts[i + 1]);
    }
    return filters;
}

void applyFilters(IFileOpenDialog& dialog, const Filters& filters) {
    std::vector<COMDLG_FILTERSPEC> specs;
    specs.reserve(filters.size());
    for (const auto& [description, pattern] : filters) {
        specs.push_back({description.c_str(), pattern.c_str()});
    }
    if (!specs.empty()) {
        dialog.SetFileTypes(static_cast<UINT>(specs.size()), specs.data());
    }
}

std::string pathOf(IShellItem& item) {
    wchar_t* path = nullptr;
    if (FAILED(item.GetDisplayName(SIGDN_FILESYSPATH, &path))) {
        return {};
    }
    const std::wstring copy = path;
    CoTaskMemFree(path);
    return fromWide(copy);
}

// Unlike the older dialog, whose initial folder gives way to the one used last, this one opens where it is told to.
// Empty when the system cannot provide it.
std::optional<std::string> chooseWithShellDialog(HWND owner, const ui::OpenFileRequest& request) {
    const ApartmentScope apartment;
    ComPtr<IFileOpenDialog> dialog;
    if (!apartment.entered() ||
        FAILED(CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&dialog)))) {
        return std::nullopt;
    }
    FILEOPENDIALOGOPTIONS options{};
    dialog->GetOptions(&options);
    options |= FOS_NOCHANGEDIR | FOS_FORCEFILESYSTEM;
    options &= ~static_cast<FILEOPENDIALOGOPTIONS>(FOS_FILEMUSTEXIST | FOS_PATHMUSTEXIST | FOS_ALLOWMULTISELECT);
    dialog->SetOptions(options);

    ComPtr<IShellItem> folder;
    if (SUCCEEDED(SHCreateItemFromParsingName(toWide(request.initialFolder).c_str(), nullptr, IID_PPV_ARGS(&folder)))) {
        dialog->SetFolder(folder.Get());
    }
    dialog->SetFileName(toWide(request.fileName).c_str());
    const Filters filters = parseFilters(toWide(request.filter));
    applyFilters(*dialog.Get(), filters);

    ComPtr<IShellItem> chosen;
    if (FAILED(dialog->Show(owner)) || FAILED(dialog->GetResult(&chosen))) {
        return std::string();
    }
    return pathOf(*chosen.Get());
}

std::string chooseWithCommonDialog(HWND owner, const ui::OpenFileRequest& request) {
    std::wstring filter;
    for (const auto& [description, pattern] : parseFilters(toWide(request.filter))) {
        filter += description + L'\0' + pattern + L'\0';
    }
    const std::wstring folder = toWide(request.initialFolder);
    std::wstring path = toWide(request.fileName);
    path.resize(32768);

    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.lpstrFilter = filter.empty() ? nullptr : filter.c_str();
    dialog.lpstrFile = path.data();
    dialog.nMaxFile = static_cast<DWORD>(path.size());
    dialog.lpstrInitialDir = folder.c_str();
    dialog.Flags = OFN_EXPLORER | OFN_NOCHANGEDIR | OFN_HIDEREADONLY;
    return GetOpenFileNameW(&dialog) ? fromWide(path.c_str()) : std::string();
}

} // namespace

std::string chooseFile(HWND owner, const ui::OpenFileRequest& request) {
    if (std::optional<std::string> path = chooseWithShellDialog(owner, request)) {
        return *std::move(path);
    }
    return chooseWithCommonDialog(owner, request);
}

} // namespace windows
