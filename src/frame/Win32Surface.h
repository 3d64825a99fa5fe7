// Win32Surface: a real child window that is a control's surface for C++ hosts, the gallery and tests.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "frame/ControlSurface.h"
#include "frame/OleDragDrop.h"
#include "graphics/GdiRaii.h"

class HostForm;
class SurfaceAccessible;

// WM_PAINT becomes Paint, mouse and keys become the client's events, AutoRedraw keeps a backing
// bitmap, BackStyle 0 turns MaskPicture into the window's region, and OLEDropMode 1 registers
// the window as a drop target. Extender and Ambient default to built-in ones a host can fill
// (WindowExtender, WindowAmbient) or replace with its own.
class Win32Surface final : public ControlSurface, private OleDragReceiver {
public:
    // Extender of a plain window host: Left and Top in twips (its container has no scale mode).
    class WindowExtender final : public SurfaceExtender {
    public:
        explicit WindowExtender(Win32Surface& surface) noexcept : m_surface(surface) {}
        CtlString Name() const override { return m_sName; }
        void Name(CtlString value) { m_sName = std::move(value); }
        // A container with a name (and an index in a control array). Until a host names one, the
        // surface of a HostForm sits in an unnamed container (the form), others in none.
        SurfaceContainer* Container() const override {
            return m_bHasContainer || m_form != nullptr ? &m_container : nullptr;
        }
        void Container(CtlString name, CtlVariant index = {});
        SurfaceContainer* Parent() const override { return nullptr; }
        // The index in a control array; empty outside one.
        CtlVariant Index() const override { return m_vIndex; }
        void Index(CtlVariant value) { m_vIndex = std::move(value); }
        // The form's controls, once a HostForm added the surface.
        std::vector<std::unique_ptr<FormControl>> ParentControls() const override;
        HostForm* Form() const noexcept { return m_form; }
        void Form(HostForm* form) noexcept { m_form = form; }
        // Stored for bars that dock; a plain window does not move by it.
        int16_t Align() const override { return m_iAlign; }
        void Align(int16_t value) override { m_iAlign = value; }
        float Left() const override;
        void Left(float value) override;
        float Top() const override;
        void Top(float value) override;
        bool Default() const override { return m_bDefault; }
        void Default(bool value) noexcept { m_bDefault = value; }
        bool Cancel() const override { return m_bCancel; }
        void Cancel(bool value) noexcept { m_bCancel = value; }

    private:
        // A named container: no scale mode of its own, so Left and Top stay in twips.
        class NamedContainer final : public SurfaceContainer {
        public:
            bool HasScaleMode() const override { return false; }
            int16_t ScaleMode() const override { return kScaleTwips; }
            CtlString Name() const override { return name; }
            CtlVariant Index() const override { return index; }
            CtlString name;
            CtlVariant index;
        };

        Win32Surface& m_surface;
        CtlString m_sName;
        bool m_bDefault = false;
        bool m_bCancel = false;
        bool m_bHasContainer = false;
        mutable NamedContainer m_container;
        CtlVariant m_vIndex;
        HostForm* m_form = nullptr;
        int16_t m_iAlign = 0;
    };

    class WindowAmbient final : public SurfaceAmbient {
    public:
        bool UserMode() const override { return m_bUserMode; }
        std::shared_ptr<StdFont> Font() const override { return m_font; }
        void UserMode(bool value) noexcept { m_bUserMode = value; }
        void Font(std::shared_ptr<StdFont> value) { m_font = std::move(value); }

    private:
        bool m_bUserMode = true;
        std::shared_ptr<StdFont> m_font = std::make_shared<StdFont>(u"Tahoma", 8.0F);
    };

    // Creates the window at once (pixels, relative to `parent`). With `autoRedraw` hDC is a backing
    // bitmap that WM_PAINT copies to the screen.
    Win32Surface(HWND parent, int32_t x, int32_t y, int32_t width, int32_t height, bool autoRedraw = false);
    ~Win32Surface() override;
    // Owns a window: a copy would destroy it twice.
    Win32Surface(const Win32Surface&) = delete;
    Win32Surface& operator=(const Win32Surface&) = delete;

    // ---- host side ----
    WindowExtender& HostExtender() noexcept { return m_defaultExtender; }
    // The control on the surface, or nullptr.
    SurfaceClient* Client() const noexcept { return m_client; }
    WindowAmbient& HostAmbient() noexcept { return m_defaultAmbient; }
    // Replaces the built-in extender or ambient (nullptr restores it). The host keeps ownership.
    void UseExtender(SurfaceExtender* extender) noexcept { m_extender = extender; }
    void UseAmbient(SurfaceAmbient* ambient) noexcept { m_ambient = ambient; }
    // Tells the control that an ambient property changed, as a container does.
    void NotifyAmbientChanged(const CtlString& propertyName);
    // Called with each PropertyChanged of the control.
    void OnPropertyChanged(std::function<void(const CtlString&)> handler) { m_propertyChanged = std::move(handler); }
    // For a host's message loop: routes Alt+key to the surface whose AccessKeys holds the key
    // under the same top-level window. True when a surface took it.
    static bool TranslateAccessKey(const MSG& message);
    // The surface's drop target while OLEDropMode is manual, else nullptr: for a host that
    // forwards drops arriving on a window of its own. No reference is added.
    IDropTarget* DropTarget() const noexcept { return m_dropTarget; }
    // Makes the surface answer `dpi` instead of its window's (0 follows the window again) and
    // re-creates its font; the control learns of it with the next WM_DPICHANGED_AFTERPARENT.
    void OverrideDpi(int32_t dpi);
    // The same for every surface created afterwards on any thread (0: none), for a host that
    // renders at a chosen DPI.
    static void OverrideDpiForNewSurfaces(int32_t dpi) noexcept;
    // The window class of every surface.
    static const wchar_t* WindowClassName() noexcept { return L"TarnwickSurface"; }

    // ---- ControlSurface ----
    // A new client (or none) disconnects the accessible object that described the old one.
    void SetClient(SurfaceClient* client) override;
    HWND hWnd() const override { return m_hWnd; }
    HDC hDC() const override;
    float ScaleWidth() const override;
    float ScaleHeight() const override;
    float ScaleX(float value, int16_t fromMode, int16_t toMode) const override;
    float ScaleY(float value, int16_t fromMode, int16_t toMode) const override;
    int32_t Dpi() const override;
    void Size(float width, float height) override;
    bool AutoRedraw() const override { return m_bAutoRedraw; }
    void Refresh() override;
    bool Enabled() const override;
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
    void AccessKeys(const CtlString& value) override { m_sAccessKeys = value; }
    int16_t MousePointer() const override { return m_iMousePointer; }
    void MousePointer(int16_t value) override { m_iMousePointer = value; }
    std::shared_ptr<StdPicture> MouseIcon() const override { return m_mouseIcon; }
    void MouseIcon(std::shared_ptr<StdPicture> value) override { m_mouseIcon = std::move(value); }
    int16_t OLEDropMode() const override { return m_iOLEDropMode; }
    void OLEDropMode(int16_t value) override;
    void OLEDrag() override;
    SurfaceExtender& Extender() override { return m_extender != nullptr ? *m_extender : m_defaultExtender; }
    SurfaceAmbient& Ambient() override { return m_ambient != nullptr ? *m_ambient : m_defaultAmbient; }
    void PropertyChanged(const CtlString& propertyName) override;

private:
    static LRESULT CALLBACK windowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void onPaint();
    void onSize();
    void onMouse(UINT message, WPARAM wParam, LPARAM lParam);
    bool onSetCursor();
    void onDestroy();
    LRESULT onGetObject(WPARAM wParam, LPARAM lParam);
    void disconnectAccessible() noexcept;
    void onDpiChanged(bool topLevel, const RECT* suggested);
    void applyFont();
    void applyRegion();
    void recreateBackingBitmap();
    int32_t pixelsPerInch(bool vertical) const;

    void OnOleDrag(IDataObject* data, DWORD keyState, POINTL screenPoint, DWORD& effect, int16_t state) override;
    bool OnOleFeedback(DWORD effect) override;
    void OnOleSetData(int16_t format) override;

    HWND m_hWnd = nullptr;
    HDC m_hOwnDC = nullptr;  // CS_OWNDC: the same DC for the window's life, released with it
    // Declared before the backing DC, so that the DC goes first and nothing is deleted while selected.
    FontOwner m_hFont;       // selected into both DCs
    BitmapOwner m_backBitmap;
    MemoryDCOwner m_backDC;  // AutoRedraw backing store
    SurfaceClient* m_client = nullptr;
    bool m_bAutoRedraw = false;
    int32_t m_lForeColor = static_cast<int32_t>(0x80000012u);
    std::shared_ptr<StdFont> m_font;
    int16_t m_iBackStyle = 1;
    int32_t m_lMaskColor = 0;
    std::shared_ptr<StdPicture> m_maskPicture;
    CtlString m_sAccessKeys;
    int16_t m_iMousePointer = 0;
    std::shared_ptr<StdPicture> m_mouseIcon = StdPicture::Empty();
    int16_t m_iOLEDropMode = 0;
    int32_t m_iDpiOverride = 0;
    SurfaceDropTarget* m_dropTarget = nullptr;
    SurfaceAccessible* m_accessible = nullptr;  // one reference, while screen readers have asked
    OleTextDataObject* m_dragData = nullptr;  // while OLEDrag runs
    int16_t m_iPressedButtons = 0;            // buttons that went down inside, for Click
    bool m_bDoubleClickPending = false;       // the up after a double click raises no Click
    WindowExtender m_defaultExtender{*this};
    WindowAmbient m_defaultAmbient;
    SurfaceExtender* m_extender = nullptr;
    SurfaceAmbient* m_ambient = nullptr;
    std::function<void(const CtlString&)> m_propertyChanged;
};
