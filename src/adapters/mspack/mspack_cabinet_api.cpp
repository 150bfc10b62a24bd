#include "adapters/mspack/mspack_cabinet_api.h"

#include "adapters/mspack/mspack_system.h"
#include "adapters/posix/native_name.h"
#include "adapters/posix/posix_error.h"
#include "base/runtime_error.h"

#include <memory>
#include <string>
#include <utility>

#include <fcntl.h>

namespace adapters {
namespace {

namespace api = ports::cabinet;

constexpr std::uint32_t kNotEnoughMemory = 8;
constexpr std::uint32_t kInvalidData = 13;

struct DestroyDecompressor {
    void operator()(mscab_decompressor* decompressor) const noexcept { mspack_destroy_cab_decompressor(decompressor); }
};
using Decompressor = std::unique_ptr<mscab_decompressor, DestroyDecompressor>;

struct CloseCabinet {
    mscab_decompressor* decompressor;
    void operator()(mscabd_cabinet* cabinet) const noexcept { decompressor->close(decompressor, cabinet); }
};
using Cabinet = std::unique_ptr<mscabd_cabinet, CloseCabinet>;

// A cabinet without a single file is in order, though libmspack does not open it.
bool holdsNoFiles(const std::string& name) {
    unsigned char header[36];
    const UniqueFd file(::open(name.c_str(), O_RDONLY | O_CLOEXEC));
    return file && ::read(file.get(), header, sizeof header) == sizeof header &&
           std::string_view(reinterpret_cast<const char*>(header), 4) == "MSCF" && header[28] == 0 && header[29] == 0;
}

// libmspack takes the two words apart; the port has them as they are stored.
ports::FileInCabinet recordOf(const mscabd_file& file) {
    const auto word = [](int high, int highBits, int middle, int middleBits, int low) {
        return static_cast<std::uint16_t>(high << highBits | middle << middleBits | low);
    };
    ports::FileInCabinet record;
    record.nameInCabinet = file.filename;
    record.size = file.length;
    record.dosDate = word(file.date_y - 1980, 9, file.date_m, 5, file.date_d);
    record.dosTime = word(file.time_h, 11, file.time_m, 5, file.time_s / 2);
    record.dosAttributes = static_cast<std::uint16_t>(file.attribs);
    return record;
}

std::uint32_t win32Error(int result, const MspackSystem& system) noexcept {
    switch (result) {
    case MSPACK_ERR_OK: return 0;
    case MSPACK_ERR_NOMEMORY: return kNotEnoughMemory;
    default: return system.lastError() != 0 ? system.lastError() : kInvalidData;
    }
}

} // namespace

MspackCabinetApi::MspackCabinetApi(std::filesystem::path root, ports::CodePage& ansi)
    : m_root(std::move(root)), m_ansi(ansi) {}

// "" for a path that Windows would not take for a name either.
std::string MspackCabinetApi::native(std::string_view ansiPath) {
    try {
        return nativeName(m_root, m_ansi.decode(ansiPath));
    } catch (const base::RuntimeError&) {
        return {};
    }
}

std::uint32_t MspackCabinetApi::iterate(std::string_view ansiPath, std::uint32_t context,
                                        ports::CabinetCallback& callback) {
    const std::string name = native(ansiPath);
    MspackSystem system;
    const Decompressor decompressor(mspack_create_cab_decompressor(system.table()));
    if (!decompressor) {
        return kNotEnoughMemory;
    }
    const Cabinet cabinet(decompressor->open(decompressor.get(), name.c_str()), {decompressor.get()});
    if (!cabinet) {
        const int result = decompressor->last_error(decompressor.get());
        return result == MSPACK_ERR_DATAFORMAT && holdsNoFiles(name) ? 0 : win32Error(result, system);
    }
    for (mscabd_file* file = cabinet->files; file != nullptr; file = file->next) {
        ports::FileInCabinet record = recordOf(*file);
        if (callback.fileCallback(context, {api::kFileInCabinet, &record, nullptr}) != api::kCopy) {
            continue;
        }
        const int result = decompressor->extract(decompressor.get(), file, native(record.fullTargetName).c_str());
        if (result != MSPACK_ERR_OK) {
            if ((cabinet->flags & MSCAB_HDR_NEXTCAB) != 0) {
                callback.fileCallback(context, {api::kNeedNewCabinet, nullptr, nullptr});
            }
            return win32Error(result, system);
        }
        const ports::FilePaths paths{record.fullTargetName, 0};
        if (const auto stop = callback.fileCallback(context, {api::kFileExtracted, nullptr, &paths}); stop != 0) {
            return stop;
        }
    }
    return 0;
}

} // namespace adapters
