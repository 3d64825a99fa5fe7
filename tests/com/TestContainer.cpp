#include "TestContainer.h"

#include <cstring>
#include <cwchar>
#include <initializer_list>

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

// ---- extender, container object, form ----

namespace {

constexpr DISPID kForwardedBase = 1000;  // ids of names passed on to the control

// The id of `name` among `known` (ids 1, 2, ...), or DISPID_UNKNOWN.
DISPID idAmong(const wchar_t* name, std::initializer_list<const wchar_t*> known) {
    DISPID id = 1;
    for (const wchar_t* k : known) {
        if (::_wcsicmp(name, k) == 0) return id;
        ++id;
    }
    return DISPID_UNKNOWN;
}

HRESULT returnText(VARIANT* result, const std::u16string& text) {
    result->vt = VT_BSTR;
    result->bstrVal = ::SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()), static_cast<UINT>(text.size()));
    return S_OK;
}

HRESULT returnObject(VARIANT* result, IDispatch* object) {
    if (!object) return DISP_E_MEMBERNOTFOUND;
    object->AddRef();
    result->vt = VT_DISPATCH;
    result->pdispVal = object;
    return S_OK;
}

HRESULT returnIndex(VARIANT* result, int index) {
    if (index < 0) return DISP_E_MEMBERNOTFOUND;  // not an element of a control array
    result->vt = VT_I2;
    result->iVal = static_cast<SHORT>(index);
    return S_OK;
}

}  // namespace

HRESULT TestContainerObject::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}

HRESULT TestContainerObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    ids[0] = count == 1 ? idAmong(names[0], {L"Name", L"Index"}) : DISPID_UNKNOWN;
    return ids[0] == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
}

HRESULT TestContainerObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                    UINT*) {
    if (!(flags & DISPATCH_PROPERTYGET) || !result) return DISP_E_MEMBERNOTFOUND;
    if (id == 1) return returnText(result, m_name);
    if (id == 2) return returnIndex(result, m_index);
    return DISP_E_MEMBERNOTFOUND;
}

HRESULT TestExtender::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}

HRESULT TestExtender::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    ids[0] = DISPID_UNKNOWN;
    if (count != 1) return DISP_E_UNKNOWNNAME;
    const DISPID own = idAmong(names[0], {L"Name", L"Index", L"Container", L"Parent", L"Align", L"Object"});
    // Only what the test gave: an extender of a plain label test knows its Name alone.
    const bool has = own == 1 || (own == 2 && m_index >= 0) || (own == 3 && m_container) || (own == 4 && m_form) ||
                     own == 5 || (own == 6 && m_control);
    if (has) {
        ids[0] = own;
        return S_OK;
    }
    DISPID inner = DISPID_UNKNOWN;
    if (own == DISPID_UNKNOWN && m_control &&
        SUCCEEDED(m_control->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &inner))) {
        m_forwarded.push_back(inner);
        ids[0] = kForwardedBase + static_cast<DISPID>(m_forwarded.size()) - 1;
        return S_OK;
    }
    return DISP_E_UNKNOWNNAME;
}

HRESULT TestExtender::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result, EXCEPINFO* info,
                             UINT* argError) {
    if (id >= kForwardedBase && id - kForwardedBase < static_cast<DISPID>(m_forwarded.size())) {
        return m_control->Invoke(m_forwarded[id - kForwardedBase], IID_NULL, LOCALE_USER_DEFAULT, flags, params, result,
                                 info, argError);
    }
    if (id == 5 && (flags & DISPATCH_PROPERTYPUT) && params && params->cArgs == 1) {
        VARIANT value;
        ::VariantInit(&value);
        if (FAILED(::VariantChangeType(&value, &params->rgvarg[0], 0, VT_I2))) return DISP_E_TYPEMISMATCH;
        m_align = value.iVal;
        return S_OK;
    }
    if (!(flags & DISPATCH_PROPERTYGET) || !result) return DISP_E_MEMBERNOTFOUND;
    switch (id) {
        case 1: return returnText(result, m_name);
        case 2: return returnIndex(result, m_index);
        case 3: return returnObject(result, m_container);
        case 4: return returnObject(result, m_form);
        case 5:
            result->vt = VT_I2;
            result->iVal = m_align;
            return S_OK;
        case 6: return returnObject(result, m_control);
        default: return DISP_E_MEMBERNOTFOUND;
    }
}

HRESULT TestForm::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}

HRESULT TestForm::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    // The form is its own Controls collection.
    ids[0] = count == 1 ? idAmong(names[0], {L"Controls", L"Count", L"Item"}) : DISPID_UNKNOWN;
    return ids[0] == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
}

HRESULT TestForm::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT* result, EXCEPINFO*, UINT*) {
    if (!result) return DISP_E_MEMBERNOTFOUND;
    if (id == 1) return returnObject(result, this);
    if (id == 2) {
        result->vt = VT_I4;
        result->lVal = static_cast<LONG>(m_controls.size());
        return S_OK;
    }
    if (id == 3 && params && params->cArgs == 1) {
        VARIANT index;
        ::VariantInit(&index);
        if (FAILED(::VariantChangeType(&index, &params->rgvarg[0], 0, VT_I4))) return DISP_E_TYPEMISMATCH;
        if (index.lVal < 0 || index.lVal >= static_cast<LONG>(m_controls.size())) return DISP_E_BADINDEX;
        return returnObject(result, m_controls[static_cast<size_t>(index.lVal)]);
    }
    return DISP_E_MEMBERNOTFOUND;
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
