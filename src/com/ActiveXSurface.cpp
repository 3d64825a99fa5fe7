#include "com/ActiveXSurface.h"

#include <algorithm>
#include <cmath>

#include "com/ComConvert.h"
#include "common/CtlError.h"
#include "frame/ScaleUnits.h"
#include "graphics/modCommonDraw.h"

namespace tc::com {

namespace {

constexpr DISPID kAmbientUserMode = -709;  // DISPID_AMBIENT_USERMODE
constexpr DISPID kAmbientFont = -703;      // DISPID_AMBIENT_FONT

// A VARIANT that clears itself.
struct OwnedVariant {
    OwnedVariant() noexcept { ::VariantInit(&v); }
    ~OwnedVariant() { ::VariantClear(&v); }
    OwnedVariant(const OwnedVariant&) = delete;
    OwnedVariant& operator=(const OwnedVariant&) = delete;
    VARIANT v;
};

HRESULT getById(IDispatch* object, DISPID id, VARIANT& out) {
    if (!object) return E_POINTER;
    DISPPARAMS none{};
    return object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &out, nullptr, nullptr);
}

DISPID idOf(IDispatch* object, const wchar_t* name) {
    DISPID id = DISPID_UNKNOWN;
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    if (!object || FAILED(object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id))) {
        // As a late-bound call on an object without the member fails.
        throw CtlError(u"Extender", u"Object doesn't support this property or method", 438);
    }
    return id;
}

// Reads a named property converted to `type`; a host without it raises the error a late-bound
// call raises.
void getNamed(IDispatch* object, const wchar_t* name, VARTYPE type, OwnedVariant& out) {
    OwnedVariant raw;
    HRESULT hr = getById(object, idOf(object, name), raw.v);
    if (SUCCEEDED(hr)) hr = ::VariantChangeType(&out.v, &raw.v, 0, type);
    if (FAILED(hr)) throw CtlError(u"Extender", u"Object doesn't support this property or method", 438);
}

void putNamed(IDispatch* object, const wchar_t* name, float value) {
    const DISPID id = idOf(object, name);
    VARIANT arg;
    ::VariantInit(&arg);
    arg.vt = VT_R4;
    arg.fltVal = value;
    DISPID named = DISPID_PROPERTYPUT;
    DISPPARAMS params{&arg, &named, 1, 1};
    const HRESULT hr =
        object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &params, nullptr, nullptr, nullptr);
    if (FAILED(hr)) throw CtlError(u"Extender", u"Object doesn't support this property or method", 438);
}

int32_t screenPixelsPerInch(bool vertical) noexcept {
    const WindowDCGuard screen(nullptr);
    const int dpi = screen.get() != nullptr ? ::GetDeviceCaps(screen.get(), vertical ? LOGPIXELSY : LOGPIXELSX) : 96;
    return dpi > 0 ? dpi : 96;
}

std::shared_ptr<StdFont> defaultFont() { return std::make_shared<StdFont>(u"Tahoma", 8.0F); }

}  // namespace

// ---- ambient properties: the client site's IDispatch ----

class ActiveXSurface::SiteAmbient final : public SurfaceAmbient {
public:
    void Site(IOleClientSite* site) {
        m_dispatch.reset();
        if (site) site->QueryInterface(IID_IDispatch, m_dispatch.putVoid());
    }
    // A container that answers nothing is taken as run time, as a plain host window is.
    bool UserMode() const override {
        OwnedVariant value;
        if (FAILED(getById(m_dispatch.get(), kAmbientUserMode, value.v))) return true;
        if (FAILED(::VariantChangeType(&value.v, &value.v, 0, VT_BOOL))) return true;
        return value.v.boolVal != VARIANT_FALSE;
    }
    std::shared_ptr<StdFont> Font() const override {
        OwnedVariant value;
        if (SUCCEEDED(getById(m_dispatch.get(), kAmbientFont, value.v)) &&
            (value.v.vt == VT_DISPATCH || value.v.vt == VT_UNKNOWN) && value.v.punkVal) {
            ComPtr<IFontDisp> font;
            if (SUCCEEDED(value.v.punkVal->QueryInterface(IID_IFontDisp, font.putVoid()))) {
                try {
                    if (auto ours = FromFontDisp(font.get())) return ours;
                } catch (const ComFailure&) {
                }
            }
        }
        return defaultFont();
    }
    bool HasFont() const {
        OwnedVariant value;
        return SUCCEEDED(getById(m_dispatch.get(), kAmbientFont, value.v)) && value.v.vt == VT_DISPATCH;
    }

private:
    ComPtr<IDispatch> m_dispatch;
};

// ---- the extended control: late-bound Name, Container, Left, Top ----

class ActiveXSurface::SiteExtender final : public SurfaceExtender {
public:
    void Site(IOleClientSite* site) {
        m_extended.reset();
        m_container.Object(nullptr);
        ComPtr<IOleControlSite> controlSite;
        if (site && SUCCEEDED(site->QueryInterface(IID_IOleControlSite, controlSite.putVoid()))) {
            controlSite->GetExtendedControl(m_extended.put());
        }
    }
    CtlString Name() const override {
        OwnedVariant value;
        getNamed(m_extended.get(), L"Name", VT_BSTR, value);
        return FromBstr(value.v.bstrVal);
    }
    SurfaceContainer* Container() const override { return containerNamed(L"Container"); }
    SurfaceContainer* Parent() const override { return containerNamed(L"Parent"); }
    float Left() const override { return readFloat(L"Left"); }
    void Left(float value) override { putNamed(m_extended.get(), L"Left", value); }
    float Top() const override { return readFloat(L"Top"); }
    void Top(float value) override { putNamed(m_extended.get(), L"Top", value); }
    bool Default() const override { return readBool(L"Default"); }
    bool Cancel() const override { return readBool(L"Cancel"); }

private:
    // A container object with a ScaleMode of its own gives Left and Top in that unit.
    class DispatchContainer final : public SurfaceContainer {
    public:
        void Object(IDispatch* object) { m_object = ComPtr<IDispatch>::Share(object); }
        bool HasScaleMode() const override {
            try {
                OwnedVariant value;
                getNamed(m_object.get(), L"ScaleMode", VT_I2, value);
                return true;
            } catch (const CtlError&) {
                return false;
            }
        }
        int16_t ScaleMode() const override {
            OwnedVariant value;
            getNamed(m_object.get(), L"ScaleMode", VT_I2, value);
            return value.v.iVal;
        }

    private:
        ComPtr<IDispatch> m_object;
    };

    SurfaceContainer* containerNamed(const wchar_t* name) const {
        OwnedVariant value;
        getNamed(m_extended.get(), name, VT_DISPATCH, value);
        m_container.Object(value.v.pdispVal);
        return &m_container;
    }
    float readFloat(const wchar_t* name) const {
        OwnedVariant value;
        getNamed(m_extended.get(), name, VT_R4, value);
        return value.v.fltVal;
    }
    bool readBool(const wchar_t* name) const {
        OwnedVariant value;
        getNamed(m_extended.get(), name, VT_BOOL, value);
        return value.v.boolVal != VARIANT_FALSE;
    }

    ComPtr<IDispatch> m_extended;
    mutable DispatchContainer m_container;
};

// ---- life ----

ActiveXSurface::ActiveXSurface(bool autoRedraw)
    : m_bAutoRedraw(autoRedraw),
      m_ambient(std::make_unique<SiteAmbient>()),
      m_extender(std::make_unique<SiteExtender>()),
      m_font(defaultFont()) {
    selectFontInto(nullptr);
}

ActiveXSurface::~ActiveXSurface() {
    m_client = nullptr;
    DestroyWindow();
}

void ActiveXSurface::SetSite(IOleClientSite* site) {
    m_ambient->Site(site);
    m_extender->Site(site);
    if (site && m_ambient->HasFont()) Font(m_ambient->Font()->Clone());
}

void ActiveXSurface::SetClient(SurfaceClient* client) {
    m_client = client;
    if (m_window) m_window->SetClient(client);
}

void ActiveXSurface::CreateWindowIn(HWND parent, const RECT& position) {
    if (m_window) {
        MoveTo(position);
        return;
    }
    const int32_t width = std::max<int32_t>(position.right - position.left, 0);
    const int32_t height = std::max<int32_t>(position.bottom - position.top, 0);
    auto window = std::make_unique<Win32Surface>(parent, position.left, position.top, width, height, m_bAutoRedraw);
    if (window->hWnd() == nullptr) return;
    m_extent = SIZE{width, height};
    window->UseAmbient(m_ambient.get());
    window->UseExtender(m_extender.get());
    // What the control set while it had no window goes onto the window.
    window->Font(m_font);
    window->ForeColor(m_lForeColor);
    window->Enabled(m_bEnabled);
    window->MaskColor(m_lMaskColor);
    window->MaskPicture(m_maskPicture);
    window->BackStyle(m_iBackStyle);
    window->AccessKeys(m_sAccessKeys);
    window->MousePointer(m_iMousePointer);
    window->MouseIcon(m_mouseIcon);
    window->OLEDropMode(m_iOLEDropMode);
    m_window = std::move(window);
    m_window->SetClient(m_client);
    // The backing bitmap of the windowless state is of no use any more.
    m_backDC.reset();
    m_backBitmap.reset();
    if (m_client) m_client->Resize();
}

void ActiveXSurface::DestroyWindow() noexcept {
    if (!m_window) return;
    if (m_window->hWnd() != nullptr) m_extent = SIZE{static_cast<LONG>(ScaleWidth()), static_cast<LONG>(ScaleHeight())};
    m_window->SetClient(nullptr);
    m_window.reset();
}

void ActiveXSurface::MoveTo(const RECT& position) {
    const int32_t width = std::max<int32_t>(position.right - position.left, 0);
    const int32_t height = std::max<int32_t>(position.bottom - position.top, 0);
    m_extent = SIZE{width, height};
    if (m_window && m_window->hWnd() != nullptr) {
        ::SetWindowPos(m_window->hWnd(), nullptr, position.left, position.top, width, height,
                       SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

void ActiveXSurface::PixelExtent(int32_t width, int32_t height) {
    if (m_window) return;  // an active control takes its size from its in-place rectangle
    const SIZE size{std::max<LONG>(width, 0), std::max<LONG>(height, 0)};
    if (size.cx == m_extent.cx && size.cy == m_extent.cy) return;
    m_extent = size;
    if (m_bAutoRedraw) ensureBackingStore();
    if (m_client) m_client->Resize();
}

void ActiveXSurface::NotifyAmbientChanged(const CtlString& propertyName) {
    if (m_client) m_client->AmbientChanged(propertyName);
}

// ---- drawing without a window ----

void ActiveXSurface::selectFontInto(HDC hdc) {
    if (!m_hFont && m_font) {
        const int points = static_cast<int>(std::lround(m_font->Size()));
        m_hFont.reset(::CreateFontW(-::MulDiv(points, screenPixelsPerInch(true), 72), 0, 0, 0, m_font->Weight(),
                                    m_font->Italic() ? TRUE : FALSE, m_font->Underline() ? TRUE : FALSE,
                                    m_font->Strikethrough() ? TRUE : FALSE, static_cast<BYTE>(m_font->Charset()),
                                    OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH,
                                    AsWide(m_font->Name())));
    }
    if (hdc && m_hFont) ::SelectObject(hdc, m_hFont.get());
}

void ActiveXSurface::ensureBackingStore() {
    const WindowDCGuard screen(nullptr);
    if (screen.get() == nullptr) return;
    if (!m_backDC) {
        m_backDC.reset(::CreateCompatibleDC(screen.get()));
        if (!m_backDC) return;
        ::SetBkMode(m_backDC.get(), TRANSPARENT);
    }
    ::SetTextColor(m_backDC.get(), static_cast<COLORREF>(ConvertOLEColor(m_lForeColor)));
    selectFontInto(m_backDC.get());
    BITMAP current{};
    if (m_backBitmap && ::GetObjectW(m_backBitmap.get(), sizeof(current), &current) != 0 &&
        current.bmWidth == std::max<LONG>(m_extent.cx, 1) && current.bmHeight == std::max<LONG>(m_extent.cy, 1)) {
        return;
    }
    BitmapOwner bitmap(
        ::CreateCompatibleBitmap(screen.get(), std::max<LONG>(m_extent.cx, 1), std::max<LONG>(m_extent.cy, 1)));
    if (!bitmap) return;
    ::SelectObject(m_backDC.get(), bitmap.get());
    m_backBitmap = std::move(bitmap);  // the replaced bitmap is selected nowhere now
}

void ActiveXSurface::DrawInto(HDC hdc, const RECT& bounds) {
    if (hdc == nullptr || m_client == nullptr || m_drawDC != nullptr) return;
    const int32_t width = bounds.right - bounds.left;
    const int32_t height = bounds.bottom - bounds.top;
    if (width <= 0 || height <= 0) return;
    // The control draws at 0,0 of a bitmap of the bounds' size, which then goes to the container's
    // DC: no origin or clipping of the container's DC is disturbed.
    const MemoryDCOwner canvas(::CreateCompatibleDC(hdc));
    const BitmapOwner bitmap(::CreateCompatibleBitmap(hdc, width, height));
    if (!canvas || !bitmap) return;
    const ScopedSelect selectBitmap(canvas.get(), bitmap.get());
    ::SetBkMode(canvas.get(), TRANSPARENT);
    ::SetTextColor(canvas.get(), static_cast<COLORREF>(ConvertOLEColor(m_lForeColor)));
    selectFontInto(nullptr);
    const ScopedSelect selectFont(canvas.get(), m_hFont.get());
    m_drawDC = canvas.get();
    m_drawExtent = SIZE{width, height};
    try {
        if (m_bAutoRedraw) {
            // Any ambient change redraws a control at once into its hDC, which is the canvas now.
            m_client->AmbientChanged(CtlString());
        } else {
            m_client->Paint();
        }
    } catch (...) {
    }
    m_drawDC = nullptr;
    ::BitBlt(hdc, bounds.left, bounds.top, width, height, canvas.get(), 0, 0, SRCCOPY);
}

// ---- ControlSurface ----

HDC ActiveXSurface::hDC() const {
    if (m_drawDC != nullptr) return m_drawDC;
    if (m_window) return m_window->hDC();
    return m_backDC.get();
}

float ActiveXSurface::ScaleWidth() const {
    if (m_drawDC != nullptr) return static_cast<float>(m_drawExtent.cx);
    if (m_window && m_window->hWnd() != nullptr) return m_window->ScaleWidth();
    return static_cast<float>(m_extent.cx);
}

float ActiveXSurface::ScaleHeight() const {
    if (m_drawDC != nullptr) return static_cast<float>(m_drawExtent.cy);
    if (m_window && m_window->hWnd() != nullptr) return m_window->ScaleHeight();
    return static_cast<float>(m_extent.cy);
}

float ActiveXSurface::ScaleX(float value, int16_t fromMode, int16_t toMode) const {
    return ConvertScaleUnits(value, fromMode, toMode, false, screenPixelsPerInch(false));
}

float ActiveXSurface::ScaleY(float value, int16_t fromMode, int16_t toMode) const {
    return ConvertScaleUnits(value, fromMode, toMode, true, screenPixelsPerInch(true));
}

void ActiveXSurface::Size(float width, float height) {
    const auto w = static_cast<int32_t>(std::lround(ScaleX(width, kScaleTwips, kScalePixels)));
    const auto h = static_cast<int32_t>(std::lround(ScaleY(height, kScaleTwips, kScalePixels)));
    if (m_window && m_window->hWnd() != nullptr) {
        m_window->Size(width, height);
        m_extent = SIZE{std::max(w, 0), std::max(h, 0)};
    } else {
        PixelExtent(w, h);
    }
    if (m_host) m_host->SurfaceResized(std::max(w, 0), std::max(h, 0));
}

void ActiveXSurface::Refresh() {
    if (m_window && m_window->hWnd() != nullptr) {
        m_window->Refresh();
    } else if (m_drawDC == nullptr && m_host) {
        // Without a window the container paints us through the view: it is told to.
        m_host->SurfaceInvalidated();
    }
}

void ActiveXSurface::Enabled(bool value) {
    m_bEnabled = value;
    if (m_window) m_window->Enabled(value);
}

void ActiveXSurface::ForeColor(int32_t value) {
    m_lForeColor = value;
    if (m_window) m_window->ForeColor(value);
    if (m_drawDC != nullptr) ::SetTextColor(m_drawDC, static_cast<COLORREF>(ConvertOLEColor(value)));
    if (m_backDC) ::SetTextColor(m_backDC.get(), static_cast<COLORREF>(ConvertOLEColor(value)));
}

void ActiveXSurface::Font(std::shared_ptr<StdFont> value) {
    if (!value) return;
    m_font = std::move(value);
    FontOwner previous(m_hFont.release());
    selectFontInto(m_drawDC);
    selectFontInto(m_backDC.get());
    // The previous font is selected in neither DC now.
    previous.reset();
    if (m_window) m_window->Font(m_font);
}

void ActiveXSurface::BackStyle(int16_t value) {
    m_iBackStyle = value;
    if (m_window) m_window->BackStyle(value);
}

void ActiveXSurface::MaskColor(int32_t value) {
    m_lMaskColor = value;
    if (m_window) m_window->MaskColor(value);
}

void ActiveXSurface::MaskPicture(std::shared_ptr<StdPicture> value) {
    m_maskPicture = std::move(value);
    if (m_window) m_window->MaskPicture(m_maskPicture);
}

void ActiveXSurface::AccessKeys(const CtlString& value) {
    const bool changed = value != m_sAccessKeys;
    m_sAccessKeys = value;
    if (m_window) m_window->AccessKeys(value);
    if (changed && m_host) m_host->SurfaceAccessKeysChanged();
}

void ActiveXSurface::MousePointer(int16_t value) {
    m_iMousePointer = value;
    if (m_window) m_window->MousePointer(value);
}

void ActiveXSurface::MouseIcon(std::shared_ptr<StdPicture> value) {
    m_mouseIcon = std::move(value);
    if (m_window) m_window->MouseIcon(m_mouseIcon);
}

void ActiveXSurface::OLEDropMode(int16_t value) {
    m_iOLEDropMode = value;
    if (m_window) m_window->OLEDropMode(value);
}

void ActiveXSurface::OLEDrag() {
    if (m_window) m_window->OLEDrag();
}

SurfaceExtender& ActiveXSurface::Extender() { return *m_extender; }

SurfaceAmbient& ActiveXSurface::Ambient() { return *m_ambient; }

void ActiveXSurface::PropertyChanged(const CtlString& propertyName) {
    if (m_host) m_host->SurfacePropertyChanged(propertyName);
}

}  // namespace tc::com
