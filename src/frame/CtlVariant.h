// CtlVariant: the small value type of property bags, with the conversions a control reads through.
#pragma once

#include <cstdint>
#include <memory>
#include <variant>
#include <vector>

#include "common/CtlTypes.h"

class StdFont;
class StdPicture;

using CtlByteArray = std::vector<uint8_t>;

// Empty, Boolean, Integer, Long, Single, Double, String, byte array, font, picture.
using CtlVariant = std::variant<std::monostate, bool, int16_t, int32_t, float, double, CtlString, CtlByteArray,
                                std::shared_ptr<StdFont>, std::shared_ptr<StdPicture>>;

bool VariantIsEmpty(const CtlVariant& value) noexcept;

// Numeric reads convert as the host's runtime does (True is -1, fractions round half to even,
// numeric strings parse); a value that cannot convert yields `fallback` instead of an error,
// because a bag written by another version must never stop a control from loading.
int32_t VariantToLong(const CtlVariant& value, int32_t fallback) noexcept;
int16_t VariantToInteger(const CtlVariant& value, int16_t fallback) noexcept;
bool VariantToBool(const CtlVariant& value, bool fallback) noexcept;
double VariantToDouble(const CtlVariant& value, double fallback) noexcept;
std::shared_ptr<StdFont> VariantToFont(const CtlVariant& value, std::shared_ptr<StdFont> fallback);
std::shared_ptr<StdPicture> VariantToPicture(const CtlVariant& value, std::shared_ptr<StdPicture> fallback);
