// ControlEvents and ControlKeyEvents: the events every control with a surface raises to its host.
#pragma once

#include <cstdint>

#include "frame/SurfaceDataObject.h"

// A host implements what it needs; the rest do nothing. Arguments are by reference where a
// handler's change goes back to the surface (effects, cursors) or to the control.
class ControlEvents {
public:
    virtual ~ControlEvents() = default;
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

// The key events of controls that can take the focus.
class ControlKeyEvents : public ControlEvents {
public:
    virtual void KeyDown(int16_t& /*KeyCode*/, int16_t& /*Shift*/) {}
    virtual void KeyPress(int16_t& /*KeyAscii*/) {}
    virtual void KeyUp(int16_t& /*KeyCode*/, int16_t& /*Shift*/) {}
};
