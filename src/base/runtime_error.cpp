#include "base/runtime_error.h"

#include <utility>

namespace base {

std::string_view standardText(std::int32_t number) noexcept {
    switch (number) {
    case error::kInvalidProcedureCall: return "Invalid procedure call or argument";
    case error::kOverflow: return "Overflow";
    case error::kOutOfMemory: return "Out of memory";
    case error::kSubscriptOutOfRange: return "Subscript out of range";
    case error::kDivisionByZero: return "Division by zero";
    case error::kTypeMismatch: return "Type mismatch";
    case error::kInternalError: return "Internal error";
    case error::kBadFileName: return "Bad file name or number";
    case error::kFileNotFound: return "File not found";
    case error::kFileAlreadyOpen: return "File already open";
    case error::kDiskFull: return "Disk full";
    case error::kDeviceUnavailable: return "Device unavailable";
    case error::kPermissionDenied: return "Permission denied";
    case error::kDiskNotReady: return "Disk not ready";
    case error::kPathFileAccess: return "Path/File access error";
    case error::kPathNotFound: return "Path not found";
    case error::kObjectNotSet: return "Object variable or With block variable not set";
    case error::kInvalidUseOfNull: return "Invalid use of Null";
    case error::kFormAlreadyDisplayed: return "Form already displayed; can't show modally";
    case error::kNoSuchMember: return "Object doesn't support this property or method";
    case error::kArgumentNotOptional: return "Argument not optional";
    case error::kWrongNumberOfArguments: return "Wrong number of arguments or invalid property assignment";
    case error::kKeyNotUnique: return "Key is not unique in collection";
    default: return "Application-defined or object-defined error";
    }
}

RuntimeError::RuntimeError(std::int32_t number) : RuntimeError(number, std::string(standardText(number))) {}

RuntimeError::RuntimeError(std::int32_t number, std::string description)
    : RuntimeError(number, std::string(kComponentName), std::move(description)) {}

RuntimeError::RuntimeError(std::int32_t number, std::string source, std::string description)
    : m_number(number), m_source(std::move(source)), m_description(std::move(description)) {}

} // namespace base
