// ClickArbiter: decides when a check or radio acts on Click (left button, Space, Enter, access key).
#pragma once

#include <cstdint>
#include <functional>

// The surface raises Click for every mouse button; a check box must toggle only for the left
// one, and for the keys that stand in for it. The control routes its handlers through here.
class ClickArbiter {
public:
    // MouseDown: whether the next Click comes from the left button.
    void MouseDown(int16_t Button) noexcept { m_bClickEnabled = (Button & 1) != 0; }
    // The Click handler acts only when this is true.
    bool ClickEnabled() const noexcept { return m_bClickEnabled; }
    // Raises KeyPress first; a handler may change the code. Space or Enter afterwards click.
    void KeyPress(int16_t& KeyAscii, const std::function<void(int16_t&)>& raiseKeyPress,
                  const std::function<void()>& clickHandler);
    void AccessKeyPress(bool bSurfaceEnabled, const std::function<void()>& clickHandler);
    // A double click acts twice: the Click handler once more, then DblClick.
    void DblClick(const std::function<void()>& clickHandler, const std::function<void()>& raiseDblClick);

private:
    bool m_bClickEnabled = false;
};
