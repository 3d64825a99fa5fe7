// UTF-16 <-> UTF-8 for host interfaces: file names, diagnostics and the system's byte strings.
#pragma once

#include <string>

// How a lone surrogate is written. Replace gives U+FFFD (text meant to be read); Keep writes its
// three-byte form so that a name with one still reaches the system and comes back unchanged.
enum class LoneSurrogates { Replace, Keep };

std::string Utf16ToUtf8(const std::u16string& text, LoneSurrogates lone = LoneSurrogates::Replace);

// Each byte that starts no valid sequence (stray continuation, overlong form, truncated sequence,
// value above U+10FFFF) becomes U+FFFD and decoding resumes at the next byte. The three-byte form
// of a surrogate is accepted, so the Keep encoding round-trips.
std::u16string Utf8ToUtf16(const std::string& bytes);
