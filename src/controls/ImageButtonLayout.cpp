#include "controls/ImageButtonLayout.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int32_t kAlignLeft = 0;    // DT_LEFT
constexpr int32_t kAlignCenter = 1;  // DT_CENTER
constexpr int32_t kAlignRight = 2;   // DT_RIGHT

// Halves in floating point, a half to even (the default rounding mode).
int32_t half(int32_t value) { return static_cast<int32_t>(std::nearbyint(static_cast<double>(value) / 2.0)); }

CTL_RECT rect(int32_t left, int32_t top, int32_t right, int32_t bottom) { return CTL_RECT{left, top, right, bottom}; }

bool isLeftOrRightFamily(int32_t pos) {
    return pos == eubiip_Left || pos == eubiip_Right || pos == eubiip_Left_TextNear || pos == eubiip_Right_TextNear ||
           pos == eubiip_Left_TextCentered || pos == eubiip_Right_TextCentered;
}

bool isKnown(int32_t pos) { return pos >= eubiip_Top && pos <= eubiip_Right_TextCentered && pos != 9; }

}  // namespace

bool ShrinkPictureToFit(int32_t innerWidth, int32_t innerHeight, int32_t& pictureWidth, int32_t& pictureHeight) {
    if (pictureWidth <= 0 || pictureHeight <= 0) return false;
    if (pictureWidth <= innerWidth && pictureHeight <= innerHeight) return false;
    const double ratio = std::min(static_cast<double>(innerWidth) / pictureWidth,
                                  static_cast<double>(innerHeight) / pictureHeight);
    const auto width = static_cast<int32_t>(std::nearbyint(ratio * pictureWidth));
    const auto height = static_cast<int32_t>(std::nearbyint(ratio * pictureHeight));
    if (width < 1 || height < 1) return false;  // nothing left to show: the picture is drawn as it is
    pictureWidth = width;
    pictureHeight = height;
    return true;
}

ImageButtonLayoutResult LayOutImageButton(const ImageButtonMetrics& m, int32_t imagePos, const MeasureCaption& measure) {
    ImageButtonLayoutResult out;
    const int32_t W = m.width;
    const int32_t H = m.height;
    const int32_t B = m.inset;
    const int32_t g = m.gap;
    const int32_t pw = m.pictureWidth;
    const int32_t ph = m.pictureHeight;

    if (m.hasPicture && !m.hasCaption) {
        out.image = rect(0, 0, W, H);
        return out;
    }
    if (!m.hasPicture && m.hasCaption) {
        const int32_t in = m.textInset;
        int32_t tw = 0;
        int32_t th = 0;
        if (measure) measure(W - 2 * in, tw, th);
        const int32_t top = half(H - th);
        out.text = rect(in, top, W - in, top + th);
        return out;
    }
    if (!m.hasPicture || !isKnown(imagePos)) return out;

    int32_t tw = 0;
    int32_t th = 0;
    if (isLeftOrRightFamily(imagePos)) {
        const int32_t limit = std::max(half(W), W - B - pw - g);
        if (measure) measure(limit, tw, th);
        tw = std::min(tw, limit);
    } else if (measure) {
        measure(W - 2 * B, tw, th);
    }

    switch (imagePos) {
        case eubiip_Top: {
            const int32_t total = ph + g + th;
            const int32_t top = std::max(B, half(H - total));
            out.image = rect(0, top, W, top + ph);
            const int32_t textTop = std::min(H - B - th, out.image.bottom + g);
            out.text = rect(B, textTop, W - B, textTop + th);
            break;
        }
        case eubiip_Bottom: {
            const int32_t total = ph + g + th;
            const int32_t textTop = std::max(B, half(H - total));
            out.text = rect(B, textTop, W - B, textTop + th);
            const int32_t top = std::min(H - B - ph, out.text.bottom + g);
            out.image = rect(0, top, W, top + ph);
            break;
        }
        case eubiip_Left: {
            const int32_t total = pw + g + tw;
            const int32_t left = std::max(B, half(W - total));
            out.image = rect(left, 0, left + pw, H);
            const int32_t textTop = half(H - th);
            const int32_t textLeft = std::min(W - B - tw, out.image.right + g);
            out.text = rect(textLeft, textTop, textLeft + tw, textTop + th);
            break;
        }
        case eubiip_Right: {
            const int32_t total = pw + g + tw;
            const int32_t textTop = half(H - th);
            const int32_t textLeft = std::max(B, half(W - total));
            out.text = rect(textLeft, textTop, textLeft + tw, textTop + th);
            const int32_t left = std::min(W - B - pw, out.text.right + g);
            out.image = rect(left, 0, left + pw, H);
            break;
        }
        case eubiip_Centered: {
            out.image = rect(0, 0, W, H);
            out.text = rect(B, half(H - th), W - B, H - B);
            break;
        }
        case eubiip_Top_TextNear: {
            out.image = rect(0, B, W, B + ph);
            const int32_t textTop = std::min(H - B - th, out.image.bottom + g);
            out.text = rect(B, textTop, W - B, textTop + th);
            break;
        }
        case eubiip_Bottom_TextNear: {
            out.image = rect(0, H - B - ph, W, H - B);
            const int32_t textTop = std::max(B, out.image.top - g - th);
            out.text = rect(B, textTop, W - B, textTop + th);
            break;
        }
        case eubiip_Left_TextNear:
        case eubiip_Left_TextCentered: {
            out.image = rect(B, 0, B + pw, H);
            const int32_t textTop = half(H - th);
            out.text = rect(std::min(W - B - tw, out.image.right + g), textTop, W - B, textTop + th);
            out.textAlign = imagePos == eubiip_Left_TextNear ? kAlignLeft : kAlignCenter;
            break;
        }
        case eubiip_Right_TextNear:
        case eubiip_Right_TextCentered: {
            const int32_t left = std::max(B, W - B - pw);
            out.image = rect(left, 0, left + pw, H);
            const int32_t textTop = half(H - th);
            out.text = rect(B, textTop, std::max(B, out.image.left - g), textTop + th);
            out.textAlign = imagePos == eubiip_Right_TextNear ? kAlignRight : kAlignCenter;
            break;
        }
        default:
            break;
    }
    return out;
}
