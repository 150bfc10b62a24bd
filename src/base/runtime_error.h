// The one error type of the component: numbered, with a source and a description, as automation hosts see it.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace base {

// Run-time error numbers that the component raises. They reach a host as 0x800A0000 + number.
namespace error {
inline constexpr std::int32_t kInvalidProcedureCall = 5;
inline constexpr std::int32_t kOverflow = 6;
inline constexpr std::int32_t kOutOfMemory = 7;
inline constexpr std::int32_t kSubscriptOutOfRange = 9;
inline constexpr std::int32_t kDivisionByZero = 11;
inline constexpr std::int32_t kTypeMismatch = 13;
inline constexpr std::int32_t kInternalError = 51;
inline constexpr std::int32_t kBadFileName = 52;
inline constexpr std::int32_t kFileNotFound = 53;
inline constexpr std::int32_t kFileAlreadyOpen = 55;
inline constexpr std::int32_t kDiskFull = 61;
inline constexpr std::int32_t kDeviceUnavailable = 68;
inline constexpr std::int32_t kPermissionDenied = 70;
inline constexpr std::int32_t kDiskNotReady = 71;
inline constexpr std::int32_t kPathFileAccess = 75;
inline constexpr std::int32_t kPathNotFound = 76;
inline constexpr std::int32_t kObjectNotSet = 91;
inline constexpr std::int32_t kInvalidUseOfNull = 94;
inline constexpr std::int32_t kFormAlreadyDisplayed = 400;
inline constexpr std::int32_t kNoSuchMember = 438;
inline constexpr std::int32_t kArgumentNotOptional = 449;
inline constexpr std::int32_t kWrongNumberOfArguments = 450;
inline constexpr std::int32_t kKeyNotUnique = 35602;
// The number of errors that a library reports without one of its own; the description is the library's text.
inline constexpr std::int32_t kUnspecified = -2147467259;
} // namespace error

// The standard description of a number above; "Application-defined or object-defined error" for any other.
[[nodiscard]] std::string_view standardText(std::int32_t number) noexcept;

class RuntimeError : public std::exception {
public:
    // Carries the standard description of `number` and this component's name as the source.
    explicit RuntimeError(std::int32_t number);
    RuntimeError(std::int32_t number, std::string description);
    RuntimeError(std::int32_t number, std::string source, std::string description);

    // 1..65535: a run-time error. Negative: an HRESULT that passes to the host unchanged.
    [[nodiscard]] std::int32_t number() const noexcept { return m_number; }
    [[nodiscard]] const std::string& source() const noexcept { return m_source; }
    [[nodiscard]] const std::string& description() const noexcept { return m_description; }
    [[nodiscard]] const char* what() const noexcept override { return m_description.c_str(); }

private:
    std::int32_t m_number;
    std::string m_source;
    std::string m_description;
};

// The source of errors that name none.
inline constexpr std::string_view kComponentName = "QuorvantisImage";

} // namespace base
