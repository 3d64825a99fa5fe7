#include "frame/OleDragDrop.h"

#include <cstring>

namespace {

template <class Interface>
HRESULT queryFor(Interface* self, REFIID riid, void** ppv) {
    if (ppv == nullptr) return E_POINTER;
    if (riid == IID_IUnknown || riid == __uuidof(Interface)) {
        *ppv = self;
        self->AddRef();
        return S_OK;
    }
    *ppv = nullptr;
    return E_NOINTERFACE;
}

bool isTextFormat(const FORMATETC* format) noexcept {
    return format != nullptr && (format->cfFormat == CF_UNICODETEXT || format->cfFormat == CF_TEXT) &&
           (format->tymed & TYMED_HGLOBAL) != 0;
}

}  // namespace

// ---- OleTextDataObject ----

HRESULT OleTextDataObject::QueryInterface(REFIID riid, void** ppv) { return queryFor<IDataObject>(this, riid, ppv); }
ULONG OleTextDataObject::AddRef() { return static_cast<ULONG>(::InterlockedIncrement(&m_lRefs)); }
ULONG OleTextDataObject::Release() {
    const LONG left = ::InterlockedDecrement(&m_lRefs);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
}

HRESULT OleTextDataObject::GetData(FORMATETC* format, STGMEDIUM* medium) {
    if (medium == nullptr) return E_POINTER;
    if (!isTextFormat(format)) return DV_E_FORMATETC;
    // Delayed rendering: a host that declared no text yet may supply it now.
    if (!m_bHasText && m_receiver != nullptr) m_receiver->OnOleSetData(static_cast<int16_t>(format->cfFormat));
    if (!m_bHasText) return DV_E_FORMATETC;
    HGLOBAL memory = nullptr;
    if (format->cfFormat == CF_UNICODETEXT) {
        const size_t bytes = (m_sText.size() + 1) * sizeof(char16_t);
        memory = ::GlobalAlloc(GMEM_MOVEABLE, bytes);
        if (memory == nullptr) return E_OUTOFMEMORY;
        if (void* target = ::GlobalLock(memory)) {
            std::memcpy(target, m_sText.c_str(), bytes);
            ::GlobalUnlock(memory);
        }
    } else {
        const int size = ::WideCharToMultiByte(CP_ACP, 0, AsWide(m_sText), -1, nullptr, 0, nullptr, nullptr);
        memory = ::GlobalAlloc(GMEM_MOVEABLE, static_cast<SIZE_T>(size > 0 ? size : 1));
        if (memory == nullptr) return E_OUTOFMEMORY;
        if (char* target = static_cast<char*>(::GlobalLock(memory))) {
            target[0] = '\0';
            if (size > 0) ::WideCharToMultiByte(CP_ACP, 0, AsWide(m_sText), -1, target, size, nullptr, nullptr);
            ::GlobalUnlock(memory);
        }
    }
    medium->tymed = TYMED_HGLOBAL;
    medium->hGlobal = memory;
    medium->pUnkForRelease = nullptr;
    return S_OK;
}

HRESULT OleTextDataObject::QueryGetData(FORMATETC* format) {
    return isTextFormat(format) && m_bHasText ? S_OK : DV_E_FORMATETC;
}

HRESULT OleTextDataObject::GetCanonicalFormatEtc(FORMATETC*, FORMATETC* out) {
    if (out != nullptr) out->ptd = nullptr;
    return DATA_S_SAMEFORMATETC;
}

HRESULT OleTextDataObject::SetData(FORMATETC* format, STGMEDIUM* medium, BOOL release) {
    if (!isTextFormat(format) || medium == nullptr || medium->tymed != TYMED_HGLOBAL) return DV_E_FORMATETC;
    HRESULT result = E_FAIL;
    if (const void* source = ::GlobalLock(medium->hGlobal)) {
        if (format->cfFormat == CF_UNICODETEXT) {
            SetText(FromWide(static_cast<const wchar_t*>(source)));
        } else {
            const char* narrow = static_cast<const char*>(source);
            const int size = ::MultiByteToWideChar(CP_ACP, 0, narrow, -1, nullptr, 0);
            std::wstring wide(static_cast<size_t>(size > 0 ? size : 1), L'\0');
            if (size > 0) ::MultiByteToWideChar(CP_ACP, 0, narrow, -1, wide.data(), size);
            SetText(FromWide(wide.c_str()));
        }
        ::GlobalUnlock(medium->hGlobal);
        result = S_OK;
    }
    if (release) ::ReleaseStgMedium(medium);
    return result;
}

// ---- OleDataView ----

OleDataView::OleDataView(IDataObject* data) noexcept : m_data(data) {
    if (m_data != nullptr) m_data->AddRef();
}

OleDataView::~OleDataView() {
    if (m_data != nullptr) m_data->Release();
}

bool OleDataView::GetFormat(int16_t format) const {
    if (m_data == nullptr) return false;
    FORMATETC request{static_cast<CLIPFORMAT>(format), nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    return m_data->QueryGetData(&request) == S_OK;
}

CtlString OleDataView::GetText() const {
    if (m_data == nullptr) return {};
    FORMATETC request{CF_UNICODETEXT, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    STGMEDIUM medium{};
    if (FAILED(m_data->GetData(&request, &medium))) return {};
    CtlString text;
    if (const void* source = ::GlobalLock(medium.hGlobal)) {
        const SIZE_T capacity = ::GlobalSize(medium.hGlobal) / sizeof(wchar_t);
        const wchar_t* wide = static_cast<const wchar_t*>(source);
        size_t length = 0;
        while (length < capacity && wide[length] != L'\0') ++length;
        text = FromWide(wide, length);
        ::GlobalUnlock(medium.hGlobal);
    }
    ::ReleaseStgMedium(&medium);
    return text;
}

void OleDataView::SetText(const CtlString& text) {
    if (m_data == nullptr) return;
    const size_t bytes = (text.size() + 1) * sizeof(char16_t);
    HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, bytes);
    if (memory == nullptr) return;
    if (void* target = ::GlobalLock(memory)) {
        std::memcpy(target, text.c_str(), bytes);
        ::GlobalUnlock(memory);
    }
    FORMATETC format{CF_UNICODETEXT, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    STGMEDIUM medium{};
    medium.tymed = TYMED_HGLOBAL;
    medium.hGlobal = memory;
    if (FAILED(m_data->SetData(&format, &medium, TRUE))) ::GlobalFree(memory);
}

void OleDataView::Clear() { SetText(CtlString()); }

// ---- SurfaceDropTarget ----

SurfaceDropTarget::~SurfaceDropTarget() {
    if (m_current != nullptr) m_current->Release();
}

HRESULT SurfaceDropTarget::QueryInterface(REFIID riid, void** ppv) { return queryFor<IDropTarget>(this, riid, ppv); }
ULONG SurfaceDropTarget::AddRef() { return static_cast<ULONG>(::InterlockedIncrement(&m_lRefs)); }
ULONG SurfaceDropTarget::Release() {
    const LONG left = ::InterlockedDecrement(&m_lRefs);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
}

HRESULT SurfaceDropTarget::DragEnter(IDataObject* data, DWORD keys, POINTL pt, DWORD* effect) {
    if (effect == nullptr) return E_INVALIDARG;
    if (m_current != nullptr) m_current->Release();
    m_current = data;
    if (m_current != nullptr) m_current->AddRef();
    m_lastPoint = pt;
    m_lastKeys = keys;
    if (m_receiver != nullptr) m_receiver->OnOleDrag(data, keys, pt, *effect, 0);
    return S_OK;
}

HRESULT SurfaceDropTarget::DragOver(DWORD keys, POINTL pt, DWORD* effect) {
    if (effect == nullptr) return E_INVALIDARG;
    m_lastPoint = pt;
    m_lastKeys = keys;
    if (m_receiver != nullptr) m_receiver->OnOleDrag(m_current, keys, pt, *effect, 2);
    return S_OK;
}

HRESULT SurfaceDropTarget::DragLeave() {
    DWORD effect = DROPEFFECT_NONE;
    if (m_receiver != nullptr) m_receiver->OnOleDrag(m_current, m_lastKeys, m_lastPoint, effect, 1);
    if (m_current != nullptr) m_current->Release();
    m_current = nullptr;
    return S_OK;
}

HRESULT SurfaceDropTarget::Drop(IDataObject* data, DWORD keys, POINTL pt, DWORD* effect) {
    if (effect == nullptr) return E_INVALIDARG;
    if (m_receiver != nullptr) m_receiver->OnOleDrag(data, keys, pt, *effect, -1);
    if (m_current != nullptr) m_current->Release();
    m_current = nullptr;
    return S_OK;
}

// ---- SurfaceDropSource ----

HRESULT SurfaceDropSource::QueryInterface(REFIID riid, void** ppv) { return queryFor<IDropSource>(this, riid, ppv); }
ULONG SurfaceDropSource::AddRef() { return static_cast<ULONG>(::InterlockedIncrement(&m_lRefs)); }
ULONG SurfaceDropSource::Release() {
    const LONG left = ::InterlockedDecrement(&m_lRefs);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
}

HRESULT SurfaceDropSource::QueryContinueDrag(BOOL escapePressed, DWORD keys) {
    if (escapePressed) return DRAGDROP_S_CANCEL;
    if ((keys & (MK_LBUTTON | MK_RBUTTON)) == 0) return DRAGDROP_S_DROP;
    return S_OK;
}

HRESULT SurfaceDropSource::GiveFeedback(DWORD effect) {
    const bool useDefault = m_receiver == nullptr || m_receiver->OnOleFeedback(effect);
    return useDefault ? DRAGDROP_S_USEDEFAULTCURSORS : S_OK;
}
