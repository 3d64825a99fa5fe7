#include "TestContainer.h"

#include <cstring>

namespace comtest {

namespace {

const wchar_t* containerClass() {
    static const bool registered = [] {
        WNDCLASSEXW wc{};
        wc.cbSize = sizeof(wc);
        wc.lpfnWndProc = ::DefWindowProcW;
        wc.hInstance = ::GetModuleHandleW(nullptr);
        wc.hbrBackground = static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH));
        wc.lpszClassName = L"TarnwickTestContainer";
        return ::RegisterClassExW(&wc) != 0;
    }();
    (void)registered;
    return L"TarnwickTestContainer";
}

template <class Self>
HRESULT answer(Self* self, void* itf, void** ppv) {
    *ppv = itf;
    self->AddRef();
    return S_OK;
}

}  // namespace

// ---- extender ----

HRESULT TestExtender::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}

HRESULT TestExtender::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (count != 1 || std::wcscmp(names[0], L"Name") != 0) {
        ids[0] = DISPID_UNKNOWN;
        return DISP_E_UNKNOWNNAME;
    }
    ids[0] = 1;
    return S_OK;
}

HRESULT TestExtender::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) {
    if (id != 1 || !(flags & DISPATCH_PROPERTYGET) || !result) return DISP_E_MEMBERNOTFOUND;
    result->vt = VT_BSTR;
    result->bstrVal = ::SysAllocStringLen(reinterpret_cast<const OLECHAR*>(m_name.data()),
                                          static_cast<UINT>(m_name.size()));
    return S_OK;
}

// ---- site ----

TestSite::TestSite(Ambient ambient, TestExtender* extender, RECT place)
    : m_ambient(ambient), m_extender(extender), m_place(place) {
    // One top-level window for the whole program, each site a child of it: under Wine without a
    // window manager, destroying a visible top-level window waits about two seconds for it.
    static const HWND form = ::CreateWindowExW(0, containerClass(), L"Test container", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                               0, 0, 360, 260, nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr);
    m_window = ::CreateWindowExW(0, containerClass(), L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, 320, 200, form,
                                 nullptr, ::GetModuleHandleW(nullptr), nullptr);
}

TestSite::~TestSite() {
    if (m_window != nullptr) ::DestroyWindow(m_window);
}

HRESULT TestSite::QueryInterface(REFIID riid, void** ppv) {
    if (!ppv) return E_POINTER;
    if (riid == IID_IUnknown || riid == IID_IOleClientSite) return answer(this, static_cast<IOleClientSite*>(this), ppv);
    if (riid == IID_IOleInPlaceSite || riid == IID_IOleWindow) return answer(this, static_cast<IOleInPlaceSite*>(this), ppv);
    if (riid == IID_IOleControlSite) return answer(this, static_cast<IOleControlSite*>(this), ppv);
    if (riid == IID_IDispatch && m_ambient != Ambient::None) return answer(this, static_cast<IDispatch*>(this), ppv);
    *ppv = nullptr;
    return E_NOINTERFACE;
}

HRESULT TestSite::GetMoniker(DWORD, DWORD, IMoniker** m) {
    *m = nullptr;
    return E_NOTIMPL;
}

HRESULT TestSite::GetContainer(IOleContainer** c) {
    *c = nullptr;
    return E_NOINTERFACE;
}

HRESULT TestSite::GetWindow(HWND* window) {
    *window = m_window;
    return S_OK;
}

HRESULT TestSite::OnInPlaceActivate() {
    ++m_activations;
    return S_OK;
}

HRESULT TestSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** doc, LPRECT pos, LPRECT clip,
                                   LPOLEINPLACEFRAMEINFO info) {
    *frame = nullptr;
    *doc = nullptr;
    *pos = m_place;
    *clip = m_place;
    info->fMDIApp = FALSE;
    info->hwndFrame = m_window;
    info->haccel = nullptr;
    info->cAccelEntries = 0;
    return S_OK;
}

HRESULT TestSite::GetExtendedControl(IDispatch** extended) {
    *extended = m_extender;
    if (!m_extender) return E_NOTIMPL;
    m_extender->AddRef();
    return S_OK;
}

HRESULT TestSite::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}

HRESULT TestSite::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) {
    if (id != DISPID_AMBIENT_USERMODE || !result) return DISP_E_MEMBERNOTFOUND;
    result->vt = VT_BOOL;
    result->boolVal = m_ambient == Ambient::RunMode ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

// ---- bag ----

RecordingBag::~RecordingBag() {
    for (auto& [key, value] : values) ::VariantClear(&value);
}

HRESULT RecordingBag::Read(LPCOLESTR name, VARIANT* value, IErrorLog*) {
    const std::u16string key(reinterpret_cast<const char16_t*>(name));
    reads.push_back(key);
    const auto it = values.find(key);
    if (it == values.end()) return E_INVALIDARG;
    return ::VariantCopy(value, &it->second);
}

HRESULT RecordingBag::Write(LPCOLESTR name, VARIANT* value) {
    const std::u16string key(reinterpret_cast<const char16_t*>(name));
    writes.push_back(key);
    VARIANT& slot = values[key];
    ::VariantClear(&slot);
    return ::VariantCopy(&slot, value);
}

// ---- sink ----

HRESULT EventSink::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}

HRESULT EventSink::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*, EXCEPINFO*, UINT*) {
    DISPPARAMS none{};
    m_handler(id, params ? *params : none);
    return S_OK;
}

void PumpMessages() {
    MSG msg;
    while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
        ::TranslateMessage(&msg);
        ::DispatchMessageW(&msg);
    }
}

}  // namespace comtest
