// SurfaceClient: the entry points a control implements and its surface calls (paint, size, input, OLE drag).
#pragma once

#include <cstdint>

#include "common/CtlTypes.h"
#include "frame/KeyEvents.h"
#include "frame/PointerEvents.h"

class AccessibleSource;

// Arguments a host may change are passed by reference, as the events that carry them on.
class SurfaceClient : public PointerEvents, public KeyEvents {
public:
    virtual void Paint() {}
    virtual void Resize() {}
    virtual void AmbientChanged(const CtlString& /*propertyName*/) {}
    virtual void AccessKeyPress(int16_t& /*KeyAscii*/) {}
    virtual void GotFocus() {}
    virtual void LostFocus() {}
    // What the control tells screen readers; nullptr leaves the window to the system's default.
    virtual AccessibleSource* Accessible() { return nullptr; }
    // The surface's DPI changed: cached fonts, bitmaps and metrics are stale.
    virtual void DpiChanged() {}
};
