// Fuzzes DecodeB64 on any bytes: the output length follows from the cleaned length alone, only
// bytes beyond the decode table raise, and encoded data always decodes back.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "common/CtlError.h"
#include "text/clsBase64.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const clsBase64& codec = ThreadBase64();
    const std::vector<uint8_t> input(data, data + size);

    std::vector<uint8_t> clean;
    for (const uint8_t b : input) {
        if (b != 13 && b != 10 && b != 32 && b != 9) {
            clean.push_back(b);
        }
    }
    bool beyondTable = false;
    for (const uint8_t b : clean) {
        beyondTable = beyondTable || b > 233;
    }
    const size_t n = clean.size();
    size_t padding = 0;
    if (n >= 1 && clean[n - 1] == '=') {
        padding = (n >= 2 && clean[n - 2] == '=') ? 2 : 1;
    }
    // 0.75 n rounded half to even, worked out with doubles here.
    const double exact = 0.75 * static_cast<double>(n);
    double rounded = static_cast<double>(static_cast<size_t>(exact));
    const double fraction = exact - rounded;
    if (fraction > 0.5 || (fraction == 0.5 && static_cast<size_t>(rounded) % 2 == 1)) {
        rounded += 1.0;
    }
    const size_t expectedLength = rounded > static_cast<double>(padding) ? static_cast<size_t>(rounded) - padding : 0;

    std::vector<uint8_t> out;
    try {
        codec.DecodeB64(input, out);
        if (beyondTable && expectedLength > 0) {
            std::abort();
        }
        if (out.size() != expectedLength) {
            std::abort();
        }
    } catch (const CtlError& e) {
        if (!beyondTable || e.Number() != 9 || !out.empty()) {
            std::abort();
        }
    }

    std::vector<uint8_t> encoded;
    codec.EncodeB64(input, encoded);
    std::vector<uint8_t> back;
    codec.DecodeB64(encoded, back);
    if (back != input) {
        std::abort();
    }
    return 0;
}
