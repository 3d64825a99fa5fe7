#include "com/ControlObject.h"

#include <vector>

#include "com/ComPropertyBag.h"
#include "graphics/GdiRaii.h"

namespace tc::com {

namespace {

int32_t screenPixelsPerInch(bool vertical) noexcept {
    const WindowDCGuard screen(nullptr);
    const int dpi = screen.get() != nullptr ? ::GetDeviceCaps(screen.get(), vertical ? LOGPIXELSY : LOGPIXELSX) : 96;
    return dpi > 0 ? dpi : 96;
}

// HiMetric (1/100 mm) and pixels at the screen's resolution.
LONG hiMetricToPixels(LONG value, bool vertical) noexcept { return ::MulDiv(value, screenPixelsPerInch(vertical), 2540); }
LONG pixelsToHiMetric(LONG value, bool vertical) noexcept { return ::MulDiv(value, 2540, screenPixelsPerInch(vertical)); }

// The ambient property names a control's AmbientChanged receives.
const char16_t* ambientName(DISPID id) noexcept {
    switch (id) {
        case DISPID_AMBIENT_USERMODE: return u"UserMode";
        case DISPID_AMBIENT_FONT: return u"Font";
        case DISPID_AMBIENT_BACKCOLOR: return u"BackColor";
        case DISPID_AMBIENT_FORECOLOR: return u"ForeColor";
        case DISPID_AMBIENT_DISPLAYNAME: return u"DisplayName";
        case DISPID_AMBIENT_UIDEAD: return u"UIDead";
        default: return u"";
    }
}

}  // namespace

ControlObjectCore::ControlObjectCore(const CLSID& clsid, bool autoRedraw) : m_clsid(clsid), m_surface(autoRedraw) {
    m_surface.SetHost(this);
}

ControlObjectCore::~ControlObjectCore() { Shutdown(); }

void ControlObjectCore::Shutdown() noexcept {
    InPlaceDeactivate();
    m_surface.SetHost(nullptr);
    m_surface.SetSite(nullptr);
    m_site.reset();
    m_viewSink.reset();
    m_adviseHolder.reset();
    if (m_accelerators != nullptr) {
        ::DestroyAcceleratorTable(m_accelerators);
        m_accelerators = nullptr;
    }
}

void* ControlObjectCore::QueryOle(REFIID riid) noexcept {
    if (riid == IID_IOleObject) return static_cast<IOleObject*>(this);
    if (riid == IID_IOleInPlaceObject || riid == IID_IOleWindow) return static_cast<IOleInPlaceObject*>(this);
    if (riid == IID_IOleInPlaceActiveObject) return static_cast<IOleInPlaceActiveObject*>(this);
    if (riid == IID_IOleControl) return static_cast<IOleControl*>(this);
    if (riid == IID_IViewObject || riid == IID_IViewObject2) return static_cast<IViewObject2*>(this);
    if (riid == IID_IPersistPropertyBag || riid == IID_IPersist) return static_cast<IPersistPropertyBag*>(this);
    if (riid == IID_IPersistStreamInit) return static_cast<IPersistStreamInit*>(this);
    return nullptr;
}

// ---- IOleObject ----

HRESULT ControlObjectCore::SetClientSite(IOleClientSite* site) {
    m_site = ComPtr<IOleClientSite>::Share(site);
    m_surface.SetSite(site);
    return S_OK;
}

HRESULT ControlObjectCore::GetClientSite(IOleClientSite** site) {
    if (!site) return E_POINTER;
    *site = m_site.get();
    if (*site) (*site)->AddRef();
    return S_OK;
}

HRESULT ControlObjectCore::Close(DWORD) {
    InPlaceDeactivate();
    return S_OK;
}

HRESULT ControlObjectCore::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
    if (moniker) *moniker = nullptr;
    return E_NOTIMPL;
}

HRESULT ControlObjectCore::GetClipboardData(DWORD, IDataObject** data) {
    if (data) *data = nullptr;
    return E_NOTIMPL;
}

HRESULT ControlObjectCore::DoVerb(LONG verb, LPMSG, IOleClientSite* activeSite, LONG, HWND, LPCRECT position) {
    if (!m_site && activeSite) SetClientSite(activeSite);
    switch (verb) {
        case OLEIVERB_PRIMARY:
        case OLEIVERB_SHOW:
        case OLEIVERB_INPLACEACTIVATE:
            return activateInPlace(false, position);
        case OLEIVERB_UIACTIVATE:
            return activateInPlace(true, position);
        case OLEIVERB_HIDE:
            UIDeactivate();
            if (const HWND hwnd = m_surface.hWnd()) ::ShowWindow(hwnd, SW_HIDE);
            return S_OK;
        default:
            return OLEOBJ_S_INVALIDVERB;
    }
}

HRESULT ControlObjectCore::activateInPlace(bool uiActivate, LPCRECT position) {
    if (!m_site) return E_UNEXPECTED;
    initialiseOnce();
    if (!m_bInPlaceActive) {
        ComPtr<IOleInPlaceSite> site;
        if (FAILED(m_site->QueryInterface(IID_IOleInPlaceSite, site.putVoid()))) return E_NOINTERFACE;
        if (site->CanInPlaceActivate() != S_OK) return E_FAIL;
        site->OnInPlaceActivate();
        m_inPlaceSite = site;
        m_bInPlaceActive = true;
        HWND parent = nullptr;
        site->GetWindow(&parent);
        RECT place{};
        RECT clip{};
        OLEINPLACEFRAMEINFO frameInfo{};
        frameInfo.cb = sizeof(frameInfo);
        site->GetWindowContext(m_frame.put(), m_document.put(), &place, &clip, &frameInfo);
        // The in-place rectangle decides the size: a container's extent may be in other units.
        if (place.right <= place.left && position) place = *position;
        m_surface.CreateWindowIn(parent, place);
    }
    if (const HWND hwnd = m_surface.hWnd()) ::ShowWindow(hwnd, SW_SHOWNA);
    if (uiActivate && !m_bUIActive) {
        m_bUIActive = true;
        m_inPlaceSite->OnUIActivate();
        auto* active = static_cast<IOleInPlaceActiveObject*>(this);
        if (m_frame) m_frame->SetActiveObject(active, nullptr);
        if (m_document) m_document->SetActiveObject(active, nullptr);
    }
    return S_OK;
}

void ControlObjectCore::initialiseOnce() {
    if (m_bInitialised) return;
    m_bInitialised = true;
    try {
        InitPropertiesOfObject();
    } catch (...) {
    }
}

HRESULT ControlObjectCore::EnumVerbs(IEnumOLEVERB** verbs) { return ::OleRegEnumVerbs(m_clsid, verbs); }

HRESULT ControlObjectCore::GetUserClassID(CLSID* clsid) { return GetClassID(clsid); }

HRESULT ControlObjectCore::GetUserType(DWORD form, LPOLESTR* name) { return ::OleRegGetUserType(m_clsid, form, name); }

HRESULT ControlObjectCore::SetExtent(DWORD aspect, SIZEL* size) {
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    if (!size) return E_POINTER;
    m_surface.PixelExtent(hiMetricToPixels(size->cx, false), hiMetricToPixels(size->cy, true));
    return S_OK;
}

HRESULT ControlObjectCore::GetExtent(DWORD aspect, SIZEL* size) {
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    if (!size) return E_POINTER;
    const SIZE pixels{static_cast<LONG>(m_surface.ScaleWidth()), static_cast<LONG>(m_surface.ScaleHeight())};
    size->cx = pixelsToHiMetric(pixels.cx, false);
    size->cy = pixelsToHiMetric(pixels.cy, true);
    return S_OK;
}

HRESULT ControlObjectCore::Advise(IAdviseSink* sink, DWORD* connection) {
    if (!m_adviseHolder) {
        const HRESULT hr = ::CreateOleAdviseHolder(m_adviseHolder.put());
        if (FAILED(hr)) return hr;
    }
    return m_adviseHolder->Advise(sink, connection);
}

HRESULT ControlObjectCore::Unadvise(DWORD connection) {
    return m_adviseHolder ? m_adviseHolder->Unadvise(connection) : OLE_E_NOCONNECTION;
}

HRESULT ControlObjectCore::EnumAdvise(IEnumSTATDATA** advise) {
    if (!advise) return E_POINTER;
    *advise = nullptr;
    return m_adviseHolder ? m_adviseHolder->EnumAdvise(advise) : E_FAIL;
}

HRESULT ControlObjectCore::GetMiscStatus(DWORD, DWORD* status) {
    if (!status) return E_POINTER;
    *status = OLEMISC_SETCLIENTSITEFIRST | OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_RECOMPOSEONRESIZE |
              OLEMISC_CANTLINKINSIDE | OLEMISC_INSIDEOUT;
    return S_OK;
}

// ---- in place ----

HRESULT ControlObjectCore::GetWindow(HWND* window) {
    if (!window) return E_POINTER;
    *window = m_surface.hWnd();
    return *window != nullptr ? S_OK : E_FAIL;
}

HRESULT ControlObjectCore::InPlaceDeactivate() {
    if (!m_bInPlaceActive) return S_OK;
    UIDeactivate();
    m_surface.DestroyWindow();
    m_bInPlaceActive = false;
    const ComPtr<IOleInPlaceSite> site = std::move(m_inPlaceSite);
    m_frame.reset();
    m_document.reset();
    if (site) site->OnInPlaceDeactivate();
    return S_OK;
}

HRESULT ControlObjectCore::UIDeactivate() {
    if (!m_bUIActive) return S_OK;
    m_bUIActive = false;
    if (m_frame) m_frame->SetActiveObject(nullptr, nullptr);
    if (m_document) m_document->SetActiveObject(nullptr, nullptr);
    if (m_inPlaceSite) m_inPlaceSite->OnUIDeactivate(FALSE);
    return S_OK;
}

HRESULT ControlObjectCore::SetObjectRects(LPCRECT position, LPCRECT) {
    if (!position) return E_POINTER;
    m_surface.MoveTo(*position);
    return S_OK;
}

HRESULT ControlObjectCore::TranslateAccelerator(LPMSG message) {
    if (m_keyHook && message) return m_keyHook->TranslateAccelerator(message);
    return S_FALSE;
}

// ---- IOleControl ----

HRESULT ControlObjectCore::GetControlInfo(CONTROLINFO* info) {
    if (!info) return E_POINTER;
    if (info->cb < sizeof(CONTROLINFO)) return E_INVALIDARG;
    if (m_accelerators != nullptr) {
        ::DestroyAcceleratorTable(m_accelerators);
        m_accelerators = nullptr;
    }
    // Each access key as Alt + its key, as the container routes mnemonics.
    std::vector<ACCEL> keys;
    for (const char16_t ch : m_surface.AccessKeys()) {
        const SHORT scan = ::VkKeyScanW(static_cast<wchar_t>(ch));
        if (scan == -1) continue;
        keys.push_back(ACCEL{static_cast<BYTE>(FALT | FVIRTKEY), static_cast<WORD>(scan & 0xFF), 0});
    }
    if (!keys.empty()) m_accelerators = ::CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size()));
    info->hAccel = m_accelerators;
    info->cAccel = static_cast<USHORT>(m_accelerators != nullptr ? keys.size() : 0);
    info->dwFlags = 0;
    return S_OK;
}

HRESULT ControlObjectCore::OnMnemonic(MSG* message) {
    if (!message) return E_POINTER;
    SurfaceClient* client = m_surface.Client();
    if (!client) return S_OK;
    int16_t keyAscii = static_cast<int16_t>(message->wParam);
    try {
        client->AccessKeyPress(keyAscii);
    } catch (...) {
    }
    return S_OK;
}

HRESULT ControlObjectCore::OnAmbientPropertyChange(DISPID id) {
    try {
        m_surface.NotifyAmbientChanged(ambientName(id));
    } catch (...) {
    }
    return S_OK;
}

// ---- IViewObject2 ----

HRESULT ControlObjectCore::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC hdc, LPCRECTL bounds, LPCRECTL,
                                BOOL(STDMETHODCALLTYPE*)(ULONG_PTR), ULONG_PTR) {
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    if (!hdc || !bounds) return E_INVALIDARG;
    const RECT where{bounds->left, bounds->top, bounds->right, bounds->bottom};
    m_surface.DrawInto(hdc, where);
    return S_OK;
}

HRESULT ControlObjectCore::GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** set) {
    if (set) *set = nullptr;
    return S_FALSE;
}

HRESULT ControlObjectCore::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
    m_viewSink = ComPtr<IAdviseSink>::Share(sink);
    m_viewAspects = aspects;
    m_viewFlags = flags;
    return S_OK;
}

HRESULT ControlObjectCore::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
    if (aspects) *aspects = m_viewAspects;
    if (flags) *flags = m_viewFlags;
    if (sink) {
        *sink = m_viewSink.get();
        if (*sink) (*sink)->AddRef();
    }
    return S_OK;
}

HRESULT ControlObjectCore::GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, LPSIZEL size) {
    return GetExtent(aspect, size);
}

// ---- persistence ----

HRESULT ControlObjectCore::GetClassID(CLSID* clsid) {
    if (!clsid) return E_POINTER;
    *clsid = m_clsid;
    return S_OK;
}

HRESULT ControlObjectCore::InitNew() {
    m_bInitialised = true;
    try {
        InitPropertiesOfObject();
    } catch (...) {
        return E_FAIL;
    }
    return S_OK;
}

HRESULT ControlObjectCore::runPersistence(void (ControlObjectCore::*step)(PropertyBag&), PropertyBag& bag) noexcept {
    try {
        (this->*step)(bag);
        return S_OK;
    } catch (const ComFailure& failure) {
        return failure.hr;
    } catch (...) {
        return E_FAIL;
    }
}

HRESULT ControlObjectCore::Load(IPropertyBag* bag, IErrorLog* log) {
    if (!bag) return E_POINTER;
    m_bInitialised = true;
    ContainerPropertyBag adapter(bag, log);
    return runPersistence(&ControlObjectCore::readFrom, adapter);
}

HRESULT ControlObjectCore::Save(IPropertyBag* bag, BOOL clearDirty, BOOL) {
    if (!bag) return E_POINTER;
    ContainerPropertyBag adapter(bag, nullptr);
    const HRESULT hr = runPersistence(&ControlObjectCore::writeTo, adapter);
    if (SUCCEEDED(hr) && clearDirty) m_bDirty = false;
    return hr;
}

HRESULT ControlObjectCore::Load(LPSTREAM stream) {
    if (!stream) return E_POINTER;
    StreamPropertyBag pairs;
    const HRESULT hr = pairs.Load(stream);
    if (FAILED(hr)) return hr;
    m_bInitialised = true;
    return runPersistence(&ControlObjectCore::readFrom, pairs);
}

HRESULT ControlObjectCore::Save(LPSTREAM stream, BOOL clearDirty) {
    if (!stream) return E_POINTER;
    StreamPropertyBag pairs;
    HRESULT hr = runPersistence(&ControlObjectCore::writeTo, pairs);
    if (SUCCEEDED(hr)) hr = pairs.Save(stream);
    if (SUCCEEDED(hr) && clearDirty) m_bDirty = false;
    return hr;
}

HRESULT ControlObjectCore::GetSizeMax(ULARGE_INTEGER* size) {
    if (size) size->QuadPart = 0;
    return E_NOTIMPL;
}

// ---- what the surface asks of the container ----

void ControlObjectCore::SurfaceResized(int32_t width, int32_t height) {
    const HWND hwnd = m_surface.hWnd();
    if (m_inPlaceSite && hwnd != nullptr) {
        RECT place{};
        ::GetWindowRect(hwnd, &place);
        ::MapWindowPoints(HWND_DESKTOP, ::GetParent(hwnd), reinterpret_cast<POINT*>(&place), 2);
        place.right = place.left + width;
        place.bottom = place.top + height;
        m_inPlaceSite->OnPosRectChange(&place);
    }
    SurfaceInvalidated();
}

void ControlObjectCore::SurfaceInvalidated() {
    if (m_viewSink) m_viewSink->OnViewChange(DVASPECT_CONTENT, -1);
}

void ControlObjectCore::SurfacePropertyChanged(const CtlString&) { m_bDirty = true; }

void ControlObjectCore::SurfaceAccessKeysChanged() {
    ComPtr<IOleControlSite> site;
    if (m_site && SUCCEEDED(m_site->QueryInterface(IID_IOleControlSite, site.putVoid()))) site->OnControlInfoChanged();
}

}  // namespace tc::com
