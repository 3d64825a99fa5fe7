// OverlapImageCoords / OverlapImageRect: a bitmap or icon centred in a rectangle, grayed or with one colour transparent.
#include <algorithm>
#include <cmath>

#include "graphics/GdiRaii.h"
#include "graphics/clsDIBSection.h"
#include "graphics/modCommonDraw.h"

namespace {

// Reused by every call of the thread, so that drawing many images allocates once.
struct OverlapBuffers {
    clsDIBSection source;
    clsDIBSection destination;
    clsDIBSection mask;
};
thread_local OverlapBuffers t_buffers;

int32_t roundHalfEven(double value) { return static_cast<int32_t>(std::nearbyint(value)); }

// DIB words are 0x00RRGGBB; OLE colours are 0x00BBGGRR.
int32_t oleFromPixel(uint32_t pixel) {
    return static_cast<int32_t>(((pixel >> 16) & 0xFFu) | (pixel & 0xFF00u) | ((pixel & 0xFFu) << 16));
}

struct ComposeRequest {
    int32_t width = 0;
    int32_t height = 0;
    int32_t sourceTop = 0;       // first row of the colour in the source DIB
    bool grayed = false;
    bool useTransparent = false;
    int32_t transparent = 0;     // OLE colour
    clsDIBSection* mask = nullptr;  // icons: white where the icon is not shown
    int32_t maskTop = 0;
    bool alpha = false;          // 32-bit icon with an alpha channel
};

uint32_t composePixel(uint32_t source, uint32_t under, bool grayed, uint32_t alpha) {
    int32_t r = static_cast<int32_t>((source >> 16) & 0xFFu);
    int32_t g = static_cast<int32_t>((source >> 8) & 0xFFu);
    int32_t b = static_cast<int32_t>(source & 0xFFu);
    if (grayed) {
        // Washed 70 % towards 192, then made grey: a disabled picture is a pale grey version.
        r = roundHalfEven(r * 0.3 + 192 * 0.7);
        g = roundHalfEven(g * 0.3 + 192 * 0.7);
        b = roundHalfEven(b * 0.3 + 192 * 0.7);
        const int32_t gray = std::clamp(roundHalfEven(0.3 * r + 0.59 * g + 0.11 * b), 0, 255);
        r = g = b = gray;
    }
    if (alpha < 255) {
        const auto over = [alpha](int32_t top, uint32_t bottom) {
            return static_cast<uint32_t>((static_cast<uint32_t>(top) * alpha + bottom * (255u - alpha) + 127u) / 255u);
        };
        return (over(r, (under >> 16) & 0xFFu) << 16) | (over(g, (under >> 8) & 0xFFu) << 8) | over(b, under & 0xFFu);
    }
    return (static_cast<uint32_t>(r) << 16) | (static_cast<uint32_t>(g) << 8) | static_cast<uint32_t>(b);
}

void composeOnto(HDC dest, int32_t x, int32_t y, clsDIBSection& source, const ComposeRequest& request) {
    clsDIBSection& under = t_buffers.destination;
    if (!under.Create(request.width, request.height)) return;
    under.CopyFrom(dest, x, y, request.width, request.height);
    for (int32_t row = 0; row < request.height; ++row) {
        const uint32_t* from = source.Row(request.sourceTop + row);
        uint32_t* to = under.Row(row);
        const uint32_t* maskRow = request.mask != nullptr ? request.mask->Row(request.maskTop + row) : nullptr;
        for (int32_t column = 0; column < request.width; ++column) {
            const uint32_t pixel = from[column];
            uint32_t alpha = 255;
            if (request.alpha) {
                alpha = pixel >> 24;
                if (alpha == 0) continue;
            } else if (maskRow != nullptr && (maskRow[column] & 0x00FFFFFFu) != 0) {
                continue;
            }
            if (request.useTransparent && oleFromPixel(pixel) == request.transparent) continue;
            to[column] = composePixel(pixel, to[column], request.grayed, alpha);
        }
    }
    under.PaintTo(dest, x, y, request.width, request.height);
}

// Size limits: negative means the picture's size, larger is cut to it.
int32_t limitTo(int32_t requested, int32_t actual) { return (requested < 0 || requested > actual) ? actual : requested; }

int32_t transparentColour(clsDIBSection& source, int32_t sourceTop, int32_t visibleHeight, bool bUseTransp,
                          int32_t XTransp, int32_t YTransp, int32_t lTranspColor) {
    if (!bUseTransp) return -1;
    if (lTranspColor != -1) return ConvertOLEColor(lTranspColor);
    if (XTransp < 0 || YTransp < 0 || XTransp >= source.Width() || YTransp >= visibleHeight) return -1;
    return oleFromPixel(source.Row(sourceTop + YTransp)[XTransp]);
}

void overlapIcon(HDC dest, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, bool bGrayed, HICON icon, bool bUseTransp,
                 int32_t iPicMaxWidth, int32_t iPicMaxHeight, int32_t XTransp, int32_t YTransp, int32_t lTranspColor) {
    ICONINFO parts{};
    if (!::GetIconInfo(icon, &parts)) return;
    const BitmapOwner colour(parts.hbmColor);
    const BitmapOwner mask(parts.hbmMask);
    if (X2 - X1 < 1 || Y2 - Y1 < 1 || !mask) return;
    clsDIBSection& source = t_buffers.source;
    clsDIBSection& maskBits = t_buffers.mask;
    if (!maskBits.CreateFromBitmap(mask.get())) return;
    // A monochrome icon keeps its image in the lower half of a double-height mask.
    const bool monochrome = !colour;
    if (!(monochrome ? source.CreateFromBitmap(mask.get()) : source.CreateFromBitmap(colour.get()))) return;
    const int32_t iconHeight = monochrome ? source.Height() / 2 : source.Height();
    bool alpha = false;
    if (!monochrome) {
        BITMAP info{};
        if (::GetObjectW(colour.get(), sizeof(info), &info) != 0 && info.bmBitsPixel == 32) {
            for (int32_t row = 0; row < source.Height() && !alpha; ++row) {
                const uint32_t* pixels = source.Row(row);
                for (int32_t column = 0; column < source.Width(); ++column) {
                    if ((pixels[column] >> 24) != 0) {
                        alpha = true;
                        break;
                    }
                }
            }
        }
    }
    ComposeRequest request;
    request.width = limitTo(iPicMaxWidth, source.Width());
    request.height = limitTo(iPicMaxHeight, iconHeight);
    if (request.width < 1 || request.height < 1) return;
    request.sourceTop = monochrome ? iconHeight : 0;
    request.grayed = bGrayed;
    request.transparent = transparentColour(source, request.sourceTop, iconHeight, bUseTransp, XTransp, YTransp,
                                            lTranspColor);
    request.useTransparent = request.transparent != -1;
    request.mask = &maskBits;
    request.maskTop = 0;
    request.alpha = alpha;
    const int32_t x = X1 + ((X2 - X1) - request.width) / 2;
    const int32_t y = Y1 + ((Y2 - Y1) - request.height) / 2;
    composeOnto(dest, x, y, source, request);
}

}  // namespace

void OverlapImageCoords(HDC lDestHDC, int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, bool bGrayed,
                        const CtlPictureRef& oPicImage, bool bUseTransp, int32_t iPicMaxWidth, int32_t iPicMaxHeight,
                        int32_t XTransp, int32_t YTransp, int32_t lTranspColor) {
    // Only null means no picture: a 32-bit GDI handle may have its top bit set (Wine's handle
    // generation counter reaches it once slots are reused), so it must not be read as a signed number.
    if (lDestHDC == nullptr || oPicImage.hHandle == nullptr) return;
    try {
        if (oPicImage.iType == kPicTypeIcon) {
            overlapIcon(lDestHDC, X1, Y1, X2, Y2, bGrayed, static_cast<HICON>(oPicImage.hHandle), bUseTransp,
                        iPicMaxWidth, iPicMaxHeight, XTransp, YTransp, lTranspColor);
            return;
        }
        if (X2 - X1 < 1 || Y2 - Y1 < 1) return;
        clsDIBSection& source = t_buffers.source;
        if (!source.CreateFromBitmap(static_cast<HBITMAP>(oPicImage.hHandle))) return;
        ComposeRequest request;
        request.width = limitTo(iPicMaxWidth, source.Width());
        request.height = limitTo(iPicMaxHeight, source.Height());
        if (request.width < 1 || request.height < 1) return;
        request.grayed = bGrayed;
        request.transparent =
            transparentColour(source, 0, source.Height(), bUseTransp, XTransp, YTransp, lTranspColor);
        request.useTransparent = request.transparent != -1;
        const int32_t x = X1 + ((X2 - X1) - request.width) / 2;
        const int32_t y = Y1 + ((Y2 - Y1) - request.height) / 2;
        if (!bUseTransp && !bGrayed) {
            source.PaintTo(lDestHDC, x, y, request.width, request.height);
            return;
        }
        composeOnto(lDestHDC, x, y, source, request);
    } catch (...) {
        // Drawing never raises: a pixel view that cannot be built leaves the destination as it was.
    }
}

void OverlapImageRect(HDC lDestHDC, const CTL_RECT& r, bool bGrayed, const CtlPictureRef& oPicImage, bool bUseTransp,
                      int32_t iPicMaxWidth, int32_t iPicMaxHeight, int32_t XTransp, int32_t YTransp,
                      int32_t lTranspColor) {
    OverlapImageCoords(lDestHDC, r.left, r.top, r.right, r.bottom, bGrayed, oPicImage, bUseTransp, iPicMaxWidth,
                       iPicMaxHeight, XTransp, YTransp, lTranspColor);
}
