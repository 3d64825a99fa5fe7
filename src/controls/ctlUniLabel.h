// ctlUniLabel: a Unicode caption on a DrawButton background, drawn in the surface's Paint.
#pragma once

#include "controls/UniLabelBase.h"

// Members, events and persisted keys: see UniLabelBase. BackStyle is reachable only through the
// property bag on this control: a host that wants to switch it at run time uses the no-flicker
// label.
class ctlUniLabel final : public UniLabelBase {
public:
    explicit ctlUniLabel(ControlSurface& surface, ctlUniLabelEvents* events = nullptr);

    // Shape step, then an immediate drawing when bNow, else a repaint request.
    void Refresh(bool bNow = false) { RefreshControl(bNow); }

protected:
    void DrawControl(HDC hdc) override;
    void UpdateRegion() override { pvUpdateRegion(); }
};
