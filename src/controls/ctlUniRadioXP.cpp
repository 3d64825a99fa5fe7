#include "controls/ctlUniRadioXP.h"

#include <oleacc.h>

#include "common/CaseFold.h"
#include "graphics/DrawButton.h"
#include "graphics/modCommonDraw.h"

namespace {

bool sameIndex(const CtlVariant& a, const CtlVariant& b) noexcept {
    if (VariantIsEmpty(a) || VariantIsEmpty(b)) return VariantIsEmpty(a) && VariantIsEmpty(b);
    return VariantToLong(a, -1) == VariantToLong(b, -2);
}

}  // namespace

ctlUniRadioXP::ctlUniRadioXP(ControlSurface& surface, ctlUniRadioXPEvents* events)
    : CheckRadioBase(surface, events, u"Radio") {}

void ctlUniRadioXP::Pressed(bool value) {
    if (ChangePressed(value)) RaiseClick();
    if (value) pvUnpressOthers();
}

void ctlUniRadioXP::ClickHandler() {
    if (Pressed() || !ClickEnabled()) return;
    ChangePressed(true);
    pvUnpressOthers();
    RaiseClick();
}

void ctlUniRadioXP::DblClick() { RaiseDblClick(); }

void ctlUniRadioXP::ExternUnpress(const CtlString& sContainerName, const CtlVariant& vContainerIndex) {
    if (!Pressed()) return;
    try {
        const SurfaceContainer* container = Surface().Extender().Container();
        if (container == nullptr || container->Name() != sContainerName) return;
        if (!VariantIsEmpty(vContainerIndex) && !sameIndex(container->Index(), vContainerIndex)) return;
    } catch (...) {
        return;  // a container it cannot name is no container of that name
    }
    ChangePressed(false);
}

bool ctlUniRadioXP::pvHasIndex(CtlVariant& index) const {
    try {
        const SurfaceContainer* container = Surface().Extender().Container();
        if (container == nullptr) return false;
        index = container->Index();
        return !VariantIsEmpty(index);
    } catch (...) {
        return false;
    }
}

void ctlUniRadioXP::pvUnpressOthers() {
    // Every statement may fail on a host that lacks what it asks; a failure skips that one.
    SurfaceExtender& extender = Surface().Extender();
    std::vector<std::unique_ptr<FormControl>> controls;
    CtlString myName;
    CtlVariant myIndex;
    std::vector<CtlVariant> args;
    try {
        controls = extender.ParentControls();
        myName = extender.Name();
        const SurfaceContainer* container = extender.Container();
        if (container == nullptr) return;
        args.emplace_back(container->Name());
    } catch (...) {
        return;
    }
    try {
        myIndex = extender.Index();
    } catch (...) {
    }
    CtlVariant containerIndex;
    if (pvHasIndex(containerIndex)) args.push_back(containerIndex);

    for (const std::unique_ptr<FormControl>& other : controls) {
        try {
            if (other->TypeName() != u"ctlUniRadioXP") continue;
            if (other->Name() == myName) {
                CtlVariant otherIndex;
                try {
                    otherIndex = other->Index();
                } catch (...) {
                }
                if (sameIndex(otherIndex, myIndex)) continue;  // this radio itself
            }
            other->CallByName(u"ExternUnpress", args);
        } catch (...) {
        }
    }
}

CtlVariant ctlUniRadioXP::CallByName(const CtlString& member, const std::vector<CtlVariant>& args) {
    if (!EqualsIgnoreCase(member, u"ExternUnpress") || args.empty() || args.size() > 2) {
        return CheckRadioBase::CallByName(member, args);
    }
    ExternUnpress(pvBagToString(args[0]), args.size() > 1 ? args[1] : CtlVariant());
    return CtlVariant();
}

int32_t ctlUniRadioXP::AccessibleRole(int32_t child) const {
    return child == CHILDID_SELF ? ROLE_SYSTEM_RADIOBUTTON : CheckRadioBase::AccessibleRole(child);
}

CtlString ctlUniRadioXP::AccessibleDefaultAction(int32_t child) const {
    return child == CHILDID_SELF ? CtlString(u"Select") : CtlString();
}

void ctlUniRadioXP::DrawBox(HDC hdc, const CTL_RECT& box, bool bEnabled) {
    const int32_t back = BackColor();
    CTL_RECT r = box;
    if (bEnabled) {
        DrawButton(hdc, r, RadioBackColor(), false, BorderColor(), false, false, false, false, false, Style(), -1, true,
                   Dpi());
    } else {
        DrawButton(hdc, r, back, false, BorderColor(), true, false, false, false, false, iCtlBtnStyle_Xp, -1, true,
                   Dpi());
    }
    // Circles of the back colour just outside the box erase its corners; four pixels finish it.
    const int32_t rings = ScaleByDpi(3);
    for (int32_t k = 1; k <= rings; ++k) {
        pvDrawEllipse(hdc, box.left - k, box.top - k, box.right + k, box.bottom + k, false, back, back, 1,
                      PS_INSIDEFRAME);
    }
    const int32_t one = ScaleByDpi(1);
    const int32_t inner = box.right - box.left - 2 * one;  // 13 at 96 DPI
    PaintCornerPixel(hdc, box.left + one, box.top + one);
    PaintCornerPixel(hdc, box.left + one, box.top + inner);
    PaintCornerPixel(hdc, box.left + inner, box.top + one);
    PaintCornerPixel(hdc, box.left + inner, box.top + inner);

    if (Pressed()) {
        const int32_t dot = bEnabled ? RadioForeColor() : kDisabledTextColor;
        const int32_t inset = ScaleByDpi(5);
        pvDrawEllipse(hdc, box.left + inset, box.top + inset, box.right - inset, box.bottom - inset, true, dot, dot, 1,
                      PS_INSIDEFRAME);
    }

    // The ring, in the border colour DrawButton would derive, one step darker, anti-aliased.
    const int32_t border = BorderColor() == -1 ? ColorInc(RadioBackColor(), -68) : BorderColor();
    if (!m_ring) m_ring = std::make_unique<clsLineGSMini>();
    const float radius = static_cast<float>(box.right - box.left - 1) / 2.0F;  // 7 at 96 DPI
    m_ring->CircleGP(hdc, static_cast<float>(box.left) + radius, static_cast<float>(box.top) + radius, radius, radius,
                     ColorInc(border, -51));
}
