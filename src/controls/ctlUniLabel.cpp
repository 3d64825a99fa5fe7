#include "controls/ctlUniLabel.h"

#include "graphics/clsFontHDC.h"

ctlUniLabel::ctlUniLabel(ControlSurface& surface, ctlUniLabelEvents* events) : UniLabelBase(surface, events) {}

void ctlUniLabel::DrawControl(HDC hdc) { DrawLabel(hdc, efhat_default, false); }
