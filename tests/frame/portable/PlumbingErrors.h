// Test helpers for the plumbing's errors: what a call raises, and the plumbing numbers.
#pragma once

#include <cstdint>
#include <optional>

#include "common/CtlError.h"

namespace plumbing_test {

inline int32_t PlumbingNumber(int32_t n) { return static_cast<int32_t>(static_cast<uint32_t>(n) | 0x80040000u); }

// The CtlError the call raises, if any.
template <class Call>
std::optional<CtlError> ErrorOf(Call&& call) {
    try {
        call();
    } catch (const CtlError& error) {
        return error;
    }
    return std::nullopt;
}

// The number of the CtlError the call raises; 0 when it raises none.
template <class Call>
int32_t ErrorNumberOf(Call&& call) {
    const std::optional<CtlError> error = ErrorOf(call);
    return error ? error->Number() : 0;
}

}  // namespace plumbing_test
