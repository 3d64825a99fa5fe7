#include "frame/CTimer.h"

#include "common/CtlError.h"
#include "frame/MTimer.h"

CTimer::~CTimer() {
    try {
        Interval(0);
    } catch (...) {
        // Stopping raises nothing; nothing may leave a destructor anyway.
    }
}

void CTimer::Interval(int32_t value) {
    if (value >= 1) {
        if (value == m_lInterval) return;
        if (m_lInterval != 0) MTimer::DestroyTimer(*this);
        m_lInterval = value;
        if (!MTimer::CreateTimer(*this)) throw CtlError::Plumbing(13652, u"Can't create system timer");
        return;
    }
    if (m_lInterval > 0) {
        m_lInterval = 0;
        MTimer::DestroyTimer(*this);
    }
}

void CTimer::PulseTimer() {
    if (m_sink != nullptr) m_sink->ThatTime();
}
