#include "controls/ctlUniLabelNoFlick.h"

#include "graphics/clsFontHDC.h"

ctlUniLabelNoFlick::ctlUniLabelNoFlick(ControlSurface& surface, ctlUniLabelNoFlickEvents* events)
    : UniLabelBase(surface, events) {}

void ctlUniLabelNoFlick::Refresh(bool /*bNow*/) { RequestDrawControl(); }

void ctlUniLabelNoFlick::DrawControl(HDC hdc) { DrawLabel(hdc, efhat_nonantialiased, true); }

void ctlUniLabelNoFlick::RedrawAutoRedraw() {
    if (IsDrawing()) return;
    DrawControl(Surface().hDC());
    Surface().Refresh();
}

int32_t ctlUniLabelNoFlick::TextQuality() const { return efhat_nonantialiased; }
