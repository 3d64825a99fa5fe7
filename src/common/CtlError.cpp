#include "common/CtlError.h"

#include "common/Utf8Convert.h"

#include <cstdio>
#include <utility>

CtlError::CtlError(std::u16string source, std::u16string description, int32_t number)
    : m_lNumber(number), m_sSource(std::move(source)), m_sDescription(std::move(description)) {
    char hex[16] = {};
    std::snprintf(hex, sizeof hex, "0x%08X", static_cast<uint32_t>(m_lNumber));
    m_sWhat = Utf16ToUtf8(m_sSource) + ": " + Utf16ToUtf8(m_sDescription) + " (" + hex + ")";
}

CtlError CtlError::Plumbing(int32_t number, std::u16string description) {
    return CtlError(u"TarnwickControls30.WindowProc", std::move(description), number | kPlumbingBase);
}
