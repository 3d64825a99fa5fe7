#include "frame/ThunkMemory.h"

#include <cstring>

namespace {

int hexValue(char c) noexcept {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

}  // namespace

std::vector<uint8_t> ThunkMemory::FromHex(std::string_view hex) {
    std::vector<uint8_t> bytes;
    bytes.reserve(hex.size() / 2);
    for (size_t i = 0; i + 1 < hex.size(); i += 2) {
        const int high = hexValue(hex[i]);
        const int low = hexValue(hex[i + 1]);
        // Patch marks are not hexadecimal; they read as 0 until patched.
        bytes.push_back(high < 0 || low < 0 ? 0 : static_cast<uint8_t>(high * 16 + low));
    }
    return bytes;
}

uint8_t* ThunkMemory::Allocate(const std::vector<uint8_t>& code) noexcept {
    void* const block = ::VirtualAlloc(nullptr, code.size(), MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE);
    if (block == nullptr) return nullptr;
    std::memcpy(block, code.data(), code.size());
    return static_cast<uint8_t*>(block);
}

void ThunkMemory::PatchAbsolute(uint8_t* block, size_t offset, uint32_t value) noexcept {
    std::memcpy(block + offset, &value, sizeof value);
}

void ThunkMemory::PatchRelative(uint8_t* block, size_t offset, const void* target) noexcept {
    const uintptr_t slotEnd = reinterpret_cast<uintptr_t>(block + offset) + 4;
    PatchAbsolute(block, offset, static_cast<uint32_t>(reinterpret_cast<uintptr_t>(target) - slotEnd));
}

uint32_t ThunkMemory::ReadSlot(const uint8_t* block, size_t offset) noexcept {
    uint32_t value = 0;
    std::memcpy(&value, block + offset, sizeof value);
    return value;
}

uint8_t* ThunkMemory::AllocateHex(std::string_view hex, size_t& size) {
    const std::vector<uint8_t> code = FromHex(hex);
    uint8_t* const block = Allocate(code);
    size = block != nullptr ? code.size() : 0;
    return block;
}

#if defined(_WIN64)
uint8_t* ThunkMemory::MakeBoundCall(const void* target, size_t dataSize, void** data) noexcept {
    // sub rsp,38h / mov rax,data / mov [rsp+20h],rax / mov rax,target / call rax / add rsp,38h / ret
    // The 38h keeps the stack 16-byte aligned at the call and leaves room for the home area and
    // the fifth argument.
    constexpr size_t kCodeSize = 36;
    constexpr size_t kUnwindOffset = 40;
    constexpr size_t kFunctionOffset = 48;
    constexpr size_t kDataOffset = kBoundCallDataOffset;
    std::vector<uint8_t> code(kDataOffset + dataSize, 0);
    const uint8_t prologue[] = {0x48, 0x83, 0xEC, 0x38, 0x48, 0xB8};
    std::memcpy(code.data(), prologue, sizeof prologue);
    // code[6..13]: the data address, filled once the block's address is known
    const uint8_t store[] = {0x48, 0x89, 0x44, 0x24, 0x20, 0x48, 0xB8};
    std::memcpy(code.data() + 14, store, sizeof store);
    const uint64_t targetAddress = reinterpret_cast<uintptr_t>(target);
    std::memcpy(code.data() + 21, &targetAddress, sizeof targetAddress);
    const uint8_t epilogue[] = {0xFF, 0xD0, 0x48, 0x83, 0xC4, 0x38, 0xC3};
    std::memcpy(code.data() + 29, epilogue, sizeof epilogue);
    // Unwind information: version 1, a 4-byte prologue, one code: at offset 4 a small
    // allocation of (6 + 1) * 8 = 38h bytes.
    const uint8_t unwind[] = {0x01, 0x04, 0x01, 0x00, 0x04, 0x62, 0x00, 0x00};
    std::memcpy(code.data() + kUnwindOffset, unwind, sizeof unwind);
    const RUNTIME_FUNCTION function{0, kCodeSize, kUnwindOffset};
    std::memcpy(code.data() + kFunctionOffset, &function, sizeof function);

    uint8_t* const block = Allocate(code);
    if (block == nullptr) return nullptr;
    const uint64_t dataAddress = reinterpret_cast<uintptr_t>(block + kDataOffset);
    std::memcpy(block + 6, &dataAddress, sizeof dataAddress);
    auto* const table = reinterpret_cast<RUNTIME_FUNCTION*>(block + kFunctionOffset);
    ::RtlAddFunctionTable(table, 1, reinterpret_cast<DWORD64>(block));
    ::FlushInstructionCache(::GetCurrentProcess(), block, code.size());
    *data = block + kDataOffset;
    return block;
}
#endif
