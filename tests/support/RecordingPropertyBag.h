// RecordingPropertyBag: a property bag for tests that records the keys read and written, in order.
#pragma once

#include <vector>

#include "frame/MemoryPropertyBag.h"

namespace testsupport {

class RecordingPropertyBag : public MemoryPropertyBag {
public:
    CtlVariant ReadProperty(const CtlString& key, const CtlVariant& defaultValue) override {
        reads.push_back(key);
        return MemoryPropertyBag::ReadProperty(key, defaultValue);
    }
    void WriteProperty(const CtlString& key, const CtlVariant& value,
                       const CtlVariant& defaultValue = CtlVariant()) override {
        writes.push_back(key);
        MemoryPropertyBag::WriteProperty(key, value, defaultValue);
    }

    std::vector<CtlString> reads;
    std::vector<CtlString> writes;
};

}  // namespace testsupport
