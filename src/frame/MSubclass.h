// MSubclass: the shared subclassing engine; one window procedure serves every hooked window.
#pragma once

#include "frame/ISubclass.h"
#include "frame/portable/SubclassTable.h"

namespace MSubclass {

// Raises CtlError: 13083 no window, 13084 another process's window, 13082 the same client twice on
// one message, 13081 the procedure could not be replaced, 5 a failed table write. A failed call
// leaves everything as it was.
void AttachClient(ISubclass* client, HWND window, UINT message, EMsgResponse3 response);
// Silent on every failure, including a window that is gone.
void DetachClient(ISubclass* client, HWND window, UINT message) noexcept;
// The previous procedure's answer, or 0 when the engine does not hook the window.
LRESULT CallPreviousWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

// The calling thread's table, for diagnostics and tests.
const plumbing::SubclassTable& Table() noexcept;

}  // namespace MSubclass
