#include "frame/SurfaceAccessible.h"

#include <algorithm>
#include <atomic>
#include <new>

#include "frame/ChildIdEnumerator.h"

namespace {

std::atomic<long> g_liveObjects{0};

void setEmpty(VARIANT* out) noexcept {
    ::VariantInit(out);
    out->vt = VT_EMPTY;
}

void setChild(VARIANT* out, int32_t id) noexcept {
    ::VariantInit(out);
    out->vt = VT_I4;
    out->lVal = id;
}

}  // namespace

SurfaceAccessible::SurfaceAccessible(HWND hwnd, AccessibleSource* source) noexcept : m_hWnd(hwnd), m_source(source) {
    ++g_liveObjects;
}

SurfaceAccessible::~SurfaceAccessible() { --g_liveObjects; }

long SurfaceAccessible::LiveObjects() noexcept { return g_liveObjects.load() + ChildIdEnumerator::LiveObjects(); }

// ---- IUnknown and IDispatch ----

HRESULT STDMETHODCALLTYPE SurfaceAccessible::QueryInterface(REFIID riid, void** object) {
    if (object == nullptr) return E_POINTER;
    // Written with __uuidof: mingw's oleacc import library resolves IID_IAccessible to a stub.
    if (riid == IID_IUnknown || riid == IID_IDispatch || riid == __uuidof(IAccessible)) {
        *object = static_cast<IAccessible*>(this);
        AddRef();
        return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
}

ULONG STDMETHODCALLTYPE SurfaceAccessible::AddRef() { return ++m_refs; }

ULONG STDMETHODCALLTYPE SurfaceAccessible::Release() {
    const ULONG left = --m_refs;
    if (left == 0) delete this;
    return left;
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::GetTypeInfoCount(UINT* count) {
    if (count == nullptr) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (info != nullptr) *info = nullptr;
    return E_NOTIMPL;
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) { return E_NOTIMPL; }

HRESULT STDMETHODCALLTYPE SurfaceAccessible::Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                                    UINT*) {
    return E_NOTIMPL;
}

// ---- helpers ----

HRESULT SurfaceAccessible::checkChild(const VARIANT& child, int32_t& id) const noexcept {
    if (m_source == nullptr || m_hWnd == nullptr) return RPC_E_DISCONNECTED;
    if (child.vt != VT_I4 && child.vt != VT_INT) return E_INVALIDARG;
    id = child.lVal;
    if (id < 0 || id > m_source->AccessibleItemCount()) return E_INVALIDARG;
    return S_OK;
}

template <class Read>
HRESULT SurfaceAccessible::answerText(const VARIANT& child, BSTR* out, Read read) const noexcept {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    int32_t id = 0;
    const HRESULT checked = checkChild(child, id);
    if (FAILED(checked)) return checked;
    try {
        const CtlString text = read(id);
        if (text.empty()) return S_FALSE;
        *out = ::SysAllocStringLen(AsWide(text), static_cast<UINT>(text.size()));
        return *out != nullptr ? S_OK : E_OUTOFMEMORY;
    } catch (...) {
        return E_FAIL;
    }
}

// ---- IAccessible ----

HRESULT STDMETHODCALLTYPE SurfaceAccessible::get_accParent(IDispatch** parent) {
    if (parent == nullptr) return E_POINTER;
    *parent = nullptr;
    if (m_source == nullptr || m_hWnd == nullptr) return RPC_E_DISCONNECTED;
    // The window's own object, which holds this client area as its child.
    return ::CreateStdAccessibleObject(m_hWnd, OBJID_WINDOW, IID_IDispatch, reinterpret_cast<void**>(parent));
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::get_accChildCount(LONG* count) {
    if (count == nullptr) return E_POINTER;
    *count = 0;
    if (m_source == nullptr) return RPC_E_DISCONNECTED;
    *count = std::max<LONG>(m_source->AccessibleItemCount(), 0);
    return S_OK;
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::get_accChild(VARIANT child, IDispatch** element) {
    if (element == nullptr) return E_POINTER;
    *element = nullptr;
    int32_t id = 0;
    const HRESULT checked = checkChild(child, id);
    if (FAILED(checked)) return checked;
    // Items are simple elements: the caller asks this object about them by child id.
    return S_FALSE;
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::get_accName(VARIANT child, BSTR* name) {
    return answerText(child, name, [this](int32_t id) { return m_source->AccessibleName(id); });
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::get_accValue(VARIANT child, BSTR* value) {
    return answerText(child, value, [this](int32_t id) { return m_source->AccessibleValue(id); });
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::get_accDescription(VARIANT child, BSTR* description) {
    return answerText(child, description, [this](int32_t id) { return m_source->AccessibleDescription(id); });
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) {
    return answerText(child, shortcut, [this](int32_t id) { return m_source->AccessibleKeyboardShortcut(id); });
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::get_accDefaultAction(VARIANT child, BSTR* action) {
    return answerText(child, action, [this](int32_t id) { return m_source->AccessibleDefaultAction(id); });
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::get_accHelp(VARIANT child, BSTR* help) {
    return answerText(child, help, [](int32_t) { return CtlString(); });
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) {
    if (file == nullptr || topic == nullptr) return E_POINTER;
    *file = nullptr;
    *topic = -1;
    int32_t id = 0;
    const HRESULT checked = checkChild(child, id);
    return FAILED(checked) ? checked : S_FALSE;
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::get_accRole(VARIANT child, VARIANT* role) {
    if (role == nullptr) return E_POINTER;
    setEmpty(role);
    int32_t id = 0;
    const HRESULT checked = checkChild(child, id);
    if (FAILED(checked)) return checked;
    setChild(role, m_source->AccessibleRole(id));
    return S_OK;
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::get_accState(VARIANT child, VARIANT* state) {
    if (state == nullptr) return E_POINTER;
    setEmpty(state);
    int32_t id = 0;
    const HRESULT checked = checkChild(child, id);
    if (FAILED(checked)) return checked;
    setChild(state, m_source->AccessibleState(id));
    return S_OK;
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::get_accFocus(VARIANT* focus) {
    if (focus == nullptr) return E_POINTER;
    setEmpty(focus);
    if (m_source == nullptr || m_hWnd == nullptr) return RPC_E_DISCONNECTED;
    if (::GetFocus() != m_hWnd) return S_FALSE;
    const int32_t item = m_source->AccessibleFocusedItem();
    setChild(focus, item > 0 && item <= m_source->AccessibleItemCount() ? item : CHILDID_SELF);
    return S_OK;
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::get_accSelection(VARIANT* selection) {
    if (selection == nullptr) return E_POINTER;
    setEmpty(selection);
    if (m_source == nullptr) return RPC_E_DISCONNECTED;
    try {
        std::vector<int32_t> selected = m_source->AccessibleSelection();
        // Ids the control no longer has are left out rather than handed to a client that would
        // get E_INVALIDARG for them.
        const int32_t count = m_source->AccessibleItemCount();
        std::erase_if(selected, [count](int32_t id) { return id < 0 || id > count; });
        if (selected.empty()) return S_FALSE;
        if (selected.size() == 1) {
            setChild(selection, selected.front());
            return S_OK;
        }
        selection->vt = VT_UNKNOWN;
        selection->punkVal = new ChildIdEnumerator(std::move(selected));
        return S_OK;
    } catch (const std::bad_alloc&) {
        setEmpty(selection);
        return E_OUTOFMEMORY;
    } catch (...) {
        setEmpty(selection);
        return E_FAIL;
    }
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::accSelect(LONG flags, VARIANT child) {
    int32_t id = 0;
    const HRESULT checked = checkChild(child, id);
    if (FAILED(checked)) return checked;
    return m_source->AccessibleSelect(id, flags) ? S_OK : DISP_E_MEMBERNOTFOUND;
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                                         VARIANT child) {
    if (left == nullptr || top == nullptr || width == nullptr || height == nullptr) return E_POINTER;
    *left = *top = *width = *height = 0;
    int32_t id = 0;
    const HRESULT checked = checkChild(child, id);
    if (FAILED(checked)) return checked;
    RECT r{};
    if (id == CHILDID_SELF) {
        if (!::GetWindowRect(m_hWnd, &r)) return E_FAIL;
    } else {
        if (!m_source->AccessibleItemBounds(id, r)) return S_FALSE;
        ::MapWindowPoints(m_hWnd, HWND_DESKTOP, reinterpret_cast<POINT*>(&r), 2);
    }
    *left = r.left;
    *top = r.top;
    *width = r.right - r.left;
    *height = r.bottom - r.top;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::accNavigate(LONG direction, VARIANT start, VARIANT* end) {
    if (end == nullptr) return E_POINTER;
    setEmpty(end);
    int32_t id = 0;
    const HRESULT checked = checkChild(start, id);
    if (FAILED(checked)) return checked;
    const int32_t count = m_source->AccessibleItemCount();
    int32_t target = 0;
    if (id == CHILDID_SELF) {
        // Siblings of the control are its parent window's business.
        if (direction == NAVDIR_FIRSTCHILD) target = count > 0 ? 1 : 0;
        if (direction == NAVDIR_LASTCHILD) target = count;
    } else if (direction == NAVDIR_NEXT || direction == NAVDIR_DOWN) {
        target = id < count ? id + 1 : 0;
    } else if (direction == NAVDIR_PREVIOUS || direction == NAVDIR_UP) {
        target = id - 1;
    } else if (direction == NAVDIR_FIRSTCHILD || direction == NAVDIR_LASTCHILD) {
        return E_INVALIDARG;  // simple elements have no children
    }
    if (target <= 0) return S_FALSE;
    setChild(end, target);
    return S_OK;
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::accHitTest(LONG x, LONG y, VARIANT* child) {
    if (child == nullptr) return E_POINTER;
    setEmpty(child);
    if (m_source == nullptr || m_hWnd == nullptr) return RPC_E_DISCONNECTED;
    RECT window{};
    const POINT screen{x, y};
    if (!::GetWindowRect(m_hWnd, &window) || !::PtInRect(&window, screen)) return S_FALSE;
    POINT client = screen;
    ::ScreenToClient(m_hWnd, &client);
    const int32_t count = m_source->AccessibleItemCount();
    for (int32_t item = 1; item <= count; ++item) {
        RECT bounds{};
        if (m_source->AccessibleItemBounds(item, bounds) && ::PtInRect(&bounds, client)) {
            setChild(child, item);
            return S_OK;
        }
    }
    setChild(child, CHILDID_SELF);
    return S_OK;
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::accDoDefaultAction(VARIANT child) {
    int32_t id = 0;
    const HRESULT checked = checkChild(child, id);
    if (FAILED(checked)) return checked;
    try {
        return m_source->AccessibleDoDefaultAction(id) ? S_OK : DISP_E_MEMBERNOTFOUND;
    } catch (...) {
        return E_FAIL;
    }
}

HRESULT STDMETHODCALLTYPE SurfaceAccessible::put_accName(VARIANT, BSTR) { return E_NOTIMPL; }

HRESULT STDMETHODCALLTYPE SurfaceAccessible::put_accValue(VARIANT, BSTR) { return E_NOTIMPL; }
