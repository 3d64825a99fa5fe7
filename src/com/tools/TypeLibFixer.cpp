// Build tool: finishes a type library that widl compiled, where widl cannot write what we need.
//
// - Enumeration member names with blanks: the IDL carries each blank as "_" and the generator lists
//   the published names. The tool rewrites them in the name table (same length, so no offset
//   moves), stores the hash the platform computes for the new name, and moves the entry to the hash
//   chain that hash selects. The hash must be the platform's own (LHashValOfNameSysA): hosts look
//   names up by it, so the tool runs as a Windows program.
// - 8-byte default values (a handle on x64, a currency): widl leaves them unwritten, and the
//   platform then cannot read the whole member. The tool appends each value to the custom data
//   segment and points the parameter's default at it.
//
// Usage: TypeLibFixer IN.tlb NAMES.txt DEFAULTS.txt OUT.tlb
// NAMES.txt:    "placeholder<TAB>published name" per line.
// DEFAULTS.txt: "interface<TAB>member<TAB>parameter<TAB>vartype<TAB>64-bit value" per line.
#include <windows.h>
#include <oleauto.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

namespace {

// The compiled library's layout, as widl writes it and the platform reads it. Offsets inside a
// segment are relative to it; only the segment directory and each type info's member data offset
// are file positions.
constexpr uint32_t kMagic = 0x5446534D;  // "MSFT"
constexpr size_t kLcidAt = 0x0C;
constexpr size_t kVarFlagsAt = 0x14;     // low nibble: SYSKIND; 0x100: a help DLL name follows
constexpr size_t kTypeInfoCountAt = 0x20;
constexpr size_t kHeaderSize = 0x54;     // fixed header, before the type info offsets
constexpr uint32_t kHelpDllFlag = 0x100;
constexpr size_t kSegmentCount = 15;
constexpr size_t kSegmentSize = 16;      // offset, length, two reserved words
constexpr size_t kTypeInfoSegment = 0;
constexpr size_t kNameHashSegment = 6;   // 128 bucket heads: name table offsets, -1 for none
constexpr size_t kNameSegment = 7;
constexpr size_t kCustDataSegment = 11;
constexpr uint32_t kNone = 0xFFFFFFFF;
// A name table entry: type info offset, next entry of the same bucket, then a word whose low byte
// is the length, second byte flags, high half the low 16 bits of the hash; then the characters
// padded to four bytes.
constexpr size_t kNameEntryHeader = 12;
constexpr uint32_t kBucketMask = 0x7F;
// A type info: kind, file position of its member data, ..., element counts (functions in the low
// half), ..., its name's offset in the name table.
constexpr size_t kTypeInfoMemberDataAt = 4;
constexpr size_t kTypeInfoCountsAt = 24;
constexpr size_t kTypeInfoNameAt = 52;
// Member data: its length, the records, then per member its id, its name's offset and its
// record's offset. A function record: size in the low half of its first word, flags at 16
// (0x1000: a default value per parameter precedes the parameters), parameter count at 20; it ends
// with the defaults and then one (type, name, flags) triple per parameter.
constexpr size_t kFuncFlagsAt = 16;
constexpr size_t kFuncArgCountAt = 20;
constexpr uint32_t kFuncHasDefaults = 0x1000;
constexpr size_t kParamSize = 12;
constexpr uint32_t kParamHasDefault = 0x20;  // PARAMFLAG_FHASDEFAULT

struct FileCloser {
    void operator()(FILE* f) const noexcept { std::fclose(f); }
};
using File = std::unique_ptr<FILE, FileCloser>;

std::vector<char> ReadAll(const char* path) {
    File f(std::fopen(path, "rb"));
    if (!f) throw std::runtime_error(std::string("cannot open ") + path);
    std::vector<char> data;
    char block[65536];
    size_t got = 0;
    while ((got = std::fread(block, 1, sizeof block, f.get())) > 0) data.insert(data.end(), block, block + got);
    return data;
}

void WriteAll(const char* path, const std::vector<char>& data) {
    File f(std::fopen(path, "wb"));
    if (!f || std::fwrite(data.data(), 1, data.size(), f.get()) != data.size())
        throw std::runtime_error(std::string("cannot write ") + path);
}

// The tab-separated fields of each non-empty line.
std::vector<std::vector<std::string>> ReadTable(const char* path, size_t fields) {
    std::vector<std::vector<std::string>> rows;
    const std::vector<char> text = ReadAll(path);
    std::string line;
    auto take = [&] {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty()) return;
        std::vector<std::string> row;
        size_t start = 0;
        for (size_t tab; (tab = line.find('\t', start)) != std::string::npos; start = tab + 1)
            row.push_back(line.substr(start, tab - start));
        row.push_back(line.substr(start));
        if (row.size() != fields) throw std::runtime_error(std::string(path) + ": bad line '" + line + "'");
        rows.push_back(std::move(row));
        line.clear();
    };
    for (char c : text) {
        if (c == '\n') take();
        else line += c;
    }
    take();
    return rows;
}

// placeholder -> published name
std::map<std::string, std::string> ReadNames(const char* path) {
    std::map<std::string, std::string> names;
    for (const auto& row : ReadTable(path, 2)) {
        const std::string& idl = row[0];
        const std::string& published = row[1];
        if (idl.size() != published.size()) throw std::runtime_error("names: lengths differ for " + idl);
        for (unsigned char c : published)
            if (c < 0x20 || c > 0x7E) throw std::runtime_error("names: not plain ASCII: " + published);
        names[idl] = published;
    }
    return names;
}

using DefaultKey = std::tuple<std::string, std::string, std::string>;  // interface, member, parameter
struct DefaultValue {
    VARTYPE vt = VT_EMPTY;
    int64_t value = 0;
};

std::map<DefaultKey, DefaultValue> ReadDefaults(const char* path) {
    std::map<DefaultKey, DefaultValue> defaults;
    for (const auto& row : ReadTable(path, 5)) {
        const auto vt = static_cast<VARTYPE>(std::strtoul(row[3].c_str(), nullptr, 10));
        if (vt != VT_I8 && vt != VT_CY) throw std::runtime_error("defaults: unexpected type " + row[3]);
        defaults[{row[0], row[1], row[2]}] = {vt, std::strtoll(row[4].c_str(), nullptr, 10)};
    }
    return defaults;
}

class TypeLib {
public:
    explicit TypeLib(std::vector<char> data) : m_data(std::move(data)) {
        if (m_data.size() < kHeaderSize || Word(0) != kMagic) throw std::runtime_error("not a compiled type library");
        const uint32_t varFlags = Word(kVarFlagsAt);
        m_sysKind = static_cast<SYSKIND>(varFlags & 0xF);
        m_lcid = Word(kLcidAt);
        m_typeInfoCount = Word(kTypeInfoCountAt);
        m_typeInfoOffsets = kHeaderSize + (varFlags & kHelpDllFlag ? 4 : 0);
        m_segments = m_typeInfoOffsets + 4 * m_typeInfoCount;
        if (SegmentLength(kNameHashSegment) != 4 * (kBucketMask + 1) || m_segments + kSegmentCount * kSegmentSize > m_data.size())
            throw std::runtime_error("unexpected type library layout");
    }

    // Renames every listed entry; returns how many were renamed.
    size_t Rename(const std::map<std::string, std::string>& names) {
        size_t renamed = 0;
        const size_t table = SegmentAt(kNameSegment);
        for (size_t at = 0; at < SegmentLength(kNameSegment);) {
            const uint32_t lengthWord = Word(table + at + 8);
            const size_t length = lengthWord & 0xFF;
            const auto found = names.find(NameAt(static_cast<uint32_t>(at)));
            if (found != names.end()) {
                std::memcpy(&m_data[table + at + kNameEntryHeader], found->second.data(), length);
                const ULONG hash = ::LHashValOfNameSysA(m_sysKind, m_lcid, found->second.c_str());
                const uint32_t oldBucket = (lengthWord >> 16) & kBucketMask;
                SetWord(table + at + 8, (lengthWord & 0xFFFF) | (hash << 16));
                if ((hash & kBucketMask) != oldBucket) Rechain(static_cast<uint32_t>(at), oldBucket, hash & kBucketMask);
                ++renamed;
            }
            at += kNameEntryHeader + ((length + 3) & ~size_t{3});
        }
        return renamed;
    }

    // Writes every listed default that widl left out; returns how many parameters got one.
    size_t WriteDefaults(const std::map<DefaultKey, DefaultValue>& defaults) {
        std::vector<char> added;  // new custom data entries, appended to the segment at the end
        size_t written = 0;
        for (uint32_t t = 0; t < m_typeInfoCount; ++t) {
            const size_t info = SegmentAt(kTypeInfoSegment) + Word(m_typeInfoOffsets + 4 * t);
            const uint32_t funcs = Word(info + kTypeInfoCountsAt) & 0xFFFF;
            if (funcs == 0) continue;
            const std::string owner = NameAt(Word(info + kTypeInfoNameAt));
            const size_t data = Word(info + kTypeInfoMemberDataAt);
            const uint32_t members = funcs + (Word(info + kTypeInfoCountsAt) >> 16);
            size_t record = data + 4;
            for (uint32_t f = 0; f < funcs; ++f) {
                const size_t size = Word(record) & 0xFFFF;
                const size_t args = Word(record + kFuncArgCountAt) & 0xFFFF;
                if (Word(record + kFuncFlagsAt) & kFuncHasDefaults) {
                    const std::string member = NameAt(Word(data + 4 + Word(data) + 4 * (members + f)));
                    const size_t params = record + size - args * kParamSize;
                    const size_t values = params - args * 4;
                    for (size_t a = 0; a < args; ++a) {
                        const size_t param = params + a * kParamSize;
                        if (!(Word(param + 8) & kParamHasDefault) || Word(values + 4 * a) != kNone) continue;
                        const auto found = defaults.find({owner, member, NameAt(Word(param + 4))});
                        if (found == defaults.end()) {
                            throw std::runtime_error("no value for the default of " + owner + "." + member + " parameter " +
                                                     std::to_string(a));
                        }
                        SetWord(values + 4 * a, static_cast<uint32_t>(SegmentLength(kCustDataSegment) + added.size()));
                        AppendValue(added, found->second);
                        ++written;
                    }
                }
                record += size;
            }
        }
        if (!added.empty()) GrowCustData(added);
        return written;
    }

    const std::vector<char>& Data() const noexcept { return m_data; }

private:
    uint32_t Word(size_t at) const {
        if (at + 4 > m_data.size()) throw std::runtime_error("truncated type library");
        uint32_t value = 0;
        std::memcpy(&value, &m_data[at], 4);
        return value;
    }
    void SetWord(size_t at, uint32_t value) { std::memcpy(&m_data[at], &value, 4); }
    size_t SegmentEntry(size_t segment) const { return m_segments + segment * kSegmentSize; }
    size_t SegmentAt(size_t segment) const { return Word(SegmentEntry(segment)); }
    size_t SegmentLength(size_t segment) const { return Word(SegmentEntry(segment) + 4); }
    size_t Head(uint32_t bucket) const { return SegmentAt(kNameHashSegment) + 4 * bucket; }
    size_t Next(uint32_t entry) const { return SegmentAt(kNameSegment) + entry + 4; }

    std::string NameAt(uint32_t entry) const {
        if (entry == kNone) return {};
        const size_t at = SegmentAt(kNameSegment) + entry;
        const size_t length = Word(at + 8) & 0xFF;
        if (at + kNameEntryHeader + length > m_data.size()) throw std::runtime_error("name out of range");
        return std::string(&m_data[at + kNameEntryHeader], length);
    }

    // Unlinks the entry from the old bucket's chain and puts it first in the new one.
    void Rechain(uint32_t entry, uint32_t oldBucket, uint32_t newBucket) {
        size_t link = Head(oldBucket);
        while (Word(link) != entry) {
            if (Word(link) == kNone) throw std::runtime_error("name missing from its hash chain");
            link = Next(Word(link));
        }
        SetWord(link, Word(Next(entry)));
        SetWord(Next(entry), Word(Head(newBucket)));
        SetWord(Head(newBucket), entry);
    }

    // A custom data value: its type, its eight bytes, padded to four.
    static void AppendValue(std::vector<char>& out, const DefaultValue& value) {
        char entry[12] = {};
        std::memcpy(entry, &value.vt, 2);
        std::memcpy(entry + 2, &value.value, 8);
        out.insert(out.end(), entry, entry + sizeof entry);
    }

    // Inserts the bytes at the end of the custom data segment; every file position after it moves.
    void GrowCustData(const std::vector<char>& added) {
        size_t at = SegmentAt(kCustDataSegment);
        if (at == kNone) {
            at = m_data.size();
            SetWord(SegmentEntry(kCustDataSegment), static_cast<uint32_t>(at));
        }
        const size_t end = at + SegmentLength(kCustDataSegment);
        const auto grow = static_cast<uint32_t>(added.size());
        for (size_t s = 0; s < kSegmentCount; ++s) {
            const uint32_t offset = Word(SegmentEntry(s));
            if (s != kCustDataSegment && offset != kNone && offset >= end) SetWord(SegmentEntry(s), offset + grow);
        }
        for (uint32_t t = 0; t < m_typeInfoCount; ++t) {
            const size_t info = SegmentAt(kTypeInfoSegment) + Word(m_typeInfoOffsets + 4 * t);
            const uint32_t data = Word(info + kTypeInfoMemberDataAt);
            if (data != kNone && data >= end) SetWord(info + kTypeInfoMemberDataAt, data + grow);
        }
        SetWord(SegmentEntry(kCustDataSegment) + 4, static_cast<uint32_t>(SegmentLength(kCustDataSegment) + grow));
        m_data.insert(m_data.begin() + static_cast<std::ptrdiff_t>(end), added.begin(), added.end());
    }

    std::vector<char> m_data;
    SYSKIND m_sysKind = SYS_WIN32;
    LCID m_lcid = 0;
    uint32_t m_typeInfoCount = 0;
    size_t m_typeInfoOffsets = 0;
    size_t m_segments = 0;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 5) {
        std::fprintf(stderr, "usage: TypeLibFixer IN.tlb NAMES.txt DEFAULTS.txt OUT.tlb\n");
        return 2;
    }
    try {
        const auto names = ReadNames(argv[2]);
        const auto defaults = ReadDefaults(argv[3]);
        TypeLib lib(ReadAll(argv[1]));
        // Every listed name is in the library: a miss means the names and the IDL disagree.
        const size_t renamed = lib.Rename(names);
        if (renamed != names.size()) {
            std::fprintf(stderr, "TypeLibFixer: %zu of %zu names found in %s\n", renamed, names.size(), argv[1]);
            return 1;
        }
        const size_t written = lib.WriteDefaults(defaults);
        WriteAll(argv[4], lib.Data());
        std::printf("TypeLibFixer: %zu enumeration member names restored, %zu default values written\n", renamed,
                    written);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "TypeLibFixer: %s\n", error.what());
        return 1;
    }
}
