// modcUniWindow: the window classes registered through cUniWindow and their default procedure.
#pragma once

#include "common/CtlTypes.h"
#include "platform/win32/WinApi.h"

namespace modcUniWindow {

// The module that holds the library's code: the instance handle of its classes and windows.
HINSTANCE LibraryInstance() noexcept;
// A window of a library class has no behaviour of its own: it is given by subclassing.
LRESULT CALLBACK DefaultWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Names stay listed after unregistration, deliberately: see cUniWindow::WindowClassUnregister.
bool IsRegistered(const CtlString& name);
void AddRegistered(const CtlString& name);

}  // namespace modcUniWindow
