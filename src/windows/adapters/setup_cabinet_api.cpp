#include "windows/adapters/setup_cabinet_api.h"

#include "windows/base/handles.h"

#include <string>

#include <windows.h>

#include <setupapi.h>

namespace windows {
namespace {

namespace api = ports::cabinet;

static_assert(api::kFileInCabinet == SPFILENOTIFY_FILEINCABINET &&
              api::kNeedNewCabinet == SPFILENOTIFY_NEEDNEWCABINET &&
              api::kFileExtracted == SPFILENOTIFY_FILEEXTRACTED && api::kCopy == FILEOP_DOIT &&
              api::kSkip == FILEOP_SKIP && api::kLongestTarget + 1 == sizeof(FILE_IN_CABINET_INFO_A::FullTargetName));

using IterateCabinet = decltype(&SetupIterateCabinetA);

// One of the system's known libraries: Windows takes it from no other folder than its own.
class SetupLibrary {
public:
    SetupLibrary() : m_module(LoadLibraryW(L"setupapi.dll")) {
        if (m_module) {
            const FARPROC address = GetProcAddress(m_module.get(), "SetupIterateCabinetA");
            m_iterate = reinterpret_cast<IterateCabinet>(reinterpret_cast<void*>(address));
        }
    }

    [[nodiscard]] IterateCabinet iterate() const noexcept { return m_iterate; }

private:
    UniqueModule m_module;
    IterateCabinet m_iterate = nullptr;
};

struct Walk {
    ports::CabinetCallback& callback;
    std::uint32_t context;
};

// Not every version of the library cuts off what was there before: the end of a longer file would stay behind a shorter
// one, and a file that broke off would look whole. What cannot be opened here the library cannot open either, and says
// so.
void emptyExisting(const char* path) {
    UniqueHandle(CreateFileA(path, GENERIC_WRITE, 0, nullptr, TRUNCATE_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

UINT fileInCabinet(const Walk& walk, FILE_IN_CABINET_INFO_A& info) {
    ports::FileInCabinet file{info.NameInCabinet, info.FileSize, info.DosDate, info.DosTime, info.DosAttribs, {}};
    const std::uint32_t answer = walk.callback.fileCallback(walk.context, {api::kFileInCabinet, &file, nullptr});
    if (answer == api::kCopy) {
        if (file.fullTargetName.size() > api::kLongestTarget) {
            return api::kSkip;
        }
        info.FullTargetName[file.fullTargetName.copy(info.FullTargetName, api::kLongestTarget)] = '\0';
        emptyExisting(info.FullTargetName);
    }
    return answer;
}

UINT CALLBACK onNotification(void* context, UINT code, UINT_PTR parameter, UINT_PTR /*second*/) noexcept {
    const Walk& walk = *static_cast<const Walk*>(context);
    UINT answer = 0;
    if (code == api::kFileInCabinet) {
        answer = fileInCabinet(walk, *reinterpret_cast<FILE_IN_CABINET_INFO_A*>(parameter));
    } else if (code == api::kFileExtracted) {
        const auto& info = *reinterpret_cast<const FILEPATHS_A*>(parameter);
        const ports::FilePaths paths{info.Target, info.Win32Error};
        answer = walk.callback.fileCallback(walk.context, {code, nullptr, &paths});
    } else {
        answer = walk.callback.fileCallback(walk.context, {code, nullptr, nullptr});
    }
    SetLastError(ERROR_SUCCESS); // what the callback left must not pass for the library's own error
    return answer;
}

// Where the library fails over a broken cabinet it may leave no error at all, or what opening the last target left:
// that the file "already exists", which stops no extraction.
std::uint32_t reasonOfFailure(DWORD lastError) noexcept {
    return lastError == ERROR_SUCCESS || lastError == ERROR_ALREADY_EXISTS ? ERROR_INVALID_DATA : lastError;
}

} // namespace

std::uint32_t SetupCabinetApi::iterate(std::string_view ansiPath, std::uint32_t context,
                                       ports::CabinetCallback& callback) {
    const SetupLibrary library;
    if (library.iterate() == nullptr) {
        return ERROR_MOD_NOT_FOUND;
    }
    Walk walk{callback, context};
    SetLastError(ERROR_SUCCESS);
    if (library.iterate()(std::string(ansiPath).c_str(), 0, onNotification, &walk)) {
        return ERROR_SUCCESS;
    }
    return reasonOfFailure(GetLastError());
}

// Looking the function up is enough: to call it without a callback may take the process down.
bool SetupCabinetApi::isPresent() {
    return SetupLibrary().iterate() != nullptr;
}

} // namespace windows
