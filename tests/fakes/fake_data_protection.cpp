#include "fakes/fake_data_protection.h"

#include "base/runtime_error.h"

namespace fakes {
namespace {

constexpr std::size_t kHeader = 8; // salt, checksum

void putNumber(std::string& out, std::uint32_t number) {
    for (int shift = 0; shift < 32; shift += 8) {
        out.push_back(static_cast<char>(static_cast<unsigned char>(number >> shift)));
    }
}

std::uint32_t numberAt(std::string_view bytes, std::size_t at) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        number |= std::uint32_t{static_cast<unsigned char>(bytes[at + i])} << (8 * i);
    }
    return number;
}

std::uint32_t mix(std::uint32_t state, std::string_view bytes) {
    for (const char c : bytes) {
        state = (state ^ static_cast<unsigned char>(c)) * 16777619U;
    }
    return state;
}

// The same again undoes it.
std::string garble(std::string_view text, std::uint32_t state) {
    std::string out(text);
    for (char& c : out) {
        state = state * 1664525U + 1013904223U;
        c = static_cast<char>(static_cast<unsigned char>(c) ^ (state >> 24U));
    }
    return out;
}

} // namespace

std::string FakeDataProtection::protect(std::string_view plain, std::string_view key) {
    if (m_error != 0) {
        throw base::RuntimeError(m_error);
    }
    const std::uint32_t salt = mix(2166136261U, std::to_string(++m_calls));
    std::string out;
    putNumber(out, salt);
    putNumber(out, mix(mix(salt, key), plain));
    return out + garble(plain, mix(salt, key));
}

std::optional<std::string> FakeDataProtection::unprotect(std::string_view bytes, std::string_view key) {
    if (bytes.size() < kHeader) {
        return std::nullopt;
    }
    const std::uint32_t state = mix(numberAt(bytes, 0), key);
    std::string plain = garble(bytes.substr(kHeader), state);
    return mix(state, plain) == numberAt(bytes, 4) ? std::optional(std::move(plain)) : std::nullopt;
}

} // namespace fakes
