// cStringBuilder2: the text accumulator of parsers and writers, with its two merge thresholds.
#pragma once

#include <cstdint>
#include <string>

// How ReplaceString matches: code unit by code unit, or ignoring case.
enum eCtlCompareMethod : int32_t {
    ctl_BinaryCompare = 0,
    ctl_TextCompare = 1,
};

class cStringBuilder2 {
public:
    // Short appends merge into the main text once the buffer holds this many code units.
    static constexpr size_t kShortMergeAt = 1024;
    // Long appends (above kShortAppend code units) are let grow the buffer up to this before merging.
    static constexpr size_t kLongMergeAt = 8192;
    static constexpr size_t kShortAppend = 1024;

    int32_t Length() const noexcept;
    std::u16string ToString() const;
    void TheString(const std::u16string& value);
    void Append(const std::u16string& sThis);
    void AppendWithNewLine(const std::u16string& sThis);
    void ReplaceString(const std::u16string& sFind, const std::u16string& sReplace,
                       eCtlCompareMethod Compare = ctl_BinaryCompare);

    // Read access to the two parts, for callers that want to see where the text lies.
    const std::u16string& MainPart() const noexcept { return m_sMain; }
    const std::u16string& BufferPart() const noexcept { return m_sBuffer; }

private:
    std::u16string m_sMain;
    std::u16string m_sBuffer;
};
