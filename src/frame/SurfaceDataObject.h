// SurfaceDataObject: the data carried by an OLE drag, as the drag events hand it to a host.
#pragma once

#include <cstdint>

#include "common/CtlTypes.h"

// An interface so that a fake surface can carry text without OLE. Formats are clipboard format
// numbers (1 text, 13 Unicode text, 15 file list).
class SurfaceDataObject {
public:
    virtual ~SurfaceDataObject() = default;
    virtual bool GetFormat(int16_t format) const = 0;
    // Unicode text of the drag (format 13, or format 1 widened), empty when it has none.
    virtual CtlString GetText() const = 0;
    // Offers text to the drop target; only meaningful on the source side of a drag.
    virtual void SetText(const CtlString& text) = 0;
    virtual void Clear() = 0;
};
