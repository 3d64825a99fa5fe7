// OleSession: OLE initialised on the test's thread for the session's lifetime.
#pragma once

#include <gtest/gtest.h>

#include "platform/win32/WinApi.h"

#include <ole2.h>

namespace testsupport {

class OleSession {
public:
    OleSession() { EXPECT_TRUE(SUCCEEDED(::OleInitialize(nullptr))); }
    ~OleSession() { ::OleUninitialize(); }
    // Pairs one initialisation with one release.
    OleSession(const OleSession&) = delete;
    OleSession& operator=(const OleSession&) = delete;
};

}  // namespace testsupport
