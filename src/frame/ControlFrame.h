// ControlFrame: the behaviour every self-drawn control shares: drawing guard and repaint requests,
// colours, the shape mask, focus, access keys, the tip rule, event re-raising and the start step.
#pragma once

#include <cstdint>
#include <memory>

#include "common/CtlTypes.h"
#include "frame/AccessibleSource.h"
#include "frame/ControlEvents.h"
#include "frame/ControlSurface.h"
#include "frame/CtlVariant.h"

class clsMEMDC;
class clsFontHDC;

// A control derives from it, implements DrawControl, and exposes the members it has by
// `using` the protected ones below. The frame registers itself as the surface's client and
// detaches in its destructor.
class ControlFrame : public SurfaceClient, public AccessibleSource {
public:
    // The grey text of a disabled control, and the usual defaults.
    static constexpr int32_t kDisabledTextColor = static_cast<int32_t>(0x80000011u);
    static constexpr int32_t kDefaultBackColor = static_cast<int32_t>(0x8000000Fu);
    static constexpr int32_t kDefaultForeColor = static_cast<int32_t>(0x80000012u);

    ControlFrame(ControlSurface& surface, ControlEvents* events);
    ~ControlFrame() override;
    // Registered with its surface by address: copying would leave the surface calling the original.
    ControlFrame(const ControlFrame&) = delete;
    ControlFrame& operator=(const ControlFrame&) = delete;

    // ---- members nearly every control has ----
    bool Enabled() const;
    void Enabled(bool value);
    std::shared_ptr<StdFont> Font() const;
    // Stores the host's object itself; controls with a mask re-shape (UpdateRegion).
    void Font(std::shared_ptr<StdFont> value);
    CtlVariant ApplyFontChanges();
    HWND Hwnd() const { return m_surface.hWnd(); }
    int16_t OLEDropMode() const { return m_surface.OLEDropMode(); }
    void OLEDropMode(int16_t value);
    void OLEDrag() { m_surface.OLEDrag(); }
    int16_t MousePointer() const { return m_surface.MousePointer(); }
    void MousePointer(int16_t value) { m_surface.MousePointer(value); }
    std::shared_ptr<StdPicture> MouseIcon() const { return m_surface.MouseIcon(); }
    void MouseIcon(std::shared_ptr<StdPicture> value) { m_surface.MouseIcon(std::move(value)); }

    // True while DrawControl runs (the guard against re-entry).
    bool IsDrawing() const noexcept { return m_bDrawing; }

    // ---- host entry points (SurfaceClient) ----
    void Paint() override;
    void Resize() override;
    void AmbientChanged(const CtlString& propertyName) override;
    void GotFocus() override;
    void LostFocus() override;
    // Rebuilds what depends on the DPI (RebuildDpiCaches, the shape), then repaints.
    void DpiChanged() override;
    void Click() override;
    void DblClick() override;
    void MouseDown(int16_t& Button, int16_t& Shift, float& x, float& y) override;
    void MouseMove(int16_t& Button, int16_t& Shift, float& x, float& y) override;
    void MouseUp(int16_t& Button, int16_t& Shift, float& x, float& y) override;
    void OLEStartDrag(SurfaceDataObject& Data, int32_t& AllowedEffects) override;
    void OLESetData(SurfaceDataObject& Data, int16_t& DataFormat) override;
    void OLEGiveFeedback(int32_t& Effect, bool& DefaultCursors) override;
    void OLEDragOver(SurfaceDataObject& Data, int32_t& Effect, int16_t& Button, int16_t& Shift, float& x, float& y,
                     int16_t& State) override;
    void OLEDragDrop(SurfaceDataObject& Data, int32_t& Effect, int16_t& Button, int16_t& Shift, float& x,
                     float& y) override;
    void OLECompleteDrag(int32_t& Effect) override;
    AccessibleSource* Accessible() override { return this; }

    // ---- what screen readers read (AccessibleSource) ----
    // Defaults for the control itself: a client area named by AccessibleCaption without its
    // access-key marker, the tip as description, the state from the window, the access key as
    // "Alt+X", no value and no default action. A control overrides what it knows better.
    int32_t AccessibleRole(int32_t child) const override;
    CtlString AccessibleName(int32_t child) const override;
    CtlString AccessibleDescription(int32_t child) const override;
    CtlString AccessibleValue(int32_t child) const override;
    int32_t AccessibleState(int32_t child) const override;
    CtlString AccessibleDefaultAction(int32_t child) const override;
    bool AccessibleDoDefaultAction(int32_t child) override;
    CtlString AccessibleKeyboardShortcut(int32_t child) const override;
    bool AccessibleSelect(int32_t child, int32_t flags) override;

protected:
    // Sets the guard for one DrawControl; `entered()` is false when a drawing already runs.
    class DrawingScope {
    public:
        explicit DrawingScope(ControlFrame& frame) noexcept;
        ~DrawingScope();
        // One scope per drawing: a copy would clear the guard twice.
        DrawingScope(const DrawingScope&) = delete;
        DrawingScope& operator=(const DrawingScope&) = delete;
        bool entered() const noexcept { return m_bEntered; }

    private:
        ControlFrame& m_frame;
        bool m_bEntered;
    };

    ControlSurface& Surface() const noexcept { return m_surface; }
    ControlEvents* Events() const noexcept { return m_events; }
    void SetEvents(ControlEvents* events) noexcept { m_events = events; }
    // Ambient.UserMode, asked each time (no caching); a host that cannot answer counts as run time.
    bool UserMode() const;

    // The whole appearance, from fields alone. Never throws.
    virtual void DrawControl(HDC hdc) = 0;
    // The shape step; nothing for controls without BackStyle or round regions.
    virtual void UpdateRegion() {}
    // True for controls that draw into an AutoRedraw surface and have no Paint handler.
    virtual bool DrawsThroughAutoRedraw() const { return false; }
    // The immediate repaint of an AutoRedraw control: DrawControl on hDC, then Refresh.
    virtual void RedrawAutoRedraw();
    // Raised after the frame's own Resize handling, for controls with a Resize event.
    virtual void RaiseResize() {}
    // Whether focus changes redraw (a button that shows its focus).
    virtual bool RedrawsOnFocus() const { return false; }
    // Drops fonts, bitmaps and metrics made for the previous DPI; DpiChanged calls it.
    virtual void RebuildDpiCaches() {}
    // The caption that names the control for screen readers (markers included); empty by default.
    virtual CtlString AccessibleCaption() const { return CtlString(); }
    // Whether the control takes the focus (focusable, and selectable with SELFLAG_TAKEFOCUS).
    virtual bool TakesFocus() const { return false; }
    // Tells screen readers that the control itself changed (EVENT_OBJECT_*); nothing without a window.
    void NotifyAccessibleEvent(DWORD event, int32_t child = CHILDID_SELF) const noexcept;
    // Font quality for text drawn through a window DC (eFontHDCQualityType).
    virtual int32_t TextQuality() const { return 0; }

    // Ask for a repaint in the cheapest safe way; several requests at run time cost one paint.
    void RequestDrawControl() noexcept;
    // Shape step, then an immediate drawing through a window DC when bNow (a request otherwise).
    void RefreshControl(bool bNow) noexcept;
    // GetDC(hWnd), the surface's font selected, DrawControl, font out, ReleaseDC. False when no DC.
    bool DrawThroughWindowDC() noexcept;
    // The colours step: the stored fore colour on the surface, or grey while disabled.
    void ApplyColours(int32_t lStoredForeColor);
    // The surface's DPI, and a size the control chooses itself (designed at 96 DPI) scaled to it.
    // Sizes a user set in properties are the user's and do not go through ScaleByDpi.
    int32_t Dpi() const { return m_surface.Dpi(); }
    int32_t ScaleByDpi(int32_t pixels) const { return ScaleToDpi(pixels, m_surface.Dpi()); }
    // ScaleWidth and ScaleHeight rounded to whole pixels, from 0,0.
    CTL_RECT SurfaceRect() const;
    // Selects the surface's font (or `font`) into `hdc` through `holder`; text colour untouched.
    void SelectSurfaceFont(clsFontHDC& holder, HDC hdc, int32_t quality) const;
    // Turns a white-on-black mask into the surface's shape: MaskColor 0, MaskPicture, BackStyle 0.
    // Consumes the memory DC's bitmap.
    void ApplyMask(clsMEMDC& mask);
    // A filled rounded rectangle of the whole surface as its shape (corner 2 at 96 DPI).
    void ApplyRoundMask();
    // Back to a rectangular window.
    void ApplyOpaqueShape();
    // Access keys: the character after a single "&" (none for "&&"), on the surface.
    void UpdateAccessKeys(const CtlString& caption);
    // Focus: the public ForceLostFocus of controls that have it.
    void ForceLostFocus();
    bool HasFocus() const noexcept { return m_bHasFocus; }
    // The tip rule, for MouseMove and controls with zones.
    void PassTip(const CtlString& tip) const;
    // Tip: the let stores it, tells the host and screen readers; no redraw. A control that has the
    // member exposes both with `using`.
    const CtlString& Tip() const noexcept { return m_sTip; }
    void Tip(const CtlString& value);
    const CtlString& TipText() const noexcept { return m_sTip; }
    // Loading and birth set it directly, without the let's notifications.
    CtlString m_sTip;

    // Start step of controls with ManualStart.
    virtual void StartControl() {}
    virtual void StopControl() {}
    // End of ReadProperties: remembers UserMode and starts unless ManualStart.
    void FinishLoading(bool bManualStart);
    void ExternalInitControl();
    bool IsStarted() const noexcept { return m_bStarted; }
    // Terminate: undoes the start step.
    void TerminateControl() noexcept;

private:
    ControlSurface& m_surface;
    ControlEvents* m_events;
    bool m_bDrawing = false;
    bool m_bHasFocus = false;
    bool m_bStarted = false;
    bool m_bUserModeAtLoad = true;
};

// The access key of a caption: the character after the first single "&", or empty.
CtlString AccessKeyOfCaption(const CtlString& caption);
// The caption as it reads: "&&" becomes one "&", a single "&" vanishes.
CtlString CaptionWithoutAccessKeyMarker(const CtlString& caption);
