// The platform's drag and drop for Win32Surface: OleTextDataObject (a text data object), OleDataView
// (SurfaceDataObject over any IDataObject), SurfaceDropTarget and SurfaceDropSource.
#pragma once

#include <cstdint>

#include "common/CtlTypes.h"
#include "frame/SurfaceDataObject.h"
#include "platform/win32/WinApi.h"

#include <ole2.h>

// What the drop target and source report to their surface.
class OleDragReceiver {
public:
    virtual ~OleDragReceiver() = default;
    // State: 0 enter, 1 leave, 2 over; -1 is the drop itself. `effect` in and out.
    virtual void OnOleDrag(IDataObject* data, DWORD keyState, POINTL screenPoint, DWORD& effect, int16_t state) = 0;
    virtual bool OnOleFeedback(DWORD effect) = 0;  // true: use the default cursors
    virtual void OnOleSetData(int16_t format) = 0;
};

// Holds Unicode text for a drag that starts on a surface. Reference counted by COM.
class OleTextDataObject final : public IDataObject {
public:
    explicit OleTextDataObject(OleDragReceiver* receiver) noexcept : m_receiver(receiver) {}
    // COM object: lives by its reference count, never copied.
    OleTextDataObject(const OleTextDataObject&) = delete;
    OleTextDataObject& operator=(const OleTextDataObject&) = delete;

    void SetText(const CtlString& text) { m_sText = text; m_bHasText = true; }
    void Clear() noexcept { m_sText.clear(); m_bHasText = false; }
    bool HasText() const noexcept { return m_bHasText; }
    const CtlString& Text() const noexcept { return m_sText; }
    // The surface stops reporting to itself once the drag is over.
    void Detach() noexcept { m_receiver = nullptr; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) override;
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) override;
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC* out) override;
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC* format, STGMEDIUM* medium, BOOL release) override;
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD, IEnumFORMATETC**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override {
        return OLE_E_ADVISENOTSUPPORTED;
    }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return OLE_E_ADVISENOTSUPPORTED; }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) override { return OLE_E_ADVISENOTSUPPORTED; }

private:
    ~OleTextDataObject() = default;

    LONG m_lRefs = 1;
    OleDragReceiver* m_receiver;
    CtlString m_sText;
    bool m_bHasText = false;
};

// The data of a drag as a host sees it; holds a reference to the data object while it lives.
class OleDataView final : public SurfaceDataObject {
public:
    explicit OleDataView(IDataObject* data) noexcept;
    ~OleDataView() override;
    // Holds a COM reference: a copy would release it twice.
    OleDataView(const OleDataView&) = delete;
    OleDataView& operator=(const OleDataView&) = delete;

    bool GetFormat(int16_t format) const override;
    CtlString GetText() const override;
    void SetText(const CtlString& text) override;
    void Clear() override;
    // The platform's object behind the view, for hosts that read formats beyond text. No
    // reference is added: it lives as long as the view.
    IDataObject* Platform() const noexcept { return m_data; }

private:
    IDataObject* m_data;
};

class SurfaceDropTarget final : public IDropTarget {
public:
    explicit SurfaceDropTarget(OleDragReceiver* receiver) noexcept : m_receiver(receiver) {}
    // COM object: lives by its reference count, never copied.
    SurfaceDropTarget(const SurfaceDropTarget&) = delete;
    SurfaceDropTarget& operator=(const SurfaceDropTarget&) = delete;
    // The surface goes before the last reference may: it stops the calls here.
    void Detach() noexcept { m_receiver = nullptr; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* data, DWORD keys, POINTL pt, DWORD* effect) override;
    HRESULT STDMETHODCALLTYPE DragOver(DWORD keys, POINTL pt, DWORD* effect) override;
    HRESULT STDMETHODCALLTYPE DragLeave() override;
    HRESULT STDMETHODCALLTYPE Drop(IDataObject* data, DWORD keys, POINTL pt, DWORD* effect) override;

private:
    ~SurfaceDropTarget();

    LONG m_lRefs = 1;
    OleDragReceiver* m_receiver;
    IDataObject* m_current = nullptr;
    // A leave carries no position: the last one seen is reported.
    POINTL m_lastPoint{0, 0};
    DWORD m_lastKeys = 0;
};

class SurfaceDropSource final : public IDropSource {
public:
    explicit SurfaceDropSource(OleDragReceiver* receiver) noexcept : m_receiver(receiver) {}
    // COM object: lives by its reference count, never copied.
    SurfaceDropSource(const SurfaceDropSource&) = delete;
    SurfaceDropSource& operator=(const SurfaceDropSource&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escapePressed, DWORD keys) override;
    HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD effect) override;

private:
    ~SurfaceDropSource() = default;

    LONG m_lRefs = 1;
    OleDragReceiver* m_receiver;
};
