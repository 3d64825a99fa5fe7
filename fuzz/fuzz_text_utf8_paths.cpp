// Holds the fast (SSE2) UTF-8 loops against the portable ones on arbitrary input: the bytes as
// UTF-8 for both lead tables, the same bytes read as UTF-16 code units (lone surrogates and all)
// for the encoders, and the transport images both ways. Outputs are sized exactly as the callers
// size them, so that a write past the end shows under the sanitizer.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "platform/CodePage.h"
#include "text/Utf8Kernels.h"

namespace {

using utf8kernel::Leads;
using utf8kernel::Path;

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

std::u16string decode(const uint8_t* data, size_t size, Leads leads, Path path) {
    std::u16string out(size, u'\0');
    out.resize(utf8kernel::DecodeLeads(data, size, out.data(), leads, path));
    return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    for (const Leads leads : {Leads::Core, Leads::File}) {
        if (decode(data, size, leads, Path::Fast) != decode(data, size, leads, Path::Portable)) std::abort();
    }
    std::u16string units(size / 2, u'\0');
    for (size_t i = 0; i < units.size(); ++i) {
        units[i] = static_cast<char16_t>(data[2 * i] | (data[2 * i + 1] << 8));
    }
    const size_t length = utf8kernel::EncodedLength(units.data(), units.size());
    std::vector<uint8_t> fast(length);
    std::vector<uint8_t> portable(length);
    if (utf8kernel::EncodeUnits(units.data(), units.size(), fast.data(), Path::Fast) != length) std::abort();
    if (utf8kernel::EncodeUnits(units.data(), units.size(), portable.data(), Path::Portable) != length) std::abort();
    if (fast != portable) std::abort();
    std::u16string image(length, u'\0');
    if (utf8kernel::EncodeImage(units.data(), units.size(), image.data(), unitTable(), Path::Fast) != length) {
        std::abort();
    }
    for (size_t i = 0; i < length; ++i) {
        if (image[i] != unitTable()[fast[i]]) std::abort();
    }
    // Any units as a transport image, and the image just made: both paths agree.
    for (const std::u16string* in : {&units, &image}) {
        std::u16string a(in->size(), u'\0');
        std::u16string b(in->size(), u'\0');
        a.resize(utf8kernel::DecodeImage(in->data(), in->size(), a.data(), byteTable(), Path::Fast));
        b.resize(utf8kernel::DecodeImage(in->data(), in->size(), b.data(), byteTable(), Path::Portable));
        if (a != b) std::abort();
    }
    // The image of an encoding decodes back to the units, lone surrogates included.
    std::u16string back(image.size(), u'\0');
    back.resize(utf8kernel::DecodeImage(image.data(), image.size(), back.data(), byteTable(), Path::Fast));
    if (back != units) std::abort();
    return 0;
}
