// EventSource: the connection point of an object's event interface, and EventArgs, the arguments
// of one event as the dispatch sinks receive them.
#pragma once

#include <vector>

#include "com/ComConvert.h"
#include "com/ComPtr.h"

namespace tc::com {

// The arguments of one event in dispatch order (the last argument first). By-reference arguments
// point into storage of their own, which Back reads after the sinks ran.
class EventArgs {
public:
    explicit EventArgs(size_t count);
    ~EventArgs();
    // Its by-reference arguments point into its own storage.
    EventArgs(const EventArgs&) = delete;
    EventArgs& operator=(const EventArgs&) = delete;

    template <class Tag, class Value>
    void Val(size_t slot, const Value& value) {
        VARIANT& v = m_args[slot];
        v.vt = VarTypeOf<Tag>();
        ComOut<Tag>(&VariantField<Tag>(v), value);
    }
    template <class Tag, class Value>
    void Ref(size_t slot, const Value& value) {
        VARIANT& store = m_storage[slot];
        store.vt = VarTypeOf<Tag>();
        ComOut<Tag>(&VariantField<Tag>(store), value);
        VARIANT& v = m_args[slot];
        v.vt = static_cast<VARTYPE>(VarTypeOf<Tag>() | VT_BYREF);
        v.byref = &VariantField<Tag>(store);
    }
    template <class Tag, class Value>
    void Back(size_t slot, Value& value) {
        value = ComIn<Tag>(VariantField<Tag>(m_storage[slot]));
    }
    // An object argument (a data object), passed by value as IDispatch.
    void Object(size_t slot, IDispatch* object);

    DISPPARAMS Params() noexcept;

private:
    std::vector<VARIANT> m_args;
    std::vector<VARIANT> m_storage;
};

// One connection point for the object's default source interface. The owner's IUnknown answers
// for its identity; the sinks are held until Unadvise or the owner's end.
class EventSource final : public IConnectionPointContainer, public IConnectionPoint {
public:
    EventSource(IUnknown& owner, const GUID& eventsIid) noexcept : m_owner(owner), m_iid(eventsIid) {}
    // The sinks belong to this one connection point.
    EventSource(const EventSource&) = delete;
    EventSource& operator=(const EventSource&) = delete;

    // Calls every connected sink; their errors are theirs and do not reach the object.
    void Fire(DISPID id, EventArgs& args);
    size_t SinkCount() const noexcept;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override { return m_owner.QueryInterface(riid, ppv); }
    ULONG STDMETHODCALLTYPE AddRef() override { return m_owner.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return m_owner.Release(); }

    // IConnectionPointContainer
    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** out) override;
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID riid, IConnectionPoint** out) override;
    // IConnectionPoint
    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override;
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** out) override;
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** out) override;

private:
    struct Sink {
        DWORD cookie;
        ComPtr<IDispatch> dispatch;
    };
    IUnknown& m_owner;
    GUID m_iid;
    std::vector<Sink> m_sinks;
    DWORD m_nextCookie = 1;
};

}  // namespace tc::com
