#include "com/EventSource.h"

#include <algorithm>

namespace tc::com {

EventArgs::EventArgs(size_t count) : m_args(count), m_storage(count) {
    for (VARIANT& v : m_args) ::VariantInit(&v);
    for (VARIANT& v : m_storage) ::VariantInit(&v);
}

EventArgs::~EventArgs() {
    // By-reference arguments point into the storage: only plain ones own what they hold.
    for (VARIANT& v : m_args) {
        if (!(v.vt & VT_BYREF)) ::VariantClear(&v);
    }
    for (VARIANT& v : m_storage) ::VariantClear(&v);
}

void EventArgs::Object(size_t slot, IDispatch* object) {
    VARIANT& v = m_args[slot];
    v.vt = VT_DISPATCH;
    v.pdispVal = object;
    if (object) object->AddRef();
}

DISPPARAMS EventArgs::Params() noexcept {
    DISPPARAMS params{};
    params.rgvarg = m_args.empty() ? nullptr : m_args.data();
    params.cArgs = static_cast<UINT>(m_args.size());
    return params;
}

void EventSource::Fire(DISPID id, EventArgs& args) {
    // A sink may unadvise (or the host release the object) from inside its handler.
    const std::vector<Sink> sinks = m_sinks;
    const ComPtr<IUnknown> keepAlive = ComPtr<IUnknown>::Share(&m_owner);
    for (const Sink& sink : sinks) {
        DISPPARAMS params = args.Params();
        EXCEPINFO excep{};
        UINT argError = 0;
        const HRESULT hr = sink.dispatch->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params,
                                                 nullptr, &excep, &argError);
        if (hr == DISP_E_EXCEPTION) {
            ::SysFreeString(excep.bstrSource);
            ::SysFreeString(excep.bstrDescription);
            ::SysFreeString(excep.bstrHelpFile);
        }
    }
}

size_t EventSource::SinkCount() const noexcept { return m_sinks.size(); }

HRESULT EventSource::EnumConnectionPoints(IEnumConnectionPoints** out) {
    if (out) *out = nullptr;
    return E_NOTIMPL;
}

HRESULT EventSource::FindConnectionPoint(REFIID riid, IConnectionPoint** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (riid != m_iid) return CONNECT_E_NOCONNECTION;
    *out = this;
    AddRef();
    return S_OK;
}

HRESULT EventSource::GetConnectionInterface(IID* iid) {
    if (!iid) return E_POINTER;
    *iid = m_iid;
    return S_OK;
}

HRESULT EventSource::GetConnectionPointContainer(IConnectionPointContainer** out) {
    if (!out) return E_POINTER;
    *out = this;
    AddRef();
    return S_OK;
}

HRESULT EventSource::Advise(IUnknown* sink, DWORD* cookie) {
    if (!sink || !cookie) return E_POINTER;
    *cookie = 0;
    ComPtr<IDispatch> dispatch;
    // A sink answers for the event interface itself or, as script hosts do, for IDispatch.
    if (FAILED(sink->QueryInterface(m_iid, dispatch.putVoid())) &&
        FAILED(sink->QueryInterface(IID_IDispatch, dispatch.putVoid()))) {
        return CONNECT_E_CANNOTCONNECT;
    }
    *cookie = m_nextCookie++;
    m_sinks.push_back(Sink{*cookie, std::move(dispatch)});
    return S_OK;
}

HRESULT EventSource::Unadvise(DWORD cookie) {
    const auto it = std::find_if(m_sinks.begin(), m_sinks.end(), [&](const Sink& s) { return s.cookie == cookie; });
    if (it == m_sinks.end()) return CONNECT_E_NOCONNECTION;
    m_sinks.erase(it);
    return S_OK;
}

HRESULT EventSource::EnumConnections(IEnumConnections** out) {
    if (out) *out = nullptr;
    return E_NOTIMPL;
}

}  // namespace tc::com
