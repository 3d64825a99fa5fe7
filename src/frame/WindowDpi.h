// WindowDpi: the DPI a window is shown at, and sizes scaled from 96 DPI to it.
#pragma once

#include <cstdint>

#include "platform/win32/WinApi.h"

// The DPI every self-chosen size of the library is designed at.
constexpr int32_t kDesignDpi = 96;

// GetDpiForWindow where user32 has it (looked up at run time), else the screen DC's LOGPIXELSY;
// 96 when neither answers.
int32_t WindowDpi(HWND hwnd) noexcept;

// `pixels` at 96 DPI, scaled to `dpi` and rounded half away from zero.
int32_t ScaleToDpi(int32_t pixels, int32_t dpi) noexcept;

// Declares per-monitor v2 awareness for the process where the system offers it. False where it
// does not (older systems; Wine 8 refuses the per-monitor contexts).
bool DeclarePerMonitorDpiAwareness() noexcept;
