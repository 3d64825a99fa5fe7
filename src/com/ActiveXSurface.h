// ActiveXSurface: the surface of a control that an OLE container hosts: the container's ambient
// properties and extended control, a window only while the control is in place active, and
// drawing into a container's DC without a window.
#pragma once

#include <cstdint>
#include <memory>

#include "com/ComPrerequisites.h"
#include "com/ComPtr.h"
#include "frame/ControlSurface.h"
#include "frame/Win32Surface.h"

namespace tc::com {

// What the surface asks of the object that adapts it to the container.
class ActiveXSurfaceHost {
public:
    virtual ~ActiveXSurfaceHost() = default;
    // The control resized itself (pixels): the container learns the new rectangle.
    virtual void SurfaceResized(int32_t width, int32_t height) = 0;
    // The control wants a repaint while it has no window: the container redraws the view.
    virtual void SurfaceInvalidated() = 0;
    virtual void SurfacePropertyChanged(const CtlString& propertyName) = 0;
    // The access keys changed: the container asks for the control's mnemonics again.
    virtual void SurfaceAccessKeysChanged() = 0;
};

class ActiveXSurface final : public ControlSurface {
public:
    explicit ActiveXSurface(bool autoRedraw);
    ~ActiveXSurface() override;
    // Holds the control's state and maybe a window: never copied.
    ActiveXSurface(const ActiveXSurface&) = delete;
    ActiveXSurface& operator=(const ActiveXSurface&) = delete;

    // ---- container side ----
    void SetHost(ActiveXSurfaceHost* host) noexcept { m_host = host; }
    // The client site whose ambient properties and extended control the control reads; null
    // detaches. Takes the ambient font as the surface's first font.
    void SetSite(IOleClientSite* site);
    // In-place activation: a window in `parent` at `position` (pixels, parent's client area).
    void CreateWindowIn(HWND parent, const RECT& position);
    void DestroyWindow() noexcept;
    void MoveTo(const RECT& position);
    // The size the surface has without a window (pixels).
    void PixelExtent(int32_t width, int32_t height);
    SIZE PixelExtent() const noexcept { return m_extent; }
    // The control's appearance at `bounds` of `hdc`, with or without a window.
    void DrawInto(HDC hdc, const RECT& bounds);
    // The container changed an ambient property.
    void NotifyAmbientChanged(const CtlString& propertyName);
    SurfaceClient* Client() const noexcept { return m_client; }
    // Makes the surface answer `dpi`, with or without a window, and re-creates its font for it
    // (0: the window's own again). The control learns of it with the next DPI change message, as
    // Win32Surface::OverrideDpi; a host rendering at a chosen DPI sets it before activation.
    void OverrideDpi(int32_t dpi);

    // ---- ControlSurface ----
    void SetClient(SurfaceClient* client) override;
    HWND hWnd() const override { return m_window ? m_window->hWnd() : nullptr; }
    HDC hDC() const override;
    float ScaleWidth() const override;
    float ScaleHeight() const override;
    float ScaleX(float value, int16_t fromMode, int16_t toMode) const override;
    float ScaleY(float value, int16_t fromMode, int16_t toMode) const override;
    // The in-place window's DPI; without a window, the DPI of the container's window (the
    // screen's when the site has none). A DPI set with OverrideDpi comes first in both states.
    int32_t Dpi() const override;
    void Size(float width, float height) override;
    bool AutoRedraw() const override { return m_bAutoRedraw; }
    void Refresh() override;
    bool Enabled() const override { return m_bEnabled; }
    void Enabled(bool value) override;
    int32_t ForeColor() const override { return m_lForeColor; }
    void ForeColor(int32_t value) override;
    std::shared_ptr<StdFont> Font() const override { return m_font; }
    void Font(std::shared_ptr<StdFont> value) override;
    int16_t BackStyle() const override { return m_iBackStyle; }
    void BackStyle(int16_t value) override;
    void MaskColor(int32_t value) override;
    void MaskPicture(std::shared_ptr<StdPicture> value) override;
    CtlString AccessKeys() const override { return m_sAccessKeys; }
    void AccessKeys(const CtlString& value) override;
    int16_t MousePointer() const override { return m_iMousePointer; }
    void MousePointer(int16_t value) override;
    std::shared_ptr<StdPicture> MouseIcon() const override { return m_mouseIcon; }
    void MouseIcon(std::shared_ptr<StdPicture> value) override;
    int16_t OLEDropMode() const override { return m_iOLEDropMode; }
    void OLEDropMode(int16_t value) override;
    void OLEDrag() override;
    SurfaceExtender& Extender() override;
    SurfaceAmbient& Ambient() override;
    void PropertyChanged(const CtlString& propertyName) override;

private:
    class SiteAmbient;
    class SiteExtender;

    // The offscreen bitmap that stands for the window of an AutoRedraw control without one.
    void ensureBackingStore();
    // Makes the GDI font for the surface's font at the surface's DPI when there is none, it is for
    // another DPI, or `remake`; selects it into the DCs of our own.
    void refreshFont(bool remake);

    ActiveXSurfaceHost* m_host = nullptr;
    SurfaceClient* m_client = nullptr;
    bool m_bAutoRedraw;
    std::unique_ptr<SiteAmbient> m_ambient;
    std::unique_ptr<SiteExtender> m_extender;
    // Declared after what it refers to (ambient and extender), so that it goes first.
    std::unique_ptr<Win32Surface> m_window;
    SIZE m_extent{100, 20};
    // While DrawInto runs: the DC and size that drawing goes to.
    HDC m_drawDC = nullptr;
    SIZE m_drawExtent{0, 0};
    FontOwner m_hFont;  // the surface's font as a GDI font, for DCs of our own
    int32_t m_iFontDpi = 0;  // the DPI m_hFont was made for
    int32_t m_iDpiOverride = 0;
    HWND m_siteWindow = nullptr;  // the container's window, while a site is set
    BitmapOwner m_backBitmap;
    MemoryDCOwner m_backDC;
    bool m_bEnabled = true;
    int32_t m_lForeColor = static_cast<int32_t>(0x80000012u);
    std::shared_ptr<StdFont> m_font;
    int16_t m_iBackStyle = 1;
    int32_t m_lMaskColor = 0;
    std::shared_ptr<StdPicture> m_maskPicture;
    CtlString m_sAccessKeys;
    int16_t m_iMousePointer = 0;
    std::shared_ptr<StdPicture> m_mouseIcon = StdPicture::Empty();
    int16_t m_iOLEDropMode = 0;
};

}  // namespace tc::com
