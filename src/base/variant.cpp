#include "base/variant.h"

#include "base/runtime_error.h"

#include <charconv>

namespace base {
namespace {

std::string numberText(double value) {
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return {buffer, result.ptr};
}

bool equalsEmpty(const Variant& value) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        return text->empty();
    }
    if (const auto* number = std::get_if<std::int32_t>(&value)) {
        return *number == 0;
    }
    if (const auto* real = std::get_if<double>(&value)) {
        return *real == 0.0;
    }
    if (const auto* flag = std::get_if<bool>(&value)) {
        return !*flag;
    }
    return std::holds_alternative<Empty>(value);
}

bool isNumber(const Variant& value) {
    return std::holds_alternative<bool>(value) || std::holds_alternative<std::int32_t>(value) ||
           std::holds_alternative<double>(value);
}

double asNumber(const Variant& value) {
    if (const auto* flag = std::get_if<bool>(&value)) {
        return *flag ? -1.0 : 0.0; // automation's True
    }
    if (const auto* number = std::get_if<std::int32_t>(&value)) {
        return *number;
    }
    return std::get<double>(value);
}

} // namespace

std::string toText(const Variant& value) {
    struct Visitor {
        std::string operator()(Empty) const { return {}; }
        std::string operator()(Null) const { throw RuntimeError(error::kInvalidUseOfNull); }
        std::string operator()(bool flag) const { return flag ? "True" : "False"; }
        std::string operator()(std::int32_t number) const { return std::to_string(number); }
        std::string operator()(double number) const { return numberText(number); }
        std::string operator()(const std::string& text) const { return text; }
        std::string operator()(const ObjectRef&) const { throw RuntimeError(error::kTypeMismatch); }
    };
    return std::visit(Visitor{}, value);
}

ObjectRef toObject(const Variant& value) {
    if (const auto* const object = std::get_if<ObjectRef>(&value)) {
        return *object;
    }
    if (!std::holds_alternative<Empty>(value) && !std::holds_alternative<Null>(value)) {
        throw RuntimeError(error::kTypeMismatch);
    }
    return nullptr;
}

bool equals(const Variant& left, const Variant& right) {
    if (std::holds_alternative<Null>(left) || std::holds_alternative<Null>(right)) {
        return false;
    }
    if (std::holds_alternative<Empty>(left)) {
        return equalsEmpty(right);
    }
    if (std::holds_alternative<Empty>(right)) {
        return equalsEmpty(left);
    }
    if (isNumber(left) && isNumber(right)) {
        return asNumber(left) == asNumber(right);
    }
    return left == right;
}

} // namespace base
