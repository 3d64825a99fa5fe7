// ControlEvents and ControlKeyEvents: the events every control with a surface raises to its host.
#pragma once

#include "frame/KeyEvents.h"
#include "frame/PointerEvents.h"

// A host implements what it needs; the rest do nothing.
class ControlEvents : public PointerEvents {};

// The key events of controls that can take the focus.
class ControlKeyEvents : public ControlEvents, public KeyEvents {};
