// OleSession: OLE initialised on the test's thread for the session's lifetime.
#pragma once

#include <gtest/gtest.h>

#include "platform/win32/WinApi.h"

#include <ole2.h>

namespace testsupport {

class OleSession {
public:
    OleSession() : m_hr(::OleInitialize(nullptr)) { EXPECT_TRUE(SUCCEEDED(m_hr)) << std::hex << m_hr; }
    // A failed initialisation must not be balanced by a release: it would undo someone else's.
    ~OleSession() {
        if (SUCCEEDED(m_hr)) ::OleUninitialize();
    }
    // Pairs one initialisation with one release.
    OleSession(const OleSession&) = delete;
    OleSession& operator=(const OleSession&) = delete;

private:
    HRESULT m_hr;
};

}  // namespace testsupport
