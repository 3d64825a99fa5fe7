// KeyEvents: the key events a surface hands to its control and a focusable control to its host.
#pragma once

#include <cstdint>

class KeyEvents {
public:
    virtual ~KeyEvents() = default;
    virtual void KeyDown(int16_t& /*KeyCode*/, int16_t& /*Shift*/) {}
    virtual void KeyPress(int16_t& /*KeyAscii*/) {}
    virtual void KeyUp(int16_t& /*KeyCode*/, int16_t& /*Shift*/) {}
};
