#include "frame/ClickArbiter.h"

void ClickArbiter::KeyPress(int16_t& KeyAscii, const std::function<void(int16_t&)>& raiseKeyPress,
                            const std::function<void()>& clickHandler) {
    if (raiseKeyPress) raiseKeyPress(KeyAscii);
    if (KeyAscii == 32 || KeyAscii == 13) {
        m_bClickEnabled = true;
        if (clickHandler) clickHandler();
    }
}

void ClickArbiter::AccessKeyPress(bool bSurfaceEnabled, const std::function<void()>& clickHandler) {
    if (!bSurfaceEnabled) return;
    m_bClickEnabled = true;
    if (clickHandler) clickHandler();
}

void ClickArbiter::DblClick(const std::function<void()>& clickHandler, const std::function<void()>& raiseDblClick) {
    if (m_bClickEnabled && clickHandler) clickHandler();
    if (raiseDblClick) raiseDblClick();
}
