// IPAOHook: installs, activates and removes the key hook of a control, and offers it to C++ message loops.
#pragma once

#include "frame/IPAOHookStruct.h"

namespace IPAOHook {

// {00000117-0000-0000-C000-000000000046}, built from its number 279 and the bytes 192 and 70.
inline constexpr GUID kIID_IOleInPlaceActiveObject = {279, 0, 0, {192, 0, 0, 0, 0, 0, 0, 70}};

// Run mode only, before the native window is made. original may be null for a control hosted
// without an OLE container; its keys then reach the filter through PreTranslateMessage only.
void InstallHook(IPAOHookStruct& record, IOleInPlaceActiveObject* original, IPAOHookControl* control) noexcept;
// Before the native window goes: a host that still holds the record then finds nothing to call.
void RemoveHook(IPAOHookStruct& record) noexcept;
// When the native window gets the focus: makes the record the active object of the frame and
// document windows of the control's site. Every failed step is skipped.
void ActivateHook(IPAOHookStruct& record, IOleObject* control, HWND controlWindow) noexcept;
// The record as the interface pointer that is handed to the host.
IOleInPlaceActiveObject* AsInterface(IPAOHookStruct& record) noexcept;

// For C++ hosts without an OLE container: call for every message before IsDialogMessage and
// TranslateMessage, and skip them and DispatchMessage when it returns true. It gives keys to
// the filter of the hooked control whose window holds the message's window, as an in-place
// host does through TranslateAccelerator.
bool PreTranslateMessage(const MSG& msg) noexcept;

}  // namespace IPAOHook
