#include "platform/PrivateProfile.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "common/CaseFold.h"
#include "platform/CodePage.h"
#include "platform/FileSystem.h"

// The published behaviour of the Windows profile calls, on a file read whole and written whole:
// comments start with ';', names and values are trimmed of blanks and tabs, lookups ignore case,
// lines before the first header form the section with the empty name, only the first of repeated
// sections is seen, a line without '=' is listed with its section but is no key. Writes change
// only the lines they concern, so the rest of the file keeps its layout.

namespace platform {
namespace {

bool isBlank(char16_t c) { return c == u' ' || c == u'\t'; }

std::u16string trimmed(const std::u16string& text) {
    size_t first = 0;
    size_t last = text.size();
    while (first < last && isBlank(text[first])) ++first;
    while (last > first && isBlank(text[last - 1])) --last;
    return text.substr(first, last - first);
}

enum class LineKind { Other, Blank, Comment, Section, Key };  // Other: text without '=' 

struct ParsedLine {
    LineKind kind = LineKind::Other;
    std::u16string name;   // the section name, or the key
    std::u16string value;  // the key's value, trimmed
};

ParsedLine parseLine(const std::u16string& line) {
    ParsedLine parsed;
    const std::u16string text = trimmed(line);
    if (text.empty()) {
        parsed.kind = LineKind::Blank;
    } else if (text[0] == u';') {
        parsed.kind = LineKind::Comment;
    } else if (text[0] == u'[') {
        parsed.kind = LineKind::Section;
        const size_t close = text.find(u']');
        parsed.name = trimmed(text.substr(1, close == std::u16string::npos ? std::u16string::npos : close - 1));
    } else {
        const size_t equals = text.find(u'=');
        if (equals == std::u16string::npos) {
            parsed.kind = LineKind::Other;
            parsed.name = text;
        } else {
            parsed.kind = LineKind::Key;
            parsed.name = trimmed(text.substr(0, equals));
            parsed.value = trimmed(text.substr(equals + 1));
        }
    }
    return parsed;
}

// One pair of matching quotes around a value is taken off, as the platform does.
std::u16string unquoted(const std::u16string& value) {
    if (value.size() >= 2 && (value[0] == u'"' || value[0] == u'\'') && value.back() == value[0]) {
        return value.substr(1, value.size() - 2);
    }
    return value;
}

struct ProfileText {
    bool exists = false;
    bool unicode = false;  // began with the UTF-16LE mark
    std::vector<std::u16string> lines;
};

std::vector<std::u16string> splitLines(const std::u16string& text) {
    std::vector<std::u16string> lines;
    size_t start = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'\r' || text[i] == u'\n') {
            lines.push_back(text.substr(start, i - start));
            if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
            start = i + 1;
        }
    }
    if (start < text.size()) lines.push_back(text.substr(start));
    return lines;
}

ProfileText readProfile(const std::u16string& path) {
    ProfileText profile;
    File file = File::Open(path, kGenericRead, kShareRead | kShareWrite, kOpenExisting, kAttrNormal);
    if (!file.IsOpen()) return profile;
    const int64_t size = file.Size();
    if (size < 0) return profile;
    std::vector<uint8_t> bytes(static_cast<size_t>(size));
    size_t done = 0;
    while (done < bytes.size()) {
        uint32_t transferred = 0;
        const uint32_t chunk = static_cast<uint32_t>(std::min<size_t>(bytes.size() - done, 1u << 30));
        if (!file.Read(bytes.data() + done, chunk, transferred) || transferred == 0) break;
        done += transferred;
    }
    bytes.resize(done);
    profile.exists = true;
    std::u16string text;
    if (bytes.size() >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE) {
        profile.unicode = true;
        text.resize((bytes.size() - 2) / 2);
        for (size_t i = 0; i < text.size(); ++i) {
            text[i] = static_cast<char16_t>(bytes[2 + 2 * i] | (bytes[3 + 2 * i] << 8));
        }
    } else {
        text = AnsiToWide(bytes);
    }
    profile.lines = splitLines(text);
    return profile;
}

bool writeProfile(const std::u16string& path, const ProfileText& profile) {
    std::u16string text;
    for (const std::u16string& line : profile.lines) {
        text += line;
        text += u"\r\n";
    }
    std::vector<uint8_t> bytes;
    if (profile.unicode) {
        bytes.reserve(2 + text.size() * 2);
        bytes.push_back(0xFF);
        bytes.push_back(0xFE);
        for (const char16_t c : text) {
            bytes.push_back(static_cast<uint8_t>(c & 0xFF));
            bytes.push_back(static_cast<uint8_t>(c >> 8));
        }
    } else {
        bytes = WideToAnsi(text);
    }
    File file = File::Open(path, kGenericWrite, kShareRead, kCreateAlways, kAttrNormal);
    if (!file.IsOpen()) return false;
    size_t done = 0;
    while (done < bytes.size()) {
        uint32_t transferred = 0;
        const uint32_t chunk = static_cast<uint32_t>(std::min<size_t>(bytes.size() - done, 1u << 30));
        if (!file.Write(bytes.data() + done, chunk, transferred) || transferred == 0) return false;
        done += transferred;
    }
    return file.Close();
}

// Where a section's lines lie: from its header to the line before the next header.
constexpr size_t kNoHeader = static_cast<size_t>(-1);

struct SectionRange {
    size_t header = 0;  // kNoHeader for the lines before the first header
    size_t end = 0;
};

// Every section of that name, in file order; the lines before the first header count as a
// section with the empty name that has no header line of its own.
std::vector<SectionRange> findSections(const std::vector<std::u16string>& lines, const std::u16string& name) {
    std::vector<SectionRange> found;
    const std::u16string wanted = trimmed(name);
    bool inside = wanted.empty();
    if (inside) found.push_back(SectionRange{kNoHeader, lines.size()});
    for (size_t i = 0; i < lines.size(); ++i) {
        const ParsedLine parsed = parseLine(lines[i]);
        if (parsed.kind != LineKind::Section) continue;
        if (inside) found.back().end = i;
        inside = EqualsIgnoreCase(parsed.name, wanted);
        if (inside) found.push_back(SectionRange{i, lines.size()});
    }
    return found;
}

size_t firstLine(const SectionRange& range) { return range.header == kNoHeader ? 0 : range.header + 1; }

// The line index of the key; only the first section of a name is looked at.
bool findKey(const std::vector<std::u16string>& lines, const std::vector<SectionRange>& sections,
             const std::u16string& key, size_t& index, ParsedLine& parsed) {
    const std::u16string wanted = trimmed(key);
    if (sections.empty()) return false;
    {
        const SectionRange& range = sections.front();
        for (size_t i = firstLine(range); i < range.end; ++i) {
            ParsedLine line = parseLine(lines[i]);
            if (line.kind == LineKind::Key && EqualsIgnoreCase(line.name, wanted)) {
                index = i;
                parsed = std::move(line);
                return true;
            }
        }
    }
    return false;
}

// What a list call copies into a buffer of bufferChars: entries each ending in 0, then one more
// 0; when that doesn't fit, the text is cut to leave room for the two final zeros.
std::u16string fitList(std::u16string list, size_t bufferChars) {
    if (list.size() + 1 <= bufferChars) return list;
    if (bufferChars < 2) return {};
    list.resize(bufferChars - 2);
    return list;
}

std::u16string fitValue(std::u16string value, size_t bufferChars) {
    if (bufferChars == 0) return {};
    if (value.size() > bufferChars - 1) value.resize(bufferChars - 1);
    return value;
}

}  // namespace

std::u16string ProfileGetString(const std::u16string& path, const std::u16string& section, const std::u16string& key,
                                const std::u16string& defaultValue, size_t bufferChars) {
    const ProfileText profile = readProfile(path);
    size_t index = 0;
    ParsedLine parsed;
    if (profile.exists && findKey(profile.lines, findSections(profile.lines, section), key, index, parsed)) {
        return fitValue(unquoted(parsed.value), bufferChars);
    }
    std::u16string fallback = defaultValue;
    while (!fallback.empty() && fallback.back() == u' ') fallback.pop_back();
    return fitValue(std::move(fallback), bufferChars);
}

std::u16string ProfileGetKeys(const std::u16string& path, const std::u16string& section, size_t bufferChars) {
    const ProfileText profile = readProfile(path);
    const std::vector<SectionRange> sections = findSections(profile.lines, section);
    std::u16string list;
    if (!sections.empty()) {
        std::vector<std::u16string> seen;
        for (size_t i = firstLine(sections.front()); i < sections.front().end; ++i) {
            const ParsedLine parsed = parseLine(profile.lines[i]);
            if (parsed.kind != LineKind::Key) continue;
            const bool repeated = std::any_of(seen.begin(), seen.end(), [&parsed](const std::u16string& name) {
                return EqualsIgnoreCase(name, parsed.name);
            });
            if (repeated) continue;
            seen.push_back(parsed.name);
            list += parsed.name;
            list += u'\0';
        }
    }
    return fitList(std::move(list), bufferChars);
}

std::u16string ProfileGetSection(const std::u16string& path, const std::u16string& section, size_t bufferChars) {
    const ProfileText profile = readProfile(path);
    const std::vector<SectionRange> sections = findSections(profile.lines, section);
    std::u16string list;
    if (!sections.empty()) {
        for (size_t i = firstLine(sections.front()); i < sections.front().end; ++i) {
            const ParsedLine parsed = parseLine(profile.lines[i]);
            if (parsed.kind == LineKind::Key) {
                list += parsed.name + u"=" + parsed.value;
            } else if (parsed.kind == LineKind::Other) {
                list += parsed.name;
            } else {
                continue;
            }
            list += u'\0';
        }
    }
    return fitList(std::move(list), bufferChars);
}

std::u16string ProfileGetSectionNames(const std::u16string& path, size_t bufferChars) {
    const ProfileText profile = readProfile(path);
    std::u16string list;
    // Every header, a repeated one included, as the platform lists them.
    for (const std::u16string& line : profile.lines) {
        const ParsedLine parsed = parseLine(line);
        if (parsed.kind != LineKind::Section) continue;
        list += parsed.name;
        list += u'\0';
    }
    return fitList(std::move(list), bufferChars);
}

bool ProfileWriteString(const std::u16string& path, const std::u16string& section,
                        const std::optional<std::u16string>& key, const std::optional<std::u16string>& value) {
    ProfileText profile = readProfile(path);
    const std::vector<SectionRange> sections = findSections(profile.lines, section);
    if (!key) {
        if (sections.empty()) return true;
        // Every section of the name goes, back to front so the earlier ranges keep their lines.
        for (auto range = sections.rbegin(); range != sections.rend(); ++range) {
            const size_t from = range->header == kNoHeader ? 0 : range->header;
            profile.lines.erase(profile.lines.begin() + static_cast<std::ptrdiff_t>(from),
                                profile.lines.begin() + static_cast<std::ptrdiff_t>(range->end));
        }
        return writeProfile(path, profile);
    }
    size_t index = 0;
    ParsedLine parsed;
    const bool found = findKey(profile.lines, sections, *key, index, parsed);
    if (!value) {
        if (!found) return true;
        profile.lines.erase(profile.lines.begin() + static_cast<std::ptrdiff_t>(index));
        return writeProfile(path, profile);
    }
    // A key that is there keeps the spelling the file gave it.
    const std::u16string line = (found ? parsed.name : trimmed(*key)) + u"=" + *value;
    if (found) {
        profile.lines[index] = line;
    } else if (!sections.empty()) {
        // Behind the section's last line that isn't blank, so blank separators stay between sections.
        const SectionRange& range = sections.front();
        size_t at = range.end;
        while (at > firstLine(range) && parseLine(profile.lines[at - 1]).kind == LineKind::Blank) --at;
        profile.lines.insert(profile.lines.begin() + static_cast<std::ptrdiff_t>(at), line);
    } else {
        profile.lines.push_back(u"[" + section + u"]");
        profile.lines.push_back(line);
    }
    return writeProfile(path, profile);
}

}  // namespace platform
