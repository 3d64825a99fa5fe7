// SurfaceAccessible: the IAccessible a control's window hands to screen readers, over its AccessibleSource.
#pragma once

#include <ole2.h>
#include <oleacc.h>

#include "frame/AccessibleSource.h"
#include "platform/win32/WinApi.h"

// Reference-counted; its window's surface holds one reference and calls Disconnect when the
// control or the window goes. A client may keep the object longer: from then on every call
// answers RPC_E_DISCONNECTED and nothing of the control is touched. Its IDispatch half has no
// type information: screen readers call IAccessible through the vtable.
class SurfaceAccessible final : public IAccessible {
public:
    SurfaceAccessible(HWND hwnd, AccessibleSource* source) noexcept;
    // Objects not yet released on any thread, so that a module holding their code stays loaded.
    static long LiveObjects() noexcept;
    // A COM object: shared by reference count, never copied.
    SurfaceAccessible(const SurfaceAccessible&) = delete;
    SurfaceAccessible& operator=(const SurfaceAccessible&) = delete;

    void Disconnect() noexcept {
        m_hWnd = nullptr;
        m_source = nullptr;
    }
    bool Connected() const noexcept { return m_source != nullptr; }

    // IUnknown
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    // IDispatch
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override;
    // IAccessible
    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override;
    HRESULT STDMETHODCALLTYPE get_accChildCount(LONG* count) override;
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** element) override;
    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override;
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* value) override;
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* description) override;
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override;
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override;
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR* help) override;
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) override;
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) override;
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* focus) override;
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* selection) override;
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* action) override;
    HRESULT STDMETHODCALLTYPE accSelect(LONG flags, VARIANT child) override;
    HRESULT STDMETHODCALLTYPE accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) override;
    HRESULT STDMETHODCALLTYPE accNavigate(LONG direction, VARIANT start, VARIANT* end) override;
    HRESULT STDMETHODCALLTYPE accHitTest(LONG x, LONG y, VARIANT* child) override;
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override;
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT child, BSTR name) override;
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT child, BSTR value) override;

private:
    ~SurfaceAccessible();
    // S_OK with the child id in `id`, E_INVALIDARG for a bad one, RPC_E_DISCONNECTED once detached.
    HRESULT checkChild(const VARIANT& child, int32_t& id) const noexcept;
    // A string member: S_FALSE and a null string when the element has none.
    template <class Read>
    HRESULT answerText(const VARIANT& child, BSTR* out, Read read) const noexcept;

    ULONG m_refs = 1;
    HWND m_hWnd;
    AccessibleSource* m_source;
};
