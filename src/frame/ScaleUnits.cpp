#include "frame/ScaleUnits.h"

namespace {

double twipsPerUnit(int16_t mode, bool vertical, int32_t pixelsPerInch) noexcept {
    switch (mode) {
        case 2: return 20.0;                                   // points: 1/72 inch
        case 3: return 1440.0 / (pixelsPerInch > 0 ? pixelsPerInch : 96);
        case 4: return vertical ? 240.0 : 120.0;               // characters
        case 5: return 1440.0;                                 // inches
        case 6: return 1440.0 / 25.4;                          // millimetres
        case 7: return 1440.0 / 2.54;                          // centimetres
        case 8: return 1440.0 / 2540.0;                        // HiMetric: 1/100 mm
        default: return 1.0;                                   // twips, user, unknown
    }
}

}  // namespace

float ConvertScaleUnits(float value, int16_t fromMode, int16_t toMode, bool vertical, int32_t pixelsPerInch) noexcept {
    const double twips = static_cast<double>(value) * twipsPerUnit(fromMode, vertical, pixelsPerInch);
    return static_cast<float>(twips / twipsPerUnit(toMode, vertical, pixelsPerInch));
}
