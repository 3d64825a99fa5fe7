// ControlObject: the one ActiveX adapter of every control (ControlObjectCore holds the OLE
// interfaces, ControlObject<Traits> ties them to the generated dual interface and events).
#pragma once

#include <memory>

#include "com/ActiveXSurface.h"
#include "com/ComFontPicture.h"
#include "com/DualObject.h"
#include "com/EventSource.h"

class PropertyBag;

namespace tc::com {

// Where the key hook of a control that takes keys before its host plugs in: the in-place active
// object offers each message to it first.
class InPlaceKeyHook {
public:
    virtual ~InPlaceKeyHook() = default;
    // S_OK when the hook took the message, S_FALSE to let the container have it.
    virtual HRESULT TranslateAccelerator(MSG* message) = 0;
};

// The OLE control interfaces over an ActiveXSurface. The C++ control is reached through the few
// entry points every control has (InitProperties, ReadProperties, WriteProperties).
class ControlObjectCore : public IOleObject,
                          public IOleInPlaceObject,
                          public IOleInPlaceActiveObject,
                          public IOleControl,
                          public IViewObject2,
                          public IPersistPropertyBag,
                          public IPersistStreamInit,
                          private ActiveXSurfaceHost {
public:
    ControlObjectCore(const CLSID& clsid, bool autoRedraw);
    virtual ~ControlObjectCore();
    // A COM object: lives by its reference count, never copied.
    ControlObjectCore(const ControlObjectCore&) = delete;
    ControlObjectCore& operator=(const ControlObjectCore&) = delete;

    ActiveXSurface& Surface() noexcept { return m_surface; }
    void SetKeyHook(InPlaceKeyHook* hook) noexcept { m_keyHook = hook; }

    // ---- IOleObject ----
    HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) override;
    HRESULT STDMETHODCALLTYPE GetClientSite(IOleClientSite** site) override;
    HRESULT STDMETHODCALLTYPE SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Close(DWORD saveOption) override;
    HRESULT STDMETHODCALLTYPE SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker** moniker) override;
    HRESULT STDMETHODCALLTYPE InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetClipboardData(DWORD, IDataObject** data) override;
    HRESULT STDMETHODCALLTYPE DoVerb(LONG verb, LPMSG message, IOleClientSite* activeSite, LONG index,
                                     HWND parent, LPCRECT position) override;
    HRESULT STDMETHODCALLTYPE EnumVerbs(IEnumOLEVERB** verbs) override;
    HRESULT STDMETHODCALLTYPE Update() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE IsUpToDate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetUserClassID(CLSID* clsid) override;
    HRESULT STDMETHODCALLTYPE GetUserType(DWORD form, LPOLESTR* name) override;
    HRESULT STDMETHODCALLTYPE SetExtent(DWORD aspect, SIZEL* size) override;
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, SIZEL* size) override;
    HRESULT STDMETHODCALLTYPE Advise(IAdviseSink* sink, DWORD* connection) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD connection) override;
    HRESULT STDMETHODCALLTYPE EnumAdvise(IEnumSTATDATA** advise) override;
    HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD aspect, DWORD* status) override;
    HRESULT STDMETHODCALLTYPE SetColorScheme(LOGPALETTE*) override { return E_NOTIMPL; }

    // ---- IOleWindow, IOleInPlaceObject, IOleInPlaceActiveObject ----
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InPlaceDeactivate() override;
    HRESULT STDMETHODCALLTYPE UIDeactivate() override;
    HRESULT STDMETHODCALLTYPE SetObjectRects(LPCRECT position, LPCRECT clip) override;
    HRESULT STDMETHODCALLTYPE ReactivateAndUndo() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG message) override;
    HRESULT STDMETHODCALLTYPE OnFrameWindowActivate(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnDocWindowActivate(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return S_OK; }

    // ---- IOleControl ----
    HRESULT STDMETHODCALLTYPE GetControlInfo(CONTROLINFO* info) override;
    HRESULT STDMETHODCALLTYPE OnMnemonic(MSG* message) override;
    HRESULT STDMETHODCALLTYPE OnAmbientPropertyChange(DISPID id) override;
    HRESULT STDMETHODCALLTYPE FreezeEvents(BOOL) override { return S_OK; }

    // ---- IViewObject2 ----
    HRESULT STDMETHODCALLTYPE Draw(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device,
                                   HDC targetDevice, HDC hdc, LPCRECTL bounds, LPCRECTL metafileBounds,
                                   BOOL(STDMETHODCALLTYPE* keepGoing)(ULONG_PTR), ULONG_PTR keepGoingArg) override;
    HRESULT STDMETHODCALLTYPE GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** set) override;
    HRESULT STDMETHODCALLTYPE Freeze(DWORD, LONG, void*, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Unfreeze(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
    HRESULT STDMETHODCALLTYPE GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, LPSIZEL size) override;

    // ---- IPersist, IPersistPropertyBag, IPersistStreamInit ----
    HRESULT STDMETHODCALLTYPE GetClassID(CLSID* clsid) override;
    HRESULT STDMETHODCALLTYPE InitNew() override;
    HRESULT STDMETHODCALLTYPE Load(IPropertyBag* bag, IErrorLog* log) override;
    HRESULT STDMETHODCALLTYPE Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) override;
    HRESULT STDMETHODCALLTYPE IsDirty() override { return m_bDirty ? S_OK : S_FALSE; }
    HRESULT STDMETHODCALLTYPE Load(LPSTREAM stream) override;
    HRESULT STDMETHODCALLTYPE Save(LPSTREAM stream, BOOL clearDirty) override;
    HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER* size) override;

protected:
    // The OLE interface asked for, or nullptr (no reference added).
    void* QueryOle(REFIID riid) noexcept;
    // Drops the window and the container's objects; the adapter calls it before its control goes.
    void Shutdown() noexcept;

    virtual void InitPropertiesOfObject() = 0;
    virtual void ReadPropertiesOfObject(PropertyBag& bag) = 0;
    virtual void WritePropertiesOfObject(PropertyBag& bag) = 0;

private:
    HRESULT activateInPlace(bool uiActivate, LPCRECT position);
    // A host that never calls InitNew or Load still gets a control with its new-control values.
    void initialiseOnce();
    HRESULT runPersistence(void (ControlObjectCore::*step)(PropertyBag&), PropertyBag& bag) noexcept;
    void readFrom(PropertyBag& bag) { ReadPropertiesOfObject(bag); }
    void writeTo(PropertyBag& bag) { WritePropertiesOfObject(bag); }

    void SurfaceResized(int32_t width, int32_t height) override;
    void SurfaceInvalidated() override;
    void SurfacePropertyChanged(const CtlString& propertyName) override;
    void SurfaceAccessKeysChanged() override;

    CLSID m_clsid;
    ActiveXSurface m_surface;
    ComPtr<IOleClientSite> m_site;
    ComPtr<IOleInPlaceSite> m_inPlaceSite;
    ComPtr<IOleInPlaceFrame> m_frame;
    ComPtr<IOleInPlaceUIWindow> m_document;
    ComPtr<IOleAdviseHolder> m_adviseHolder;
    ComPtr<IAdviseSink> m_viewSink;
    DWORD m_viewAspects = 0;
    DWORD m_viewFlags = 0;
    HACCEL m_accelerators = nullptr;
    InPlaceKeyHook* m_keyHook = nullptr;
    bool m_bInitialised = false;
    bool m_bInPlaceActive = false;
    bool m_bUIActive = false;
    bool m_bDirty = false;
};

// The adapter of a `control` description: the dual interface (generated members), the control's
// events to connection-point sinks, and the OLE control interfaces.
template <class Traits>
class ControlObject : public DualObject<Traits>, public ControlObjectCore {
    using Dual = DualObject<Traits>;

public:
    using ObjectType = typename Traits::ObjectType;

    ControlObject()
        : ControlObjectCore(Traits::clsid, Traits::autoRedraw),
          m_source(static_cast<IOleObject&>(*this), *Traits::events),
          m_forwarder(m_source) {
        this->SetObject(std::make_shared<ObjectType>(Surface(), &m_forwarder));
    }
    ~ControlObject() override {
        // The control goes while its surface and event forwarder still exist.
        Shutdown();
        this->SetObject(nullptr);
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override { return Dual::QueryInterface(riid, ppv); }
    ULONG STDMETHODCALLTYPE AddRef() override { return Dual::AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return Dual::Release(); }

protected:
    void* QueryMore(REFIID riid) override {
        if (riid == IID_IConnectionPointContainer) return static_cast<IConnectionPointContainer*>(&m_source);
        return QueryOle(riid);
    }
    void InitPropertiesOfObject() override { this->Object().InitProperties(); }
    void ReadPropertiesOfObject(PropertyBag& bag) override { this->Object().ReadProperties(bag); }
    void WritePropertiesOfObject(PropertyBag& bag) override { this->Object().WriteProperties(bag); }

private:
    EventSource m_source;
    typename Traits::EventForwarder m_forwarder;
};

}  // namespace tc::com
