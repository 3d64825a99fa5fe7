#include "graphics/clsLineGSMini.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "graphics/GdiRaii.h"
#include "graphics/modCommonDraw.h"

namespace {

// Inside the ellipse of radii (ax, ay) around the origin; a radius of 0 or less holds nothing.
bool inside(float dx, float dy, float ax, float ay) noexcept {
    if (ax <= 0.0F || ay <= 0.0F) return false;
    const float u = dx / ax;
    const float v = dy / ay;
    return u * u + v * v <= 1.0F;
}

uint8_t blendChannel(uint8_t under, uint8_t over, float share) noexcept {
    const float value = static_cast<float>(under) + (static_cast<float>(over) - static_cast<float>(under)) * share;
    return static_cast<uint8_t>(std::clamp(std::lround(value), 0L, 255L));
}

}  // namespace

float clsLineGSMini::Coverage(int32_t px, int32_t py, float cx, float cy, float rx, float ry) noexcept {
    // The line is the band between the ellipses half a pixel inside and outside the radii.
    const float outerX = rx + 0.5F;
    const float outerY = ry + 0.5F;
    const float innerX = rx - 0.5F;
    const float innerY = ry - 0.5F;
    int32_t hits = 0;
    for (int32_t sy = 0; sy < kSamples; ++sy) {
        const float dy = static_cast<float>(py - cy) + (static_cast<float>(sy) + 0.5F) / kSamples - 0.5F;
        for (int32_t sx = 0; sx < kSamples; ++sx) {
            const float dx = static_cast<float>(px - cx) + (static_cast<float>(sx) + 0.5F) / kSamples - 0.5F;
            if (inside(dx, dy, outerX, outerY) && !inside(dx, dy, innerX, innerY)) ++hits;
        }
    }
    return static_cast<float>(hits) / static_cast<float>(kSamples * kSamples);
}

void clsLineGSMini::CircleGP(HDC hdc, float cx, float cy, float rx, float ry, int32_t lColor) const noexcept {
    // Radii beyond kMaxRadius would ask for a bitmap of gigabytes: such a ring is no control's.
    if (hdc == nullptr || !(rx >= 0.0F) || !(ry >= 0.0F) || rx > kMaxRadius || ry > kMaxRadius) return;
    if (!std::isfinite(cx) || !std::isfinite(cy) || std::fabs(cx) > 1.0e6F || std::fabs(cy) > 1.0e6F) return;
    const int32_t left = static_cast<int32_t>(std::floor(cx - rx - 1.0F));
    const int32_t top = static_cast<int32_t>(std::floor(cy - ry - 1.0F));
    const int32_t width = static_cast<int32_t>(std::ceil(cx + rx + 1.0F)) - left + 1;
    const int32_t height = static_cast<int32_t>(std::ceil(cy + ry + 1.0F)) - top + 1;

    // The pixels under the ring are read into a 32-bit bitmap, blended there and written back.
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // top-down rows
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    const BitmapOwner bitmap(::CreateDIBSection(hdc, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    const MemoryDCOwner work(::CreateCompatibleDC(hdc));
    if (!bitmap || bits == nullptr || !work) return;
    const ScopedSelect selected(work.get(), bitmap.get());
    if (!::BitBlt(work.get(), 0, 0, width, height, hdc, left, top, SRCCOPY)) return;
    ::GdiFlush();

    const auto color = static_cast<uint32_t>(ConvertOLEColor(lColor));  // 0x00BBGGRR
    const auto red = static_cast<uint8_t>(color & 0xFF);
    const auto green = static_cast<uint8_t>((color >> 8) & 0xFF);
    const auto blue = static_cast<uint8_t>((color >> 16) & 0xFF);
    auto* pixels = static_cast<uint8_t*>(bits);  // B, G, R, unused per pixel
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            const float share = Coverage(left + x, top + y, cx, cy, rx, ry);
            if (share <= 0.0F) continue;
            uint8_t* p = pixels + (static_cast<size_t>(y) * width + x) * 4;
            p[0] = blendChannel(p[0], blue, share);
            p[1] = blendChannel(p[1], green, share);
            p[2] = blendChannel(p[2], red, share);
        }
    }
    ::BitBlt(hdc, left, top, width, height, work.get(), 0, 0, SRCCOPY);
}
