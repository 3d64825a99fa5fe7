#include "text/cStringBuilder2.h"

#include "common/CaseFold.h"

int32_t cStringBuilder2::Length() const noexcept {
    return static_cast<int32_t>(m_sMain.size() + m_sBuffer.size());
}

std::u16string cStringBuilder2::ToString() const {
    std::u16string whole;
    whole.reserve(m_sMain.size() + m_sBuffer.size());
    whole += m_sMain;
    whole += m_sBuffer;
    return whole;
}

void cStringBuilder2::TheString(const std::u16string& value) {
    m_sMain = value;
    m_sBuffer.clear();
}

void cStringBuilder2::Append(const std::u16string& sThis) {
    // Short appends merge at a small buffer; long ones may grow it further first, so that the
    // long main text is copied rarely either way.
    const size_t mergeAt = sThis.size() <= kShortAppend ? kShortMergeAt : kLongMergeAt;
    if (m_sBuffer.size() < mergeAt) {
        m_sBuffer += sThis;
        return;
    }
    m_sMain += m_sBuffer;
    m_sMain += sThis;
    m_sBuffer.clear();
}

void cStringBuilder2::AppendWithNewLine(const std::u16string& sThis) {
    std::u16string line;
    line.reserve(sThis.size() + 2);
    line += sThis;
    line += u"\r\n";
    Append(line);
}

void cStringBuilder2::ReplaceString(const std::u16string& sFind, const std::u16string& sReplace,
                                    eCtlCompareMethod Compare) {
    const std::u16string whole = ToString();
    if (sFind.empty() || whole.size() < sFind.size()) {
        TheString(whole);
        return;
    }
    // Case folding maps one code unit to one, so positions in the folded copy are positions in
    // the original.
    const bool ignoreCase = Compare == ctl_TextCompare;
    const std::u16string haystack = ignoreCase ? FoldCase(whole) : std::u16string();
    const std::u16string needle = ignoreCase ? FoldCase(sFind) : std::u16string();
    const std::u16string& searchIn = ignoreCase ? haystack : whole;
    const std::u16string& searchFor = ignoreCase ? needle : sFind;

    std::u16string result;
    size_t from = 0;
    size_t hit = searchIn.find(searchFor, from);
    while (hit != std::u16string::npos) {
        result.append(whole, from, hit - from);
        result += sReplace;
        from = hit + searchFor.size();
        hit = searchIn.find(searchFor, from);
    }
    result.append(whole, from, std::u16string::npos);
    TheString(result);
}
