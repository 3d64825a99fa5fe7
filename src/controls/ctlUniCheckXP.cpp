#include "controls/ctlUniCheckXP.h"

#include <oleacc.h>

#include "graphics/DrawButton.h"
#include "graphics/modCommonDraw.h"

ctlUniCheckXP::ctlUniCheckXP(ControlSurface& surface, ctlUniCheckXPEvents* events)
    : CheckRadioBase(surface, events, u"Check") {}

void ctlUniCheckXP::Pressed(bool value) {
    if (ChangePressed(value)) RaiseClick();
}

void ctlUniCheckXP::ClickHandler() {
    if (!ClickEnabled()) return;
    ChangePressed(!Pressed());
    RaiseClick();
}

void ctlUniCheckXP::DblClick() {
    Arbiter().DblClick([this] { ClickHandler(); }, [this] { RaiseDblClick(); });
}

int32_t ctlUniCheckXP::AccessibleRole(int32_t child) const {
    return child == CHILDID_SELF ? ROLE_SYSTEM_CHECKBUTTON : CheckRadioBase::AccessibleRole(child);
}

CtlString ctlUniCheckXP::AccessibleDefaultAction(int32_t child) const {
    if (child != CHILDID_SELF) return CtlString();
    return Pressed() ? u"Uncheck" : u"Check";
}

void ctlUniCheckXP::DrawBox(HDC hdc, const CTL_RECT& box, bool bEnabled) {
    CTL_RECT r = box;
    if (bEnabled) {
        DrawButton(hdc, r, CheckBackColor(), true, BorderColor(), false, false, false, false, true, Style(), -1, true,
                   Dpi());
    } else {
        DrawButton(hdc, r, BackColor(), true, BorderColor(), true, false, false, false, true, iCtlBtnStyle_Xp, -1, true,
                   Dpi());
    }
    const int32_t last = box.right - box.left - ScaleByDpi(1);  // 14 at 96 DPI
    PaintCornerPixel(hdc, box.left, box.top);
    PaintCornerPixel(hdc, box.left, box.top + last);
    PaintCornerPixel(hdc, box.left + last, box.top);
    PaintCornerPixel(hdc, box.left + last, box.top + last);
    if (!Pressed()) return;

    // The tick: two strokes from (cx, cy), down-left 3 and up-right 5, each three lines thick.
    const int32_t color = bEnabled ? CheckForeColor() : kDisabledTextColor;
    const int32_t cx = box.left + ScaleByDpi(6);
    const int32_t cy = box.top + ScaleByDpi(8);
    const int32_t shortArm = ScaleByDpi(3);
    const int32_t longArm = ScaleByDpi(5);
    const int32_t thickness = ScaleByDpi(3);
    for (int32_t k = 0; k < thickness; ++k) {
        DrawLineCoords(hdc, cx, cy + k, cx - shortArm, cy - shortArm + k, color, 1, PS_SOLID);
        DrawLineCoords(hdc, cx, cy + k, cx + longArm, cy - longArm + k, color, 1, PS_SOLID);
    }
}
