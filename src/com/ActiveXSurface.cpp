#include "com/ActiveXSurface.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "com/ComConvert.h"
#include "com/ComPropertyBag.h"
#include "common/CtlError.h"
#include "frame/ScaleUnits.h"
#include "frame/WindowDpi.h"
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

// Invokes a named member with arguments in call order (dispatch takes them last first).
HRESULT invokeNamed(IDispatch* object, const wchar_t* name, WORD flags, const std::vector<CtlVariant>& args,
                    VARIANT* result) {
    const DISPID id = idOf(object, name);
    std::vector<VARIANT> wire(args.size());
    for (VARIANT& v : wire) ::VariantInit(&v);
    HRESULT hr = S_OK;
    for (size_t i = 0; i < args.size() && SUCCEEDED(hr); ++i) hr = VariantFromBagValue(args[i], wire[args.size() - 1 - i]);
    if (SUCCEEDED(hr)) {
        DISPPARAMS params{wire.data(), nullptr, static_cast<UINT>(wire.size()), 0};
        hr = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params, result, nullptr, nullptr);
    }
    for (VARIANT& v : wire) ::VariantClear(&v);
    return hr;
}

CtlString textNamed(IDispatch* object, const wchar_t* name) {
    OwnedVariant value;
    getNamed(object, name, VT_BSTR, value);
    return FromBstr(value.v.bstrVal);
}

// Index of an element of a control array, empty for a control outside one.
CtlVariant indexOf(IDispatch* object) {
    OwnedVariant value;
    if (FAILED(getById(object, idOf(object, L"Index"), value.v))) throw MissingHostMember();
    return BagValueFromVariant(value.v);
}

// The class name the runtime's TypeName gives: the coclass of an object that tells it, else the
// name of its interface without the leading underscore of a dual control interface.
bool classNameOf(IDispatch* object, CtlString& name) {
    if (!object) return false;
    ComPtr<ITypeInfo> info;
    ComPtr<IProvideClassInfo> provider;
    if (SUCCEEDED(object->QueryInterface(IID_IProvideClassInfo, provider.putVoid()))) {
        provider->GetClassInfo(info.put());
    }
    if (!info) object->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.put());
    BSTR text = nullptr;
    if (!info || FAILED(info->GetDocumentation(MEMBERID_NIL, &text, nullptr, nullptr, nullptr)) || !text) return false;
    name = FromBstr(text);
    ::SysFreeString(text);
    if (!name.empty() && name.front() == u'_') name.erase(0, 1);
    return true;
}

// One control of the container's form, through its extended control's IDispatch.
class DispatchFormControl final : public FormControl {
public:
    explicit DispatchFormControl(IDispatch* extended) : m_extended(ComPtr<IDispatch>::Share(extended)) {}
    CtlString TypeName() const override {
        CtlString name;
        // An extender that wraps the control tells the control's class through its Object.
        OwnedVariant inner;
        try {
            getNamed(m_extended.get(), L"Object", VT_DISPATCH, inner);
            if (classNameOf(inner.v.pdispVal, name)) return name;
        } catch (const CtlError&) {
        }
        if (classNameOf(m_extended.get(), name)) return name;
        throw MissingHostMember();
    }
    CtlString Name() const override {
        return textNamed(m_extended.get(), L"Name");
    }
    CtlVariant Index() const override {
        return indexOf(m_extended.get());
    }
    CtlVariant CallByName(const CtlString& member, const std::vector<CtlVariant>& args) override {
        const std::wstring name(member.begin(), member.end());
        OwnedVariant result;
        if (FAILED(invokeNamed(m_extended.get(), name.c_str(), DISPATCH_METHOD, args, &result.v))) {
            throw MissingHostMember();
        }
        return BagValueFromVariant(result.v);
    }

private:
    ComPtr<IDispatch> m_extended;
};

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
        return textNamed(m_extended.get(), L"Name");
    }
    SurfaceContainer* Container() const override { return containerNamed(L"Container"); }
    SurfaceContainer* Parent() const override { return containerNamed(L"Parent"); }
    float Left() const override { return readFloat(L"Left"); }
    void Left(float value) override { putNamed(m_extended.get(), L"Left", value); }
    float Top() const override { return readFloat(L"Top"); }
    void Top(float value) override { putNamed(m_extended.get(), L"Top", value); }
    bool Default() const override { return readBool(L"Default"); }
    bool Cancel() const override { return readBool(L"Cancel"); }
    CtlVariant Index() const override {
        return indexOf(m_extended.get());
    }
    // Parent.Controls, walked by Count and Item(i) from 0, as a form's Controls collection counts.
    std::vector<std::unique_ptr<FormControl>> ParentControls() const override {
        OwnedVariant parent;
        getNamed(m_extended.get(), L"Parent", VT_DISPATCH, parent);
        OwnedVariant controls;
        getNamed(parent.v.pdispVal, L"Controls", VT_DISPATCH, controls);
        OwnedVariant count;
        getNamed(controls.v.pdispVal, L"Count", VT_I4, count);
        std::vector<std::unique_ptr<FormControl>> found;
        for (int32_t i = 0; i < count.v.lVal; ++i) {
            OwnedVariant item;
            const HRESULT hr = invokeNamed(controls.v.pdispVal, L"Item", DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                                           {CtlVariant(i)}, &item.v);
            if (SUCCEEDED(hr) && item.v.vt == VT_DISPATCH && item.v.pdispVal) {
                found.push_back(std::make_unique<DispatchFormControl>(item.v.pdispVal));
            }
        }
        return found;
    }
    int16_t Align() const override {
        OwnedVariant value;
        getNamed(m_extended.get(), L"Align", VT_I2, value);
        return value.v.iVal;
    }
    void Align(int16_t value) override { putNamed(m_extended.get(), L"Align", static_cast<float>(value)); }

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
        CtlString Name() const override {
            return textNamed(m_object.get(), L"Name");
        }
        CtlVariant Index() const override {
            return indexOf(m_object.get());
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
    refreshFont(true);
}

ActiveXSurface::~ActiveXSurface() {
    m_client = nullptr;
    DestroyWindow();
}

void ActiveXSurface::SetSite(IOleClientSite* site) {
    m_siteWindow = nullptr;
    ComPtr<IOleWindow> siteWindow;
    if (site && SUCCEEDED(site->QueryInterface(IID_IOleWindow, siteWindow.putVoid()))) {
        siteWindow->GetWindow(&m_siteWindow);
    }
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
    if (m_iDpiOverride > 0) window->OverrideDpi(m_iDpiOverride);
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
    // Without its window an AutoRedraw control draws into the bitmap again, at the DPI it has now.
    if (m_bAutoRedraw && m_client) ensureBackingStore();
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

void ActiveXSurface::refreshFont(bool remake) {
    const int32_t dpi = Dpi();
    if (!m_font || (m_hFont && m_iFontDpi == dpi && !remake)) return;
    const int points = static_cast<int>(std::lround(m_font->Size()));
    FontOwner made(::CreateFontW(-::MulDiv(points, dpi, 72), 0, 0, 0, m_font->Weight(), m_font->Italic() ? TRUE : FALSE,
                                 m_font->Underline() ? TRUE : FALSE, m_font->Strikethrough() ? TRUE : FALSE,
                                 static_cast<BYTE>(m_font->Charset()), OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                                 DEFAULT_QUALITY, DEFAULT_PITCH, AsWide(m_font->Name())));
    if (!made) return;
    if (m_drawDC != nullptr) ::SelectObject(m_drawDC, made.get());
    if (m_backDC) ::SelectObject(m_backDC.get(), made.get());
    m_hFont = std::move(made);  // the previous font is selected in neither DC now
    m_iFontDpi = dpi;
}

int32_t ActiveXSurface::Dpi() const {
    if (m_window) return m_window->Dpi();
    if (m_iDpiOverride > 0) return m_iDpiOverride;
    return WindowDpi(m_siteWindow);
}

void ActiveXSurface::OverrideDpi(int32_t dpi) {
    m_iDpiOverride = dpi > 0 ? dpi : 0;
    if (m_window) m_window->OverrideDpi(m_iDpiOverride);
    refreshFont(false);
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
    refreshFont(false);
    if (m_hFont) ::SelectObject(m_backDC.get(), m_hFont.get());
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
    // The container's window may have moved to a monitor of another DPI since the last drawing.
    refreshFont(false);
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
    refreshFont(true);
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
