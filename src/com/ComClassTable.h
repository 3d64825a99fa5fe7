// The table of every class in the type library, which the class factory and the registration walk.
#pragma once

#include <span>

#include "com/ComPrerequisites.h"

namespace tc::com {

struct ComClassEntry {
    // The class name; its ProgID is "TarnwickControls30." followed by it.
    const wchar_t* name;
    GUID clsid;
    GUID iid;
    // Creatable by ProgID; the others are only handed out by other objects.
    bool creatable;
    // An ActiveX control (registered with the control keys).
    bool control;
    HRESULT (*create)(IUnknown* outer, REFIID riid, void** ppv);
};

// Generated, in the order of the descriptions.
std::span<const ComClassEntry* const> ComClasses();
const ComClassEntry* FindClass(const GUID& clsid) noexcept;

}  // namespace tc::com
