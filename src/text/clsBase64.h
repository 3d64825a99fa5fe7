// clsBase64: the internal Base64 codec behind the hex envelope, one per thread (ThreadBase64).
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

class clsBase64 {
public:
    // The decode table covers byte values 0 to 233 only; a text byte above it is an error.
    static constexpr size_t kDecodeTableSize = 234;
    static constexpr uint8_t kPad = 61;  // "="

    clsBase64();

    // Base64 of the string's UTF-16LE image (bUnicode) or of its ANSI bytes. Never raises: a
    // failure gives an empty string.
    std::u16string GetEncodedB64String(const std::u16string& sText, bool bUnicode) const;
    // The reverse: Base64 text to bytes, read as a UTF-16LE image (bUnicode) or as ANSI text.
    // Never raises: undecodable text gives an empty string.
    std::u16string GetDecodedB64String(const std::u16string& sText, bool bUnicode) const;

    void EncodeB64(std::span<const uint8_t> aIn, std::vector<uint8_t>& aOut) const;
    void AnsiStr2ByteArray(const std::u16string& sText, std::vector<uint8_t>& aOut) const;
    void ByteArray2AnsiStr(std::span<const uint8_t> aIn, std::u16string& sOut) const;
    void UnicodeStr2ByteArray(const std::u16string& sText, std::vector<uint8_t>& aOut) const;
    // An odd last byte has no code unit to go into and is dropped.
    void ByteArray2UnicodeStr(std::span<const uint8_t> aIn, std::u16string& sOut) const;
    // A copy with carriage return and line feed after every lLineLength bytes; a line length
    // below 1 raises the invalid procedure call error (5).
    void Span(int32_t lLineLength, std::span<const uint8_t> aIn, std::vector<uint8_t>& aOut) const;
    // Decodes Base64 bytes (ANSI text); carriage returns, line feeds, blanks and tabs are skipped.
    // Characters are not checked; a byte above 233 raises the subscript error (9) and leaves
    // aOut empty.
    void DecodeB64(std::span<const uint8_t> aIn, std::vector<uint8_t>& aOut) const;
    void DecodeB64(const std::u16string& sText, std::vector<uint8_t>& aOut) const;
    // The text without carriage returns, line feeds, blanks and tabs, as ANSI bytes.
    void Unspan(const std::u16string& sText, std::vector<uint8_t>& aOut) const;

    const uint8_t* EncodeTable() const noexcept { return m_aEncode; }
    const uint8_t* DecodeTable() const noexcept { return m_aDecode; }

private:
    // Decodes text free of line breaks and blanks; false (and aOut empty) when it met one.
    bool decodeClean(std::span<const uint8_t> text, std::vector<uint8_t>& aOut) const;

    uint8_t m_aEncode[64] = {};
    uint8_t m_aDecode[kDecodeTableSize] = {};
};

// The codec of the calling thread, created on its first use.
clsBase64& ThreadBase64();
