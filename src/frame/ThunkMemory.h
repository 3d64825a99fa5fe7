// ThunkMemory: executable blocks holding the per-instance machine-code thunks of the plumbing classes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/win32/WinApi.h"

// Blocks are never given back: a message or tick that arrives after its object is gone must
// still find valid code, so each block lives as long as the process.
class ThunkMemory {
public:
    // Two hexadecimal characters a byte; a patch mark ("xxxxx01x") is eight characters, four
    // bytes, and comes out as zeros.
    static std::vector<uint8_t> FromHex(std::string_view hex);
    // Committed read-write-execute memory holding the bytes; nullptr when the system refuses.
    static uint8_t* Allocate(const std::vector<uint8_t>& code) noexcept;
    // FromHex then Allocate; size receives the block's length (0 when refused).
    static uint8_t* AllocateHex(std::string_view hex, size_t& size);

    static void PatchAbsolute(uint8_t* block, size_t offset, uint32_t value) noexcept;
    // A call's target, relative to the end of the four-byte slot.
    static void PatchRelative(uint8_t* block, size_t offset, const void* target) noexcept;
    static uint32_t ReadSlot(const uint8_t* block, size_t offset) noexcept;

#if defined(_WIN64)
    // A procedure of four register arguments that calls target(a1, a2, a3, a4, data), where data
    // is a zeroed area of dataSize bytes inside the block (returned through *data). The block
    // carries its own unwind information so that the system can walk the stack through it.
    static uint8_t* MakeBoundCall(const void* target, size_t dataSize, void** data) noexcept;
    // Where the data area starts in a bound-call block.
    static constexpr size_t kBoundCallDataOffset = 64;

    // The typed form the plumbing classes use: data points at the zeroed Data inside the block,
    // size receives the whole block's length (0 when refused).
    template <class Data>
    static uint8_t* MakeBoundCall(const void* target, Data*& data, size_t& size) noexcept {
        void* area = nullptr;
        uint8_t* const block = MakeBoundCall(target, sizeof(Data), &area);
        data = static_cast<Data*>(area);
        size = block != nullptr ? kBoundCallDataOffset + sizeof(Data) : 0;
        return block;
    }
#endif
};
