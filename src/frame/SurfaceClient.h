// SurfaceClient: the entry points a control implements and its surface calls (paint, size, input, OLE drag).
#pragma once

#include <cstdint>

#include "common/CtlTypes.h"
#include "frame/SurfaceDataObject.h"

// Arguments a host may change are passed by reference, as the events that carry them on.
class SurfaceClient {
public:
    virtual ~SurfaceClient() = default;

    virtual void Paint() {}
    virtual void Resize() {}
    virtual void AmbientChanged(const CtlString& /*propertyName*/) {}
    virtual void AccessKeyPress(int16_t& /*KeyAscii*/) {}
    virtual void GotFocus() {}
    virtual void LostFocus() {}

    virtual void Click() {}
    virtual void DblClick() {}
    virtual void MouseDown(int16_t& /*Button*/, int16_t& /*Shift*/, float& /*x*/, float& /*y*/) {}
    virtual void MouseMove(int16_t& /*Button*/, int16_t& /*Shift*/, float& /*x*/, float& /*y*/) {}
    virtual void MouseUp(int16_t& /*Button*/, int16_t& /*Shift*/, float& /*x*/, float& /*y*/) {}
    virtual void KeyDown(int16_t& /*KeyCode*/, int16_t& /*Shift*/) {}
    virtual void KeyPress(int16_t& /*KeyAscii*/) {}
    virtual void KeyUp(int16_t& /*KeyCode*/, int16_t& /*Shift*/) {}

    virtual void OLEStartDrag(SurfaceDataObject& /*Data*/, int32_t& /*AllowedEffects*/) {}
    virtual void OLESetData(SurfaceDataObject& /*Data*/, int16_t& /*DataFormat*/) {}
    virtual void OLEGiveFeedback(int32_t& /*Effect*/, bool& /*DefaultCursors*/) {}
    virtual void OLEDragOver(SurfaceDataObject& /*Data*/, int32_t& /*Effect*/, int16_t& /*Button*/,
                             int16_t& /*Shift*/, float& /*x*/, float& /*y*/, int16_t& /*State*/) {}
    virtual void OLEDragDrop(SurfaceDataObject& /*Data*/, int32_t& /*Effect*/, int16_t& /*Button*/,
                             int16_t& /*Shift*/, float& /*x*/, float& /*y*/) {}
    virtual void OLECompleteDrag(int32_t& /*Effect*/) {}
};
