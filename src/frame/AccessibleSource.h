// AccessibleSource: what a control tells screen readers about itself and its items.
#pragma once

#include <cstdint>
#include <vector>

#include "common/CtlTypes.h"
#include "platform/win32/WinApi.h"

// Child id 0 (CHILDID_SELF) is the control; its items, where it has any, are the simple
// elements 1..AccessibleItemCount(). SurfaceAccessible checks every id before it asks, so an
// implementation only ever sees valid ones. Roles and states are the ROLE_SYSTEM_* and
// STATE_SYSTEM_* values of the platform; an empty string means "none".
class AccessibleSource {
public:
    virtual ~AccessibleSource() = default;
    virtual int32_t AccessibleRole(int32_t child) const = 0;
    virtual CtlString AccessibleName(int32_t child) const = 0;
    virtual CtlString AccessibleDescription(int32_t child) const = 0;
    virtual CtlString AccessibleValue(int32_t child) const = 0;
    virtual int32_t AccessibleState(int32_t child) const = 0;
    virtual CtlString AccessibleDefaultAction(int32_t child) const = 0;
    // False when the element has no default action.
    virtual bool AccessibleDoDefaultAction(int32_t child) = 0;
    // "Alt+X", or empty.
    virtual CtlString AccessibleKeyboardShortcut(int32_t child) const = 0;

    virtual int32_t AccessibleItemCount() const { return 0; }
    // An item's rectangle in the window's client coordinates; false when it is not shown.
    virtual bool AccessibleItemBounds(int32_t /*child*/, RECT& /*bounds*/) const { return false; }
    // The item that has the focus inside the control, 0 when none.
    virtual int32_t AccessibleFocusedItem() const { return 0; }
    // The child ids of the selected items, in reading order: accSelection answers one as VT_I4,
    // several as an IEnumVARIANT of VT_I4, none as VT_EMPTY.
    virtual std::vector<int32_t> AccessibleSelection() const { return {}; }
    // SELFLAG_* on an element; false when the element cannot do it.
    virtual bool AccessibleSelect(int32_t /*child*/, int32_t /*flags*/) { return false; }
};
