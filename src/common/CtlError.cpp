#include "common/CtlError.h"

#include <cstdio>
#include <utility>

namespace {

// A small UTF-16 to UTF-8 encoder for the diagnostic text only; lone surrogates become U+FFFD.
std::string toUtf8ForDiagnostics(const std::u16string& text) {
    std::string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        uint32_t cp = text[i];
        if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
            cp = 0x10000 + ((cp - 0xD800) << 10) + (text[i + 1] - 0xDC00);
            ++i;
        } else if (cp >= 0xD800 && cp <= 0xDFFF) {
            cp = 0xFFFD;
        }
        if (cp < 0x80) {
            out += static_cast<char>(cp);
        } else if (cp < 0x800) {
            out += static_cast<char>(0xC0 | (cp >> 6));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        } else if (cp < 0x10000) {
            out += static_cast<char>(0xE0 | (cp >> 12));
            out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (cp >> 18));
            out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        }
    }
    return out;
}

}  // namespace

CtlError::CtlError(std::u16string source, std::u16string description, int32_t number)
    : m_lNumber(number), m_sSource(std::move(source)), m_sDescription(std::move(description)) {
    char hex[16] = {};
    std::snprintf(hex, sizeof hex, "0x%08X", static_cast<uint32_t>(m_lNumber));
    m_sWhat = toUtf8ForDiagnostics(m_sSource) + ": " + toUtf8ForDiagnostics(m_sDescription) + " (" + hex + ")";
}

CtlError CtlError::Plumbing(int32_t number, std::u16string description) {
    return CtlError(u"TarnwickControls30.WindowProc", std::move(description), number | kPlumbingBase);
}
