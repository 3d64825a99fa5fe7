// PropertyBag: the persistence interface a host hands to a control, and the two string routines
// (pvStringToBag, pvBagToString) every control persists its texts through.
#pragma once

#include "common/CtlTypes.h"
#include "frame/CtlVariant.h"

class PropertyBag {
public:
    virtual ~PropertyBag() = default;
    // Keys are case-exact. A missing key yields `defaultValue`, never an error.
    virtual CtlVariant ReadProperty(const CtlString& key, const CtlVariant& defaultValue) = 0;
    // A value equal to a non-empty `defaultValue` need not be stored.
    virtual void WriteProperty(const CtlString& key, const CtlVariant& value,
                               const CtlVariant& defaultValue = CtlVariant()) = 0;
};

// A string goes into a bag as the bytes of its UTF-16LE code units: a host's bag narrows plain
// strings to its ANSI code page, which would lose every character outside it.
CtlVariant pvStringToBag(const CtlString& text);
// Accepts what a bag holds, a string or a byte array (read as UTF-16LE; an odd last byte is
// dropped); anything else, including an absent key, yields the empty string.
CtlString pvBagToString(const CtlVariant& value);

// Typed reads with a default, converting what the bag holds (see CtlVariant).
int32_t ReadLongProperty(PropertyBag& bag, const CtlString& key, int32_t defaultValue);
int16_t ReadIntegerProperty(PropertyBag& bag, const CtlString& key, int16_t defaultValue);
bool ReadBoolProperty(PropertyBag& bag, const CtlString& key, bool defaultValue);
// Through pvBagToString; an absent key gives the empty string.
CtlString ReadStringProperty(PropertyBag& bag, const CtlString& key);
