// Adapter support of the graphics and window-plumbing classes: owners reached through their fixed
// interfaces, pictures between the platform object and the image routines, and a host form driven
// through its dispatch members.
#pragma once

#include <memory>

#include "com/ComConvert.h"
#include "common/CtlTypes.h"
#include "graphics/modCommonDraw.h"

class StdPicture;
class clsCollection;

namespace tc::com {

// The owner's interface as the thunk calls it. Held unowned, as the hook holds it: the host keeps
// the owner alive while the hook runs. Null for no owner; an object without it is a type mismatch.
template <class Interface>
Interface* UnownedOwner(IDispatch* owner, const GUID& iid) {
    if (!owner) return nullptr;
    Interface* found = nullptr;
    if (FAILED(owner->QueryInterface(iid, reinterpret_cast<void**>(&found))) || !found) {
        throw ComFailure{DISP_E_TYPEMISMATCH};
    }
    found->Release();
    return found;
}

// An optional handle given as a variant: absent or empty is 0; anything else is taken as a number.
template <class Handle>
Handle HandleOf(const VARIANT& value) {
    if (V_VT(&value) == VT_EMPTY || V_VT(&value) == VT_ERROR) return Handle{};
    VARIANT number;
    ::VariantInit(&number);
    const HRESULT hr = ::VariantChangeType(&number, const_cast<VARIANT*>(&value), 0, VT_I8);
    if (FAILED(hr)) throw ComFailure{hr};
    return HandleValue{static_cast<LONG_PTR>(number.llVal)};
}

// The handle and type that the image routines draw from; empty for no picture.
CtlPictureRef PictureRefOf(const std::shared_ptr<StdPicture>& picture);
// GetUnicodeDroppedFiles on a drag's data object, as a new collection of paths; the object's own
// Files list (read through dispatch, when it has one) is the fallback.
std::shared_ptr<clsCollection> DroppedFilesCollection(IUnknown* data);
// ApplyFontToForm on a host form: its Font, its Controls (enumerated as For Each does) and theirs.
void ApplyFontToDispatchForm(IDispatch* form, const CtlString& sFontName);

}  // namespace tc::com
