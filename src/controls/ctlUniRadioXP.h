// ctlUniRadioXP: an option button with a Unicode caption; pressing it releases the other radios
// of the same container on the form.
#pragma once

#include "controls/CheckRadioBase.h"
#include "graphics/clsLineGSMini.h"

#include <memory>

enum eUniRadioXp_align : int32_t { UniRadioXp_Align_Left = 0, UniRadioXp_Align_Right = 1 };

class ctlUniRadioXPEvents : public ControlKeyEvents {};

// Members, events and persisted keys: CheckRadioBase plus the box's two colours and
// ExternUnpress. A click on a released radio presses it, releases the others of its group and
// raises Click; a click on a pressed one does nothing.
class ctlUniRadioXP final : public CheckRadioBase {
public:
    explicit ctlUniRadioXP(ControlSurface& surface, ctlUniRadioXPEvents* events = nullptr);

    int32_t RadioBackColor() const noexcept { return BoxBackColor(); }
    void RadioBackColor(int32_t value) { BoxBackColor(value); }
    int32_t RadioForeColor() const noexcept { return BoxForeColor(); }
    void RadioForeColor(int32_t value) { BoxForeColor(value); }
    using CheckRadioBase::Pressed;
    // A change repaints and raises Click; True (changed or not) then releases the group.
    void Pressed(bool value);
    bool Value() const noexcept { return Pressed(); }
    void Value(bool value) { Pressed(value); }
    // Called by another radio of the form: releases this one, without Click, when it sits in
    // the container of that name (and, with an index, of that index).
    void ExternUnpress(const CtlString& sContainerName, const CtlVariant& vContainerIndex = CtlVariant());

    void DblClick() override;
    int32_t AccessibleRole(int32_t child) const override;
    // "Select"; it does what a click does (nothing on a pressed radio).
    CtlString AccessibleDefaultAction(int32_t child) const override;
    CtlString TypeName() const override { return u"ctlUniRadioXP"; }
    // ExternUnpress(name [, index]), as other radios call it.
    CtlVariant CallByName(const CtlString& member, const std::vector<CtlVariant>& args) override;

protected:
    void ClickHandler() override;
    void DrawBox(HDC hdc, const CTL_RECT& box, bool bEnabled) override;

private:
    // The group step: ExternUnpress on every other radio of the form.
    void pvUnpressOthers();
    // Whether this radio's container is an element of a control array; its index into `index`.
    bool pvHasIndex(CtlVariant& index) const;

    std::unique_ptr<clsLineGSMini> m_ring;  // made at the first drawing
};
