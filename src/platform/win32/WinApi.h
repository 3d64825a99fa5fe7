// The one way Win32 headers enter the library: wide API, no min/max macros, lean headers.
#pragma once

#ifndef UNICODE
#define UNICODE
#endif
#ifndef _UNICODE
#define _UNICODE
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif

#include <windows.h>

#include <string>

// The library string at a wide call: char16_t and wchar_t are both 16-bit on Windows.
inline const wchar_t* AsWide(const std::u16string& text) noexcept {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}
inline std::u16string FromWide(const wchar_t* text) {
    return text ? std::u16string(reinterpret_cast<const char16_t*>(text)) : std::u16string();
}
inline std::u16string FromWide(const wchar_t* text, size_t length) {
    return std::u16string(reinterpret_cast<const char16_t*>(text), length);
}
