// LateBoundControl: the by-name face of a C++ control, for hosts that reach their controls the way
// late binding does (a C++ form's controls calling each other, as radios of one group do).
#pragma once

#include <vector>

#include "common/CtlTypes.h"
#include "frame/CtlVariant.h"

class LateBoundControl {
public:
    virtual ~LateBoundControl() = default;
    // The class name, as the runtime's TypeName gives it ("ctlUniRadioXP").
    virtual CtlString TypeName() const = 0;
    // Calls a method by name with its arguments in call order. A member the control lacks throws
    // CtlError 438, as a late-bound call does.
    virtual CtlVariant CallByName(const CtlString& member, const std::vector<CtlVariant>& args) = 0;
};
