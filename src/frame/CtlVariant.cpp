#include "frame/CtlVariant.h"

#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

namespace {

bool parseNumber(const CtlString& text, double& out) noexcept {
    std::string narrow;
    narrow.reserve(text.size());
    for (const char16_t unit : text) {
        if (unit > 0x7F) return false;
        narrow.push_back(static_cast<char>(unit));
    }
    const size_t first = narrow.find_first_not_of(" \t");
    if (first == std::string::npos) return false;
    char* end = nullptr;
    const double parsed = std::strtod(narrow.c_str() + first, &end);
    if (end == narrow.c_str() + first) return false;
    while (*end == ' ' || *end == '\t') ++end;
    if (*end != '\0') return false;
    out = parsed;
    return true;
}

bool toDouble(const CtlVariant& value, double& out) noexcept {
    if (const auto* b = std::get_if<bool>(&value)) {
        out = *b ? -1.0 : 0.0;
    } else if (const auto* i = std::get_if<int16_t>(&value)) {
        out = *i;
    } else if (const auto* l = std::get_if<int32_t>(&value)) {
        out = *l;
    } else if (const auto* f = std::get_if<float>(&value)) {
        out = *f;
    } else if (const auto* d = std::get_if<double>(&value)) {
        out = *d;
    } else if (const auto* s = std::get_if<CtlString>(&value)) {
        return parseNumber(*s, out);
    } else {
        return false;
    }
    return std::isfinite(out);
}

}  // namespace

bool VariantIsEmpty(const CtlVariant& value) noexcept { return std::holds_alternative<std::monostate>(value); }

int32_t VariantToLong(const CtlVariant& value, int32_t fallback) noexcept {
    double number = 0.0;
    if (!toDouble(value, number)) return fallback;
    const double rounded = std::nearbyint(number);  // default rounding mode: half to even
    if (rounded < std::numeric_limits<int32_t>::min() || rounded > std::numeric_limits<int32_t>::max()) {
        return fallback;
    }
    return static_cast<int32_t>(rounded);
}

int16_t VariantToInteger(const CtlVariant& value, int16_t fallback) noexcept {
    const int32_t wide = VariantToLong(value, std::numeric_limits<int32_t>::min());
    if (wide < std::numeric_limits<int16_t>::min() || wide > std::numeric_limits<int16_t>::max()) return fallback;
    return static_cast<int16_t>(wide);
}

bool VariantToBool(const CtlVariant& value, bool fallback) noexcept {
    if (const auto* b = std::get_if<bool>(&value)) return *b;
    if (const auto* s = std::get_if<CtlString>(&value)) {
        if (*s == u"True" || *s == u"true" || *s == u"TRUE") return true;
        if (*s == u"False" || *s == u"false" || *s == u"FALSE") return false;
    }
    double number = 0.0;
    if (!toDouble(value, number)) return fallback;
    return number != 0.0;
}

double VariantToDouble(const CtlVariant& value, double fallback) noexcept {
    double number = 0.0;
    return toDouble(value, number) ? number : fallback;
}

std::shared_ptr<StdFont> VariantToFont(const CtlVariant& value, std::shared_ptr<StdFont> fallback) {
    if (const auto* font = std::get_if<std::shared_ptr<StdFont>>(&value); font != nullptr && *font) return *font;
    return fallback;
}

std::shared_ptr<StdPicture> VariantToPicture(const CtlVariant& value, std::shared_ptr<StdPicture> fallback) {
    if (const auto* picture = std::get_if<std::shared_ptr<StdPicture>>(&value); picture != nullptr && *picture) {
        return *picture;
    }
    return fallback;
}
