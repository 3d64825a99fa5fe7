// Build tool: puts the blanks back into enumeration member names of a compiled type library.
//
// widl cannot write a name with a blank, so the generator writes each blank as "_" and lists the
// published names beside the IDL. This tool rewrites those names in the library's name table (same
// length, so no offset moves), stores the hash the platform computes for the new name, and moves
// the entry to the hash chain that hash selects. The hash must be the platform's own
// (LHashValOfNameSysA): hosts look names up by it, so the tool runs as a Windows program.
//
// Usage: TypeLibNames IN.tlb NAMES.txt OUT.tlb
// NAMES.txt: one "placeholder<TAB>published name" per line.
#include <windows.h>
#include <oleauto.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

// The compiled library's layout, as widl writes it and the platform reads it.
constexpr uint32_t kMagic = 0x5446534D;     // "MSFT"
constexpr size_t kHeaderSize = 0x54;        // fixed header up to the type info offsets
constexpr size_t kVarFlagsAt = 0x14;        // low nibble: SYSKIND; 0x100: a help DLL name follows
constexpr size_t kLcidAt = 0x0C;
constexpr size_t kTypeInfoCountAt = 0x20;
constexpr uint32_t kHelpDllFlag = 0x100;
constexpr size_t kSegmentCount = 15;
constexpr size_t kSegmentSize = 16;         // offset, length, two reserved words
constexpr size_t kNameHashSegment = 6;      // bucket heads: offsets into the name table, -1 for none
constexpr size_t kNameSegment = 7;
// A name table entry: type info offset, next entry of the same bucket, then a word whose low byte
// is the length, second byte flags, high half the low 16 bits of the hash; then the characters
// padded to four bytes.
constexpr size_t kNameEntryHeader = 12;
constexpr uint32_t kBucketMask = 0x7F;

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

// placeholder -> published name
std::map<std::string, std::string> ReadNames(const char* path) {
    std::map<std::string, std::string> names;
    const std::vector<char> text = ReadAll(path);
    std::string line;
    auto take = [&] {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty()) return;
        const size_t tab = line.find('\t');
        if (tab == std::string::npos) throw std::runtime_error("names file: no tab in '" + line + "'");
        std::string idl = line.substr(0, tab), published = line.substr(tab + 1);
        if (idl.size() != published.size()) throw std::runtime_error("names file: lengths differ for " + idl);
        for (unsigned char c : published)
            if (c < 0x20 || c > 0x7E) throw std::runtime_error("names file: not plain ASCII: " + published);
        names[idl] = published;
        line.clear();
    };
    for (char c : text) {
        if (c == '\n') take();
        else line += c;
    }
    take();
    return names;
}

class TypeLib {
public:
    explicit TypeLib(std::vector<char> data) : m_data(std::move(data)) {
        if (m_data.size() < kHeaderSize || Word(0) != kMagic) throw std::runtime_error("not a compiled type library");
        const uint32_t varFlags = Word(kVarFlagsAt);
        m_sysKind = static_cast<SYSKIND>(varFlags & 0xF);
        m_lcid = Word(kLcidAt);
        size_t segments = kHeaderSize + (varFlags & kHelpDllFlag ? 4 : 0) + 4 * size_t{Word(kTypeInfoCountAt)};
        m_hashAt = Word(segments + kNameHashSegment * kSegmentSize);
        m_hashLength = Word(segments + kNameHashSegment * kSegmentSize + 4);
        m_namesAt = Word(segments + kNameSegment * kSegmentSize);
        m_namesLength = Word(segments + kNameSegment * kSegmentSize + 4);
        if (m_hashLength != 4 * (kBucketMask + 1) || m_hashAt + m_hashLength > m_data.size() ||
            m_namesAt + m_namesLength > m_data.size())
            throw std::runtime_error("unexpected name table layout");
    }

    // Renames every listed entry; returns how many were renamed.
    size_t Rename(const std::map<std::string, std::string>& names) {
        size_t renamed = 0;
        for (size_t at = 0; at < m_namesLength;) {
            const uint32_t lengthWord = Word(m_namesAt + at + 8);
            const size_t length = lengthWord & 0xFF;
            char* chars = &m_data[m_namesAt + at + kNameEntryHeader];
            const auto found = names.find(std::string(chars, length));
            if (found != names.end()) {
                std::memcpy(chars, found->second.data(), length);
                const ULONG hash = ::LHashValOfNameSysA(m_sysKind, m_lcid, found->second.c_str());
                const uint32_t oldBucket = (lengthWord >> 16) & kBucketMask;
                SetWord(m_namesAt + at + 8, (lengthWord & 0xFFFF) | (hash << 16));
                if ((hash & kBucketMask) != oldBucket) Rechain(static_cast<uint32_t>(at), oldBucket, hash & kBucketMask);
                ++renamed;
            }
            at += kNameEntryHeader + ((length + 3) & ~size_t{3});
        }
        return renamed;
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
    size_t Head(uint32_t bucket) const { return m_hashAt + 4 * bucket; }
    size_t Next(uint32_t entry) const { return m_namesAt + entry + 4; }

    // Unlinks the entry from the old bucket's chain and puts it first in the new one.
    void Rechain(uint32_t entry, uint32_t oldBucket, uint32_t newBucket) {
        size_t link = Head(oldBucket);
        while (Word(link) != entry) {
            if (Word(link) == 0xFFFFFFFF) throw std::runtime_error("name missing from its hash chain");
            link = Next(Word(link));
        }
        SetWord(link, Word(Next(entry)));
        SetWord(Next(entry), Word(Head(newBucket)));
        SetWord(Head(newBucket), entry);
    }

    std::vector<char> m_data;
    SYSKIND m_sysKind = SYS_WIN32;
    LCID m_lcid = 0;
    size_t m_hashAt = 0, m_hashLength = 0, m_namesAt = 0, m_namesLength = 0;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: TypeLibNames IN.tlb NAMES.txt OUT.tlb\n");
        return 2;
    }
    try {
        const auto names = ReadNames(argv[2]);
        TypeLib lib(ReadAll(argv[1]));
        const size_t renamed = lib.Rename(names);
        // Every listed name is in the library: a miss means the names and the IDL disagree.
        if (renamed != names.size()) {
            std::fprintf(stderr, "TypeLibNames: %zu of %zu names found in %s\n", renamed, names.size(), argv[1]);
            return 1;
        }
        WriteAll(argv[3], lib.Data());
        std::printf("TypeLibNames: %zu enumeration member names restored\n", renamed);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "TypeLibNames: %s\n", error.what());
        return 1;
    }
}
