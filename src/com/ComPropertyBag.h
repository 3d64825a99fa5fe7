// ComPropertyBag: the container's IPropertyBag as our PropertyBag (ContainerPropertyBag), and
// StreamPropertyBag, the key and value pairs that IPersistStreamInit saves and loads.
#pragma once

#include <utility>
#include <vector>

#include "com/ComPrerequisites.h"
#include "frame/PropertyBag.h"

namespace tc::com {

// Reads and writes go straight to the container's bag. A key the bag cannot give reads as its
// default; values it cannot take are skipped, since saving must not stop at one property.
class ContainerPropertyBag final : public PropertyBag {
public:
    ContainerPropertyBag(IPropertyBag* bag, IErrorLog* log) noexcept : m_bag(bag), m_log(log) {}
    CtlVariant ReadProperty(const CtlString& key, const CtlVariant& defaultValue) override;
    void WriteProperty(const CtlString& key, const CtlVariant& value, const CtlVariant& defaultValue) override;

private:
    IPropertyBag* m_bag;
    IErrorLog* m_log;
};

// Every written pair, in write order, and the stream form of them.
class StreamPropertyBag final : public PropertyBag {
public:
    CtlVariant ReadProperty(const CtlString& key, const CtlVariant& defaultValue) override;
    void WriteProperty(const CtlString& key, const CtlVariant& value, const CtlVariant& defaultValue) override;

    HRESULT Save(IStream* stream) const;
    HRESULT Load(IStream* stream);

private:
    std::vector<std::pair<CtlString, CtlVariant>> m_values;
};

// A bag value as a VARIANT (fonts and pictures as the platform's objects), and back.
HRESULT VariantFromBagValue(const CtlVariant& value, VARIANT& out);
CtlVariant BagValueFromVariant(const VARIANT& value);

}  // namespace tc::com
