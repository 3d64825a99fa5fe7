// The Windows and OLE declarations every file of the COM layer needs, from one place.
#pragma once

#include "platform/win32/WinApi.h"

#include <ocidl.h>
#include <oleauto.h>
#include <olectl.h>
