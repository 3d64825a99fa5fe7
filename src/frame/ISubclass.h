// ISubclass and EMsgResponse3: how a client of the subclassing engine receives a window's messages.
#pragma once

#include <cstdint>

#include "platform/win32/WinApi.h"

enum EMsgResponse3 : int32_t {
    emr3AttachBefore = 9,
    emr3AttachAfter = 10,
    emr3AttachInsteadOf = 11,
};

// Held by the engine as a raw pointer: a client detaches every message before it dies.
class ISubclass {
public:
    // bBefore: the previous procedure has not run yet. bStopMsg starts false for each client.
    // lReturn is shared by all clients of the message and becomes the window procedure's result.
    virtual void WindowProc(bool bBefore, bool& bStopMsg, LRESULT& lReturn, HWND Hwnd, UINT uMsg, WPARAM wParam,
                            LPARAM lParam) = 0;

protected:
    ~ISubclass() = default;
};
