#include "text/clsUniFile.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "common/CtlError.h"
#include "platform/CodePage.h"
#include "text/UniStringCore.h"
#include "text/Utf8Kernels.h"
#include "text/clsSearchFiles.h"

namespace {

constexpr intptr_t kFailedHandle = -1;
// Lines move their bytes out of the cache in runs; ANSI lines shorter than this need no growth.
constexpr size_t kLineReserve = 256;

// What each ANSI byte reads as when converted alone; a lone lead byte of a double-byte code page
// may convert to nothing, marked by kNoUnit.
constexpr char32_t kNoUnit = 0x110000;
struct AnsiByteTable {
    char32_t unit[256] = {};
    AnsiByteTable() {
        for (int b = 0; b < 256; ++b) {
            const uint8_t byte = static_cast<uint8_t>(b);
            const std::u16string wide = platform::AnsiToWide(std::span<const uint8_t>(&byte, 1));
            unit[b] = wide.empty() ? kNoUnit : wide[0];
        }
    }
};

const AnsiByteTable& ansiBytes() {
    thread_local const AnsiByteTable table;
    return table;
}

void appendUtf16Image(std::vector<uint8_t>& out, const std::u16string& text) {
    for (const char16_t c : text) {
        out.push_back(static_cast<uint8_t>(c & 0xFF));
        out.push_back(static_cast<uint8_t>(c >> 8));
    }
}

std::u16string fromUtf16Image(const std::vector<uint8_t>& bytes) {
    std::u16string out;
    out.reserve(bytes.size() / 2);
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        out += static_cast<char16_t>(bytes[i] | (bytes[i + 1] << 8));
    }
    return out;
}

bool isKnownEncoding(int32_t enc) noexcept { return enc == fe_ANSI || enc == fe_UTF16LE || enc == fe_UTF8; }

// The existence test of st_FileExist (exactly one file matches), asked of the walker directly.
bool fileExists(const std::u16string& path) {
    if (path.empty()) return false;
    try {
        clsSearchFiles search;
        return search.SearchPathPattern(path, esfw_only_files, false, false, false, -1, false).size() == 1;
    } catch (...) {
        return false;
    }
}

// A line read up to its line feed loses it and the carriage return before it; without a line
// feed, the text read stays as it is and the line counts as unfinished.
bool endLine(std::u16string& line, bool lineFeed) {
    if (!lineFeed) return false;
    const size_t n = line.size();
    line.resize(n >= 2 && line[n - 2] == u'\r' ? n - 2 : n - 1);
    return true;
}

}  // namespace

clsUniFile::~clsUniFile() {
    try {
        CloseFile();
    } catch (...) {
        // A destructor has nobody to report to; the bytes that could not be written are lost.
    }
}

// ---- Opening and closing ----

std::u16string clsUniFile::OpenedFileName() const { return m_hFile != 0 ? m_sFileName : std::u16string(); }

bool clsUniFile::OpenFileGeneric(const std::u16string& sPath, int32_t iAccess, int32_t iCreationDisposition,
                                 int32_t iShareMode, int32_t iAttributes) {
    if (m_hFile != 0) throw CtlError(u"clsUniFile.OpenFile", u"A file is already open!");
    pvResetReadCache();
    pvResetWriteCache();
    m_file = platform::File::Open(MakeLongPath(sPath), static_cast<uint32_t>(iAccess),
                                  static_cast<uint32_t>(iShareMode), static_cast<uint32_t>(iCreationDisposition),
                                  static_cast<uint32_t>(iAttributes));
    if (!m_file.IsOpen()) {
        // The failed state: IsFileOpen stays true until CloseFile, so the next open raises.
        m_hFile = kFailedHandle;
        return false;
    }
    m_hFile = m_file.NativeValue();
    m_sFileName = sPath;
    return true;
}

bool clsUniFile::OpenFileRead(const std::u16string& sPath, bool bShared) {
    return OpenFileGeneric(sPath, eua_GENERIC_READ, eucd_OPEN_EXISTING,
                           bShared ? eusm_FILE_SHARE_READ : eusm_NOT_SHARED, euat_FILE_ATTRIBUTE_NORMAL);
}

bool clsUniFile::OpenFileWrite(const std::u16string& sPath, bool bShared) {
    return OpenFileGeneric(sPath, eua_GENERIC_WRITE, eucd_CREATE_ALWAYS,
                           bShared ? eusm_FILE_SHARE_WRITE : eusm_NOT_SHARED, euat_FILE_ATTRIBUTE_NORMAL);
}

bool clsUniFile::OpenFileAppend(const std::u16string& sPath) {
    if (fileExists(sPath)) {
        const bool ok = OpenFileGeneric(sPath, eua_GENERIC_READ | eua_GENERIC_WRITE, eucd_OPEN_EXISTING,
                                        eusm_NOT_SHARED, euat_FILE_ATTRIBUTE_NORMAL);
        SetFilePos(0, eupp_FILE_END);
        return ok;
    }
    return OpenFileGeneric(sPath, eua_GENERIC_WRITE, eucd_CREATE_ALWAYS, eusm_NOT_SHARED,
                           euat_FILE_ATTRIBUTE_NORMAL);
}

void clsUniFile::CloseFile() {
    if (m_hFile == 0) return;
    pvFlushWriteCache();
    pvResetReadCache();
    m_file.Close();
    m_hFile = 0;
}

// ---- Cache plumbing ----

void clsUniFile::UseCache(bool bUseCache) {
    if (bUseCache == m_bUseCache) return;
    if (m_hFile != 0 && !bUseCache) {
        // Flushes, and puts the real pointer where the caller thinks it is.
        SetFilePos(GetFilePos(), eupp_FILE_BEGIN);
    }
    m_bUseCache = bUseCache;
    pvResetReadCache();
}

bool clsUniFile::pvRawRead(void* target, int32_t count) {
    if (count <= 0) return false;
    uint32_t got = 0;
    const bool ok = m_file.Read(target, static_cast<uint32_t>(count), got);
    return ok && got == static_cast<uint32_t>(count);
}

bool clsUniFile::pvRawWrite(const void* source, int32_t count) {
    if (count <= 0) return false;
    uint32_t put = 0;
    const bool ok = m_file.Write(source, static_cast<uint32_t>(count), put);
    return ok && put == static_cast<uint32_t>(count);
}

bool clsUniFile::pvFlushWriteCache() {
    if (m_lWritePos < 0) return true;
    const bool ok = pvRawWrite(m_aWriteCache.data(), m_lWritePos + 1);
    pvResetWriteCache();
    return ok;
}

bool clsUniFile::pvFillReadCache() {
    if (!m_bUseCache) return false;
    if (m_lReadPos <= m_lReadEnd) return true;
    const int64_t c = RealFilePos();
    const int64_t l = LOF() - 1;
    // Deliberately one short: a single remaining byte is not fetched through the cache.
    if (c >= l) return false;
    m_lReadPos = 0;
    const int64_t r = l - c + 1;
    const int32_t count = r <= kCacheSize ? static_cast<int32_t>(r) : kCacheSize;
    const bool ok = pvRawRead(m_aReadCache.data(), count);
    m_lReadEnd = count - 1;
    if (!ok) pvResetReadCache();
    return ok;
}

// ---- Size and position ----

bool clsUniFile::SetEndOfFileHere() {
    if (m_hFile == 0) return false;
    pvFlushWriteCache();
    return m_file.SetEndHere();
}

bool clsUniFile::Flush() {
    if (m_hFile == 0) return false;
    const bool flushed = pvFlushWriteCache();
    if (!m_file.Flush()) return false;
    return flushed;
}

int64_t clsUniFile::LOF() {
    int64_t size = m_file.IsOpen() ? m_file.Size() : -1;
    if (m_bUseCache) size += m_lWritePos + 1;
    return size;
}

void clsUniFile::SetFilePos(int64_t cPos, int32_t iFrom) {
    if (m_bUseCache) pvFlushWriteCache();
    int64_t ignored = 0;
    if (m_file.IsOpen()) m_file.Seek(cPos, static_cast<uint32_t>(iFrom), ignored);
    if (m_bUseCache) pvResetReadCache();
}

int64_t clsUniFile::RealFilePos() {
    if (!m_file.IsOpen()) return -1;
    int64_t position = -1;
    if (!m_file.Seek(0, platform::kFileCurrent, position)) return -1;
    return position;
}

int64_t clsUniFile::GetFilePos() {
    if (m_hFile == 0 || !m_file.IsOpen()) return -1;
    int64_t position = RealFilePos();
    if (m_bUseCache) position += -(m_lReadEnd - m_lReadPos + 1) + (m_lWritePos + 1);
    return position;
}

bool clsUniFile::Eof() {
    if (m_hFile == 0 || !m_file.IsOpen()) return true;
    return GetFilePos() >= LOF() - 1;
}

// ---- Bytes ----

bool clsUniFile::ReadAny(void* lPtrAny, int32_t lToRead) {
    if (lToRead <= 0) return false;
    if (!m_bUseCache) return pvRawRead(lPtrAny, lToRead);
    if (m_lWritePos > -1) pvFlushWriteCache();
    uint8_t* target = static_cast<uint8_t*>(lPtrAny);
    int32_t count = lToRead;
    int32_t at = m_lReadEnd - m_lReadPos + 1;
    if (count > kCacheSize) {
        if (at > 0) {
            std::memcpy(target, m_aReadCache.data() + m_lReadPos, static_cast<size_t>(at));
            target += at;
            count -= at;
        }
        pvResetReadCache();
        return pvRawRead(target, count);
    }
    if (count > at) {
        if (at > 0) {
            std::memcpy(target, m_aReadCache.data() + m_lReadPos, static_cast<size_t>(at));
            target += at;
            count -= at;
        }
        pvResetReadCache();
        if (!pvFillReadCache()) return false;
        at = m_lReadEnd - m_lReadPos + 1;
        if (count > at || at < 1) return false;
    }
    std::memcpy(target, m_aReadCache.data() + m_lReadPos, static_cast<size_t>(count));
    m_lReadPos += count;
    return true;
}

void clsUniFile::pvReadPastEnd(int32_t count) {
    if (count <= 0) return;
    std::vector<uint8_t> scratch(kCacheSize);
    auto drain = [&] {
        // One read of `count` bytes stops at the end of the file; so do these reads together.
        for (int32_t left = count; left > 0;) {
            const int32_t step = std::min<int32_t>(left, static_cast<int32_t>(scratch.size()));
            uint32_t got = 0;
            if (!m_file.Read(scratch.data(), static_cast<uint32_t>(step), got) || got < static_cast<uint32_t>(step)) {
                return;
            }
            left -= step;
        }
    };
    if (!m_bUseCache) {
        drain();
        return;
    }
    if (m_lWritePos > -1) pvFlushWriteCache();
    const int32_t at = m_lReadEnd - m_lReadPos + 1;
    if (at > 0) count -= at;
    pvResetReadCache();
    if (count + std::max(at, 0) > kCacheSize) {
        drain();
    } else {
        pvFillReadCache();
    }
}

bool clsUniFile::WriteAny(const void* lPtrAny, int32_t lToWrite) {
    if (lToWrite <= 0) return false;
    if (!m_bUseCache) return pvRawWrite(lPtrAny, lToWrite);
    const uint8_t* source = static_cast<const uint8_t*>(lPtrAny);
    int32_t count = lToWrite;
    const int32_t room = (kCacheSize - 1) - m_lWritePos;
    if (count >= kCacheSize + 1) {
        const bool flushed = pvFlushWriteCache();
        const bool written = pvRawWrite(source, count);
        return flushed && written;
    }
    if (count > room) {
        if (room > 0) {
            std::memcpy(m_aWriteCache.data() + m_lWritePos + 1, source, static_cast<size_t>(room));
            m_lWritePos += room;
            source += room;
            count -= room;
        }
        const bool flushed = pvFlushWriteCache();
        std::memcpy(m_aWriteCache.data() + m_lWritePos + 1, source, static_cast<size_t>(count));
        m_lWritePos += count;
        return flushed;
    }
    std::memcpy(m_aWriteCache.data() + m_lWritePos + 1, source, static_cast<size_t>(count));
    m_lWritePos += count;
    return true;
}

bool clsUniFile::pvNextByte(uint8_t& b) {
    if (m_bUseCache && m_lWritePos < 0 && m_lReadPos <= m_lReadEnd) {
        b = m_aReadCache[static_cast<size_t>(m_lReadPos++)];
        return true;
    }
    return ReadByte(b);
}

bool clsUniFile::ReadByte(uint8_t& b) {
    if (m_bUseCache) return ReadAny(&b, 1);
    uint32_t got = 0;
    return m_file.Read(&b, 1, got) && got == 1;
}

bool clsUniFile::WriteByte(uint8_t b) {
    if (m_bUseCache) {
        if (m_lWritePos < kCacheSize - 1) {
            m_aWriteCache[static_cast<size_t>(++m_lWritePos)] = b;
            return true;
        }
        return WriteAny(&b, 1);
    }
    uint32_t put = 0;
    return m_file.Write(&b, 1, put) && put == 1;
}

bool clsUniFile::ReadBytes(std::vector<uint8_t>& bytes) {
    if (bytes.empty() || bytes.size() > static_cast<size_t>(std::numeric_limits<int32_t>::max())) return false;
    return ReadAny(bytes.data(), static_cast<int32_t>(bytes.size()));
}

bool clsUniFile::WriteBytes(const std::vector<uint8_t>& bytes) {
    if (bytes.empty() || bytes.size() > static_cast<size_t>(std::numeric_limits<int32_t>::max())) return false;
    return WriteAny(bytes.data(), static_cast<int32_t>(bytes.size()));
}

// ---- Numbers, little-endian on every host ----

bool clsUniFile::ReadLong(int32_t& l) {
    uint8_t raw[4] = {};
    if (!ReadAny(raw, 4)) return false;
    l = static_cast<int32_t>(static_cast<uint32_t>(raw[0]) | (static_cast<uint32_t>(raw[1]) << 8) |
                             (static_cast<uint32_t>(raw[2]) << 16) | (static_cast<uint32_t>(raw[3]) << 24));
    return true;
}

bool clsUniFile::WriteLong(int32_t l) {
    const uint32_t v = static_cast<uint32_t>(l);
    const uint8_t raw[4] = {static_cast<uint8_t>(v), static_cast<uint8_t>(v >> 8), static_cast<uint8_t>(v >> 16),
                            static_cast<uint8_t>(v >> 24)};
    return WriteAny(raw, 4);
}

bool clsUniFile::ReadInt(int16_t& i) {
    uint8_t raw[2] = {};
    if (!ReadAny(raw, 2)) return false;
    i = static_cast<int16_t>(static_cast<uint16_t>(raw[0] | (raw[1] << 8)));
    return true;
}

bool clsUniFile::WriteInt(int16_t i) {
    const uint16_t v = static_cast<uint16_t>(i);
    const uint8_t raw[2] = {static_cast<uint8_t>(v), static_cast<uint8_t>(v >> 8)};
    return WriteAny(raw, 2);
}

bool clsUniFile::ReadBool(bool& b) {
    uint8_t raw = 0;
    if (!ReadAny(&raw, 1)) return false;
    b = raw == 1;
    return true;
}

bool clsUniFile::WriteBool(bool b) {
    const uint8_t raw = b ? 1 : 0;
    return WriteAny(&raw, 1);
}

bool clsUniFile::ReadDouble(int32_t& dOut) {
    uint8_t raw[8] = {};
    if (!ReadAny(raw, 8)) return false;
    uint64_t bits = 0;
    for (int k = 7; k >= 0; --k) bits = (bits << 8) | raw[k];
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    // Rounding to nearest, ties to even, as the integer conversion of the host runtime does.
    const double rounded = std::nearbyint(value);
    if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0)) return false;
    dOut = static_cast<int32_t>(rounded);
    return true;
}

bool clsUniFile::WriteDouble(const double& d) {
    uint64_t bits = 0;
    std::memcpy(&bits, &d, sizeof bits);
    uint8_t raw[8] = {};
    for (int k = 0; k < 8; ++k) raw[k] = static_cast<uint8_t>(bits >> (8 * k));
    return WriteAny(raw, 8);
}

// ---- Length-prefixed strings ----

bool clsUniFile::WriteNumCharsAndString(const std::u16string& s, int32_t iFileEnc) {
    if (!isKnownEncoding(iFileEnc)) return false;
    std::vector<uint8_t> bytes;
    if (iFileEnc == fe_ANSI) {
        bytes = platform::WideToAnsi(s);
    } else if (iFileEnc == fe_UTF16LE) {
        appendUtf16Image(bytes, s);
    } else {
        // The transport form goes out through the system's code page, not code page 1252: on a
        // system with another ANSI code page these records are not plain UTF-8.
        bytes = platform::WideToAnsi(StrToUTF8(s));
    }
    if (bytes.size() > static_cast<size_t>(std::numeric_limits<int32_t>::max())) return false;
    WriteLong(static_cast<int32_t>(bytes.size()));
    return WriteBytes(bytes);
}

bool clsUniFile::ReadNumCharsAndString(std::u16string& sRet, int32_t iFileEnc) {
    if (!isKnownEncoding(iFileEnc)) return false;
    sRet.clear();
    int32_t count = 0;
    if (!ReadLong(count) || count < 1) return false;
    // A count beyond the rest of the file: the read fails after taking what there is. Done
    // without allocating the count, which a damaged file can set to 2 GB.
    const int64_t rest = LOF() - GetFilePos();
    if (count > rest) {
        pvReadPastEnd(count);
        return false;
    }
    std::vector<uint8_t> bytes(static_cast<size_t>(count));
    if (!ReadBytes(bytes)) return false;
    if (iFileEnc == fe_ANSI) {
        sRet = platform::AnsiToWide(bytes);
    } else if (iFileEnc == fe_UTF16LE) {
        sRet = fromUtf16Image(bytes);
    } else {
        sRet = UTF8toStr(platform::AnsiToWide(bytes));
    }
    return true;
}

// ---- Lines ----

bool clsUniFile::WriteAnsiLine(const std::u16string& s) {
    std::vector<uint8_t> bytes = platform::WideToAnsi(s + u"\r\n");
    if (bytes.size() > static_cast<size_t>(std::numeric_limits<int32_t>::max())) return false;
    return WriteAny(bytes.data(), static_cast<int32_t>(bytes.size()));
}

bool clsUniFile::WriteUnicodeLine(const std::u16string& s) {
    m_scratch.clear();
    appendUtf16Image(m_scratch, s);
    appendUtf16Image(m_scratch, u"\r\n");
    if (m_scratch.size() > static_cast<size_t>(std::numeric_limits<int32_t>::max())) return false;
    return WriteAny(m_scratch.data(), static_cast<int32_t>(m_scratch.size()));
}

bool clsUniFile::WriteUTF8Line(const std::u16string& s) {
    // The transport form through code page 1252 and back is the identity on bytes (the page maps
    // all 256 bytes one to one), so the UTF-8 bytes are written straight.
    m_scratch.clear();
    AppendUTF8Bytes(m_scratch, s);
    m_scratch.push_back(13);
    m_scratch.push_back(10);
    if (m_scratch.size() > static_cast<size_t>(std::numeric_limits<int32_t>::max())) return false;
    return WriteAny(m_scratch.data(), static_cast<int32_t>(m_scratch.size()));
}

bool clsUniFile::ReadAnsiLine(std::u16string& sRet) {
    sRet.clear();
    sRet.reserve(kLineReserve);
    const AnsiByteTable& table = ansiBytes();
    bool lineFeed = false;
    uint8_t b = 0;
    while (pvNextByte(b)) {
        const char32_t unit = table.unit[b];
        if (unit != kNoUnit) sRet += static_cast<char16_t>(unit);
        if (b == 10) {
            lineFeed = true;
            break;
        }
    }
    return endLine(sRet, lineFeed);
}

bool clsUniFile::ReadUnicodeLine(std::u16string& sRet) {
    sRet.clear();
    bool lineFeed = false;
    uint8_t low = 0;
    uint8_t high = 0;
    while (pvNextByte(low) && pvNextByte(high)) {
        const char16_t unit = static_cast<char16_t>(low | (high << 8));
        sRet += unit;
        if (unit == u'\n') {
            lineFeed = true;
            break;
        }
    }
    return endLine(sRet, lineFeed);
}

bool clsUniFile::ReadUTF8Line(std::u16string& sRet) {
    m_scratch.clear();
    bool lineFeed = false;
    if (m_bUseCache && m_lWritePos > -1) pvFlushWriteCache();
    for (;;) {
        if (m_bUseCache && m_lReadPos <= m_lReadEnd) {
            // Take a run of bytes out of the cache at once: what byte-wise reads would give.
            const uint8_t* start = m_aReadCache.data() + m_lReadPos;
            const size_t available = static_cast<size_t>(m_lReadEnd - m_lReadPos + 1);
            const void* found = std::memchr(start, 10, available);
            const size_t take = found ? static_cast<size_t>(static_cast<const uint8_t*>(found) - start) + 1 : available;
            m_scratch.insert(m_scratch.end(), start, start + take);
            m_lReadPos += static_cast<int32_t>(take);
            if (found) {
                lineFeed = true;
                break;
            }
            continue;
        }
        uint8_t b = 0;
        if (!ReadByte(b)) break;
        m_scratch.push_back(b);
        if (b == 10) {
            lineFeed = true;
            break;
        }
    }
    size_t n = m_scratch.size();
    if (lineFeed) n = (n >= 2 && m_scratch[n - 2] == 13) ? n - 2 : n - 1;
    if (n > 0) {
        // Decoded into the caller's string, whose room serves line after line.
        sRet.resize(n);
        sRet.resize(utf8kernel::DecodeLeads(m_scratch.data(), n, sRet.data(), utf8kernel::Leads::File));
    }
    return lineFeed;
}

bool clsUniFile::ReadLine(std::u16string& sRet, int32_t iFileEnc) {
    switch (iFileEnc) {
    case fe_UTF16LE: return ReadUnicodeLine(sRet);
    case fe_UTF8: return ReadUTF8Line(sRet);
    default: return ReadAnsiLine(sRet);
    }
}

bool clsUniFile::WriteLine(const std::u16string& s, int32_t iFileEnc) {
    switch (iFileEnc) {
    case fe_UTF16LE: return WriteUnicodeLine(s);
    case fe_UTF8: return WriteUTF8Line(s);
    default: return WriteAnsiLine(s);
    }
}

// ---- Byte order marks ----

bool clsUniFile::WriteBOM(int32_t iFileEnc) {
    if (iFileEnc == fe_UTF16LE) return WriteBytes({255, 254});
    if (iFileEnc == fe_UTF8) return WriteBytes({239, 187, 191});
    return true;
}

eFileEncoding clsUniFile::ReadBOM() {
    uint8_t first = 0;
    if (!ReadByte(first)) return fe_ANSI;
    uint8_t ignored = 0;
    if (first == 255) {
        ReadByte(ignored);
        return fe_UTF16LE;
    }
    if (first == 239) {
        ReadByte(ignored);
        ReadByte(ignored);
        return fe_UTF8;
    }
    SetFilePos(0, eupp_FILE_BEGIN);
    return fe_ANSI;
}
