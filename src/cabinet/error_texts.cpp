#include "cabinet/error_texts.h"

namespace cabinet {

std::string_view win32ErrorText(std::uint32_t code) noexcept {
    switch (code) {
    case 2: return "The system cannot find the file specified.";
    case 3: return "The system cannot find the path specified.";
    case 4: return "The system cannot open the file.";
    case 5: return "Access is denied.";
    case 8: return "Not enough storage is available to process this command.";
    case 13: return "Invalid data.";
    case 14: return "Not enough storage is available to complete this operation.";
    case 15: return "The system cannot find the drive specified.";
    case 19: return "The media is write protected.";
    case 20: return "The system cannot find the device specified.";
    case 21: return "The device is not ready.";
    case 23: return "Data error (cyclic redundancy check).";
    case 25: return "The drive cannot locate a specific area or track on the disk.";
    case 26: return "The specified disk or diskette cannot be accessed.";
    case 27: return "The drive cannot find the sector requested.";
    case 29: return "The system cannot write to the specified device.";
    case 30: return "The system cannot read from the specified device.";
    case 31: return "A device attached to the system is not functioning.";
    case 32: return "The process cannot access the file because it is being used by another process.";
    case 33: return "The process cannot access the file because another process has locked a portion of the file.";
    case 39: return "The disk is full.";
    case 82: return "The directory or file cannot be created.";
    case 111: return "The file name is too long.";
    case 112: return "There is not enough space on the disk.";
    case 123: return "The filename, directory name, or volume label syntax is incorrect.";
    default: return "Unknown error.";
    }
}

std::string_view ownErrorText(std::int32_t number) noexcept {
    return number == kNoCabName ? "You must set the CabName property before taking any action on the CabFile object."
                                : "Unknown error.";
}

} // namespace cabinet
