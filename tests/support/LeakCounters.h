// Test-only counters of live GDI objects (through the test executable's gdi32 imports) and of the thread's windows.
#pragma once

#if defined(_WIN32)

#include <cstddef>

#include "platform/win32/WinApi.h"

namespace testsupport {

// GetGuiResources is a stub under Wine, so the test executable counts for itself: the first call
// patches the executable's import table entries of the gdi32 create and delete calls (and
// GetDC/ReleaseDC of user32), keeping the set of handles it saw created. A handle counts as live
// while GetObjectType still knows it, so objects that another module deletes (a picture object,
// for instance) drop out of the count. Only code linked into the test executable is seen.
// Call once at the start of a test (it installs the hooks) and again at the end.
size_t LiveGdiObjects();

// Device contexts obtained through GetDC/GetWindowDC/GetDCEx and not yet released.
size_t HeldWindowDCs();

// Windows of the calling thread, top-level, message-only and children, without the input-method
// window that the system adds to every thread with windows.
size_t ThreadWindowCount();

}  // namespace testsupport

#endif  // _WIN32
