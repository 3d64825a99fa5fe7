// TestContainer: a small OLE container for control tests: a window, a client site with ambient
// properties and an extender, a recording property bag and an event sink.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "com/ComPrerequisites.h"
#include "com/ComPtr.h"
#include "support/StackComObject.h"

namespace comtest {

using testsupport::StackObject;

class TestForm;

// A container object of the form (a frame): Name, and Index when it is an element of a control array.
class TestContainerObject final : public testsupport::StackComObject<IDispatch, IID_IDispatch> {
public:
    explicit TestContainerObject(std::u16string name, int index = -1) : m_name(std::move(name)), m_index(index) {}
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                     UINT*) override;

private:
    std::u16string m_name;
    int m_index;
};

// The host's wrapper of the control, late-bound: Name; and when a test sets them, Index (control
// arrays), Container, Parent (a TestForm), Align, Object (the control). Like a real extender it
// passes the names it does not know on to the control.
class TestExtender final : public testsupport::StackComObject<IDispatch, IID_IDispatch> {
public:
    explicit TestExtender(std::u16string name, int index = -1) : m_name(std::move(name)), m_index(index) {}
    void Control(IDispatch* control) noexcept { m_control = control; }
    void Container(TestContainerObject* container) noexcept { m_container = container; }
    void Parent(TestForm* form) noexcept { m_form = form; }
    short Align() const noexcept { return m_align; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                     UINT*) override;

private:
    std::u16string m_name;
    int m_index;
    IDispatch* m_control = nullptr;  // not held: the test owns both
    TestContainerObject* m_container = nullptr;
    TestForm* m_form = nullptr;
    short m_align = 0;
    std::vector<DISPID> m_forwarded;  // the control's ids of the names passed on
};

// The form: Controls, a collection with Count and Item(i) from 0 of the extenders added.
class TestForm final : public testsupport::StackComObject<IDispatch, IID_IDispatch> {
public:
    void Add(TestExtender* extender) { m_controls.push_back(extender); }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                                     EXCEPINFO*, UINT*) override;

private:
    std::vector<TestExtender*> m_controls;
};

// A client site in a window of its own: ambient UserMode (or no ambient at all), the extender,
// and in-place activation at a fixed rectangle.
class TestSite final : public StackObject<IOleClientSite, IOleInPlaceSite, IOleControlSite, IDispatch> {
public:
    enum class Ambient { RunMode, DesignMode, None };
    TestSite(Ambient ambient, TestExtender* extender, RECT place = {10, 10, 130, 40});
    ~TestSite();
    TestSite(const TestSite&) = delete;
    TestSite& operator=(const TestSite&) = delete;

    HWND Window() const noexcept { return m_window; }
    const RECT& Place() const noexcept { return m_place; }
    int InPlaceActivations() const noexcept { return m_activations; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override;
    // IOleClientSite
    HRESULT STDMETHODCALLTYPE SaveObject() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker** m) override;
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** c) override;
    HRESULT STDMETHODCALLTYPE ShowObject() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }
    // IOleWindow, IOleInPlaceSite
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override;
    HRESULT STDMETHODCALLTYPE OnUIActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** doc, LPRECT pos,
                                               LPRECT clip, LPOLEINPLACEFRAMEINFO info) override;
    HRESULT STDMETHODCALLTYPE Scroll(SIZE) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT) override { return S_OK; }
    // IOleControlSite
    HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch** extended) override;
    HRESULT STDMETHODCALLTYPE TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*, DWORD) override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE OnFocus(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override { return E_NOTIMPL; }
    // IDispatch: the ambient properties
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                     UINT*) override;

private:
    Ambient m_ambient;
    TestExtender* m_extender;
    RECT m_place;
    HWND m_window = nullptr;
    int m_activations = 0;
};

// A property bag that keeps the values by key and records every read and write in order.
class RecordingBag final : public testsupport::StackComObject<IPropertyBag, IID_IPropertyBag> {
public:
    ~RecordingBag();
    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR name, VARIANT* value, IErrorLog*) override;
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR name, VARIANT* value) override;

    std::vector<std::u16string> reads;
    std::vector<std::u16string> writes;
    std::map<std::u16string, VARIANT> values;
};

// An event sink: each event reaches `handler` with its dispatch id and its arguments (last
// first, as dispatch passes them); by-reference arguments can be changed in place.
class EventSink final : public testsupport::StackComObject<IDispatch, IID_IDispatch> {
public:
    using Handler = std::function<void(DISPID, DISPPARAMS&)>;
    explicit EventSink(Handler handler) : m_handler(std::move(handler)) {}
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*, EXCEPINFO*,
                                     UINT*) override;

private:
    Handler m_handler;
};

// Runs the thread's pending messages.
void PumpMessages();

}  // namespace comtest
