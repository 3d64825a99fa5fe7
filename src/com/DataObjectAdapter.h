// DataObjectAdapter: the adapter base of the drag events' data object: its dual interface, and
// the platform's IDataObject of the drag under the same identity while the event runs.
#pragma once

#include "com/DualObject.h"

namespace tc::com {

template <class Traits>
class DataObjectAdapter : public DualObject<Traits>, public IDataObject {
    using Dual = DualObject<Traits>;

public:
    using Dual::Dual;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override { return Dual::QueryInterface(riid, ppv); }
    ULONG STDMETHODCALLTYPE AddRef() override { return Dual::AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return Dual::Release(); }

    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) override {
        IDataObject* data = platform();
        return data ? data->GetData(format, medium) : OLE_E_NOTRUNNING;
    }
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC* format, STGMEDIUM* medium) override {
        IDataObject* data = platform();
        return data ? data->GetDataHere(format, medium) : OLE_E_NOTRUNNING;
    }
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) override {
        IDataObject* data = platform();
        return data ? data->QueryGetData(format) : OLE_E_NOTRUNNING;
    }
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC* in, FORMATETC* out) override {
        IDataObject* data = platform();
        return data ? data->GetCanonicalFormatEtc(in, out) : OLE_E_NOTRUNNING;
    }
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC* format, STGMEDIUM* medium, BOOL release) override {
        IDataObject* data = platform();
        return data ? data->SetData(format, medium, release) : OLE_E_NOTRUNNING;
    }
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) override {
        IDataObject* data = platform();
        return data ? data->EnumFormatEtc(direction, formats) : OLE_E_NOTRUNNING;
    }
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink, DWORD* connection) override {
        IDataObject* data = platform();
        return data ? data->DAdvise(format, flags, sink, connection) : OLE_E_NOTRUNNING;
    }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD connection) override {
        IDataObject* data = platform();
        return data ? data->DUnadvise(connection) : OLE_E_NOTRUNNING;
    }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA** advise) override {
        IDataObject* data = platform();
        return data ? data->EnumDAdvise(advise) : OLE_E_NOTRUNNING;
    }

protected:
    void* QueryMore(REFIID riid) override {
        return riid == IID_IDataObject && platform() ? static_cast<IDataObject*>(this) : nullptr;
    }

private:
    IDataObject* platform() const noexcept { return this->SharedObject() ? this->SharedObject()->Platform() : nullptr; }
};

}  // namespace tc::com
