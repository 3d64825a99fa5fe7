// RaisedBy and RaisedNumber: what a call raised, as one comparable value, for tables of error cases.
#pragma once

#include <cstdint>
#include <string>

#include "common/CtlError.h"
#include "support/TempDir.h"

// "source|description|number" of the CtlError the call raised; "none" when it returned.
template <class F>
std::string RaisedBy(F&& call) {
    try {
        call();
    } catch (const CtlError& e) {
        return testsupport::Utf8(e.Source()) + "|" + testsupport::Utf8(e.Description()) + "|" +
               std::to_string(e.Number());
    }
    return "none";
}

// The error number alone; 0 when the call returned.
template <class F>
int32_t RaisedNumber(F&& call) {
    try {
        call();
    } catch (const CtlError& e) {
        return e.Number();
    }
    return 0;
}
