#include "TestContainer.h"

#include <cstring>

#include <shlobj.h>

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

HRESULT TestExtender::QueryInterface(REFIID riid, void** ppv) {
    if (!ppv) return E_POINTER;
    if (riid == IID_IUnknown || riid == IID_IDispatch) return answer(this, static_cast<IDispatch*>(this), ppv);
    *ppv = nullptr;
    return E_NOINTERFACE;
}

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

HRESULT RecordingBag::QueryInterface(REFIID riid, void** ppv) {
    if (!ppv) return E_POINTER;
    if (riid == IID_IUnknown || riid == IID_IPropertyBag) return answer(this, static_cast<IPropertyBag*>(this), ppv);
    *ppv = nullptr;
    return E_NOINTERFACE;
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

// ---- data object ----

HRESULT TextDataObject::QueryInterface(REFIID riid, void** ppv) {
    if (!ppv) return E_POINTER;
    if (riid == IID_IUnknown || riid == IID_IDataObject) return answer(this, static_cast<IDataObject*>(this), ppv);
    *ppv = nullptr;
    return E_NOINTERFACE;
}

HRESULT TextDataObject::QueryGetData(FORMATETC* format) {
    if (!format || !(format->tymed & TYMED_HGLOBAL)) return DV_E_FORMATETC;
    return format->cfFormat == CF_UNICODETEXT || (format->cfFormat == CF_HDROP && !m_files.empty()) ? S_OK
                                                                                                     : DV_E_FORMATETC;
}

HRESULT TextDataObject::GetData(FORMATETC* format, STGMEDIUM* medium) {
    if (QueryGetData(format) != S_OK) return DV_E_FORMATETC;
    // Text, or a wide file list: the header, each name with its zero, and a closing zero.
    std::vector<uint8_t> content;
    if (format->cfFormat == CF_HDROP) {
        DROPFILES header{};
        header.pFiles = sizeof(header);
        header.fWide = TRUE;
        content.resize(sizeof(header));
        std::memcpy(content.data(), &header, sizeof(header));
        for (const std::u16string& name : m_files) {
            const auto* bytes = reinterpret_cast<const uint8_t*>(name.c_str());
            content.insert(content.end(), bytes, bytes + (name.size() + 1) * sizeof(char16_t));
        }
        content.push_back(0);
        content.push_back(0);
    } else {
        const auto* bytes = reinterpret_cast<const uint8_t*>(m_text.c_str());
        content.assign(bytes, bytes + (m_text.size() + 1) * sizeof(char16_t));
    }
    HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, content.size());
    if (!memory) return E_OUTOFMEMORY;
    std::memcpy(::GlobalLock(memory), content.data(), content.size());
    ::GlobalUnlock(memory);
    medium->tymed = TYMED_HGLOBAL;
    medium->hGlobal = memory;
    medium->pUnkForRelease = nullptr;
    return S_OK;
}

// ---- sink ----

HRESULT EventSink::QueryInterface(REFIID riid, void** ppv) {
    if (!ppv) return E_POINTER;
    if (riid == IID_IUnknown || riid == IID_IDispatch) return answer(this, static_cast<IDispatch*>(this), ppv);
    *ppv = nullptr;
    return E_NOINTERFACE;
}

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
