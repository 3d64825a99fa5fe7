// EventlessControlObject: the ActiveX adapter of a control that raises no events (the tooltip manager).
#pragma once

#include <memory>

#include "com/ControlObject.h"

namespace tc::com {

// ControlObject without the connection point: no event interface in its coclass, no sink, and
// the C++ control gets no event sink either.
template <class Traits>
class EventlessControlObject : public DualObject<Traits>, public ControlObjectCore {
    using Dual = DualObject<Traits>;

public:
    using ObjectType = typename Traits::ObjectType;

    EventlessControlObject() : ControlObjectCore(Traits::clsid, Traits::autoRedraw) {
        this->SetObject(std::make_shared<ObjectType>(Surface(), nullptr));
    }
    ~EventlessControlObject() override {
        // The control goes while its surface still exists.
        Shutdown();
        this->SetObject(nullptr);
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override { return Dual::QueryInterface(riid, ppv); }
    ULONG STDMETHODCALLTYPE AddRef() override { return Dual::AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return Dual::Release(); }

protected:
    void* QueryMore(REFIID riid) override { return QueryOle(riid); }
    void InitPropertiesOfObject() override { this->Object().InitProperties(); }
    void ReadPropertiesOfObject(PropertyBag& bag) override { this->Object().ReadProperties(bag); }
    void WritePropertiesOfObject(PropertyBag& bag) override { this->Object().WriteProperties(bag); }
};

}  // namespace tc::com
