// The UTF-8 loops of the text core, fast (SSE2) and portable, against plain one-element-at-a-time
// references, on random text that mixes ASCII runs of every length with every class of element:
// invalid sequences, cut sequences and lone surrogates included.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "platform/CodePage.h"
#include "text/Utf8Kernels.h"

namespace {

using utf8kernel::Leads;
using utf8kernel::Path;

std::vector<uint8_t> referenceEncode(const std::u16string& s) {
    std::vector<uint8_t> out;
    for (const char16_t unit : s) {
        const uint32_t c = unit;
        if (c < 0x80) {
            out.push_back(static_cast<uint8_t>(c));
        } else if (c < 0x800) {
            out.push_back(static_cast<uint8_t>(0xC0 | (c >> 6)));
            out.push_back(static_cast<uint8_t>(0x80 | (c & 0x3F)));
        } else {
            out.push_back(static_cast<uint8_t>(0xE0 | (c >> 12)));
            out.push_back(static_cast<uint8_t>(0x80 | ((c >> 6) & 0x3F)));
            out.push_back(static_cast<uint8_t>(0x80 | (c & 0x3F)));
        }
    }
    return out;
}

// Lead bytes decide alone; continuation bytes are taken as they come.
std::u16string referenceDecode(const std::vector<uint8_t>& p, Leads leads) {
    std::u16string out;
    size_t i = 0;
    while (i < p.size()) {
        const unsigned b = p[i];
        size_t need = 1;
        if (leads == Leads::Core) {
            need = (b >= 194 && b <= 223) ? 2 : (b >= 224 && b <= 239) ? 3 : 1;
        } else {
            need = (b >= 194 && b <= 219) ? 2 : (b >= 224) ? 3 : 1;
        }
        if (i + need > p.size()) break;
        if (need == 1) {
            out += static_cast<char16_t>(b);
        } else if (need == 2) {
            out += static_cast<char16_t>(((b & 0x1F) << 6) | (p[i + 1] & 0x3F));
        } else {
            out += static_cast<char16_t>(((b & 0x0F) << 12) | ((p[i + 1] & 0x3F) << 6) | (p[i + 2] & 0x3F));
        }
        i += need;
    }
    return out;
}

// ASCII runs of 0 to 40 elements between single elements of every class.
std::u16string randomUnits(std::mt19937& rng, size_t length) {
    std::u16string s;
    std::uniform_int_distribution<int> run(0, 40);
    std::uniform_int_distribution<int> kind(0, 6);
    std::uniform_int_distribution<int> any(0, 0xFFFF);
    while (s.size() < length) {
        for (int k = run(rng); k > 0; --k) s += static_cast<char16_t>(any(rng) % 128);
        const int v = any(rng);
        switch (kind(rng)) {
            case 0: s += static_cast<char16_t>(0x80 + v % 0x780); break;
            case 1: s += static_cast<char16_t>(0x800 + v % 0xD000); break;
            case 2: s += static_cast<char16_t>(0xD800 + v % 0x800); break;  // lone or paired by chance
            case 3: s += u"\xD83D\xDE00"; break;
            case 4: s += static_cast<char16_t>(v); break;
            case 5: s += static_cast<char16_t>(v % 2 ? 0x7F : 0x80); break;
            default: s += static_cast<char16_t>(0xFF80 + v % 0x80); break;
        }
    }
    s.resize(length);
    return s;
}

std::vector<uint8_t> randomBytes(std::mt19937& rng, size_t length) {
    std::vector<uint8_t> b;
    std::uniform_int_distribution<int> run(0, 40);
    std::uniform_int_distribution<int> any(0, 255);
    while (b.size() < length) {
        for (int k = run(rng); k > 0; --k) b.push_back(static_cast<uint8_t>(any(rng) % 128));
        for (int k = any(rng) % 4; k >= 0; --k) b.push_back(static_cast<uint8_t>(128 + any(rng) % 128));
    }
    b.resize(length);
    return b;
}

const std::array<char16_t, 256>& unitTable() {
    static const std::array<char16_t, 256> t = [] {
        std::array<char16_t, 256> a{};
        for (size_t b = 0; b < a.size(); ++b) a[b] = platform::Cp1252ByteToUnit(static_cast<uint8_t>(b));
        return a;
    }();
    return t;
}

const std::array<uint8_t, 65536>& byteTable() {
    static const std::array<uint8_t, 65536> t = [] {
        std::array<uint8_t, 65536> a{};
        for (size_t c = 0; c < a.size(); ++c) a[c] = platform::Cp1252UnitToByte(static_cast<char16_t>(c));
        return a;
    }();
    return t;
}

}  // namespace

TEST(Utf8Kernels, EncodeBothPathsMatchTheReference) {
    std::mt19937 rng(7);
    for (int round = 0; round < 3000; ++round) {
        const std::u16string s = randomUnits(rng, static_cast<size_t>(round % 300));
        const std::vector<uint8_t> expected = referenceEncode(s);
        ASSERT_EQ(utf8kernel::EncodedLength(s.data(), s.size()), expected.size());
        for (const Path path : {Path::Fast, Path::Portable}) {
            // Sized exactly, as the callers size it: a write past the end shows under the sanitizer.
            std::vector<uint8_t> bytes(expected.size());
            ASSERT_EQ(utf8kernel::EncodeUnits(s.data(), s.size(), bytes.data(), path), expected.size());
            ASSERT_EQ(bytes, expected) << "round " << round;
            std::u16string image(expected.size(), u'\0');
            ASSERT_EQ(utf8kernel::EncodeImage(s.data(), s.size(), image.data(), unitTable(), path), expected.size());
            for (size_t i = 0; i < expected.size(); ++i) {
                ASSERT_EQ(image[i], platform::Cp1252ByteToUnit(expected[i])) << "round " << round << " at " << i;
            }
        }
    }
}

TEST(Utf8Kernels, DecodeBothPathsAndBothLeadTablesMatchTheReference) {
    std::mt19937 rng(11);
    for (int round = 0; round < 3000; ++round) {
        // Half of the inputs are well-formed encodings, half arbitrary bytes.
        const std::vector<uint8_t> bytes = round % 2 ? randomBytes(rng, static_cast<size_t>(round % 300))
                                                     : referenceEncode(randomUnits(rng, static_cast<size_t>(round % 200)));
        std::u16string image;
        for (const uint8_t b : bytes) image += platform::Cp1252ByteToUnit(b);
        for (const Leads leads : {Leads::Core, Leads::File}) {
            const std::u16string expected = referenceDecode(bytes, leads);
            for (const Path path : {Path::Fast, Path::Portable}) {
                std::u16string out(bytes.size(), u'\0');
                out.resize(utf8kernel::DecodeLeads(bytes.data(), bytes.size(), out.data(), leads, path));
                ASSERT_EQ(out, expected) << "round " << round;
                if (leads == Leads::Core) {
                    std::u16string fromImage(image.size(), u'\0');
                    fromImage.resize(utf8kernel::DecodeImage(image.data(), image.size(), fromImage.data(), byteTable(), path));
                    ASSERT_EQ(fromImage, expected) << "round " << round;
                }
            }
        }
    }
}

// Units of a transport form that code page 1252 lacks become "?" bytes before decoding, in a
// block of ASCII as at the end.
TEST(Utf8Kernels, ImageUnitsOutsideTheCodePageDecodeAsQuestionMarks) {
    const std::u16string image = std::u16string(20, u'a') + u"\x4E2D" + std::u16string(20, u'b') + u"\x20AC\x201A";
    for (const Path path : {Path::Fast, Path::Portable}) {
        std::u16string out(image.size(), u'\0');
        out.resize(utf8kernel::DecodeImage(image.data(), image.size(), out.data(), byteTable(), path));
        // 0x80 0x82 (the euro sign and the low quote) are two continuation bytes: themselves.
        EXPECT_EQ(out, std::u16string(20, u'a') + u"?" + std::u16string(20, u'b') + u"\x80\x82");
    }
}
