// PointerEvents: the mouse and OLE drag events a surface hands to its control and a control to its host.
#pragma once

#include <cstdint>

#include "frame/SurfaceDataObject.h"

// Every entry does nothing unless overridden. Arguments are by reference where a handler's
// change goes back to the caller (effects, cursors, coordinates).
class PointerEvents {
public:
    virtual ~PointerEvents() = default;
    virtual void Click() {}
    virtual void DblClick() {}
    virtual void MouseDown(int16_t& /*Button*/, int16_t& /*Shift*/, float& /*x*/, float& /*y*/) {}
    virtual void MouseMove(int16_t& /*Button*/, int16_t& /*Shift*/, float& /*x*/, float& /*y*/) {}
    virtual void MouseUp(int16_t& /*Button*/, int16_t& /*Shift*/, float& /*x*/, float& /*y*/) {}
    virtual void OLEStartDrag(SurfaceDataObject& /*Data*/, int32_t& /*AllowedEffects*/) {}
    virtual void OLESetData(SurfaceDataObject& /*Data*/, int16_t& /*DataFormat*/) {}
    virtual void OLEGiveFeedback(int32_t& /*Effect*/, bool& /*DefaultCursors*/) {}
    virtual void OLEDragOver(SurfaceDataObject& /*Data*/, int32_t& /*Effect*/, int16_t& /*Button*/,
                             int16_t& /*Shift*/, float& /*x*/, float& /*y*/, int16_t& /*State*/) {}
    virtual void OLEDragDrop(SurfaceDataObject& /*Data*/, int32_t& /*Effect*/, int16_t& /*Button*/,
                             int16_t& /*Shift*/, float& /*x*/, float& /*y*/) {}
    virtual void OLECompleteDrag(int32_t& /*Effect*/) {}
};
