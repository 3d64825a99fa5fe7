#include "frame/PropertyBag.h"

CtlVariant pvStringToBag(const CtlString& text) {
    CtlByteArray bytes;
    bytes.reserve(text.size() * 2);
    for (const char16_t unit : text) {
        bytes.push_back(static_cast<uint8_t>(unit & 0xFFU));
        bytes.push_back(static_cast<uint8_t>(unit >> 8));
    }
    return bytes;
}

CtlString pvBagToString(const CtlVariant& value) {
    if (const auto* text = std::get_if<CtlString>(&value)) return *text;
    const auto* bytes = std::get_if<CtlByteArray>(&value);
    if (bytes == nullptr) return {};
    CtlString text;
    text.reserve(bytes->size() / 2);
    for (size_t i = 0; i + 1 < bytes->size(); i += 2) {
        text.push_back(static_cast<char16_t>((*bytes)[i] | ((*bytes)[i + 1] << 8)));
    }
    return text;
}

int32_t ReadLongProperty(PropertyBag& bag, const CtlString& key, int32_t defaultValue) {
    return VariantToLong(bag.ReadProperty(key, defaultValue), defaultValue);
}

int16_t ReadIntegerProperty(PropertyBag& bag, const CtlString& key, int16_t defaultValue) {
    return VariantToInteger(bag.ReadProperty(key, defaultValue), defaultValue);
}

bool ReadBoolProperty(PropertyBag& bag, const CtlString& key, bool defaultValue) {
    return VariantToBool(bag.ReadProperty(key, defaultValue), defaultValue);
}

CtlString ReadStringProperty(PropertyBag& bag, const CtlString& key) {
    return pvBagToString(bag.ReadProperty(key, pvStringToBag(CtlString())));
}
