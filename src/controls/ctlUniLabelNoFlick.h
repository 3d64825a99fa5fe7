// ctlUniLabelNoFlick: the label drawn into an AutoRedraw surface, so a caption never shows half-painted.
#pragma once

#include "controls/UniLabelBase.h"

using ctlUniLabelNoFlickEvents = ctlUniLabelEvents;

// The host gives it a surface with AutoRedraw (Win32Surface(..., true)): every drawing goes to
// the surface's bitmap, and the surface shows the finished bitmap. Text and masks use
// non-antialiased glyphs, whose hard edges a window shape needs.
class ctlUniLabelNoFlick final : public UniLabelBase {
public:
    explicit ctlUniLabelNoFlick(ControlSurface& surface, ctlUniLabelNoFlickEvents* events = nullptr);

    eUniLabel_BackStyle BackStyle() const noexcept { return BackStyleValue(); }
    void BackStyle(eUniLabel_BackStyle value) { SetBackStyleValue(value); }
    HDC hDC() const { return Surface().hDC(); }
    // bNow is accepted and ignored: the bitmap is always drawn at once.
    void Refresh(bool bNow = false);

protected:
    void DrawControl(HDC hdc) override;
    void UpdateRegion() override { RedrawAutoRedraw(); }
    bool DrawsThroughAutoRedraw() const override { return true; }
    void RedrawAutoRedraw() override;
    int32_t TextQuality() const override;
};
