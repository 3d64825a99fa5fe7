// ctlUniCheckXP: a tick box with a Unicode caption, its box drawn in the shared button styles.
#pragma once

#include "controls/CheckRadioBase.h"

enum eUniCheckXp_align : int32_t { UniCheckXp_Align_Left = 0, UniCheckXp_Align_Right = 1 };

class ctlUniCheckXPEvents : public ControlKeyEvents {};

// Members, events and persisted keys: CheckRadioBase plus the box's two colours. A click, Space,
// Enter or the access key toggles Pressed and raises Click; a double click toggles twice.
class ctlUniCheckXP final : public CheckRadioBase {
public:
    explicit ctlUniCheckXP(ControlSurface& surface, ctlUniCheckXPEvents* events = nullptr);

    int32_t CheckBackColor() const noexcept { return BoxBackColor(); }
    void CheckBackColor(int32_t value) { BoxBackColor(value); }
    int32_t CheckForeColor() const noexcept { return BoxForeColor(); }
    void CheckForeColor(int32_t value) { BoxForeColor(value); }
    using CheckRadioBase::Pressed;
    // A change repaints and raises Click; setting the present state does nothing.
    void Pressed(bool value);
    // 1 while pressed, else 0; any non-zero value presses.
    int16_t Value() const noexcept { return Pressed() ? 1 : 0; }
    void Value(int32_t value) { Pressed(value != 0); }

    void DblClick() override;
    int32_t AccessibleRole(int32_t child) const override;
    // "Uncheck" while pressed, else "Check".
    CtlString AccessibleDefaultAction(int32_t child) const override;
    CtlString TypeName() const override { return u"ctlUniCheckXP"; }

protected:
    void ClickHandler() override;
    void DrawBox(HDC hdc, const CTL_RECT& box, bool bEnabled) override;
};
