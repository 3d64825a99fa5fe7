// Gallery image output: the DrawButton swatch sheet and PNG files written through the imaging codecs.
#pragma once

#include <cstdint>
#include <string>

#include "graphics/clsDIBSection.h"

namespace gallery {

// The sheet at 96 DPI: 424 x 1368, white, one DrawButton cell per back colour k (0..3), style s
// (0..8) and column c (0..3): left 8 + 104c, top 8 + 340k + 36s, 96 x 28; pressed in columns 1 and
// 3, rounded in columns 2 and 3. At another DPI every length is scaled (ScaleToDpi) and each
// cell drawn by DrawButton at that DPI.
constexpr int32_t kSwatchWidth = 424;
constexpr int32_t kSwatchHeight = 1368;
constexpr int32_t kSwatchBacks[4] = {0x00F0F0F0, 0x00FFFFFF, 0x00404040, 0x00D08040};

bool RenderSwatches(clsDIBSection& sheet, int32_t dpi = 96);

// Writes the 32-bpp DIB as an opaque 24-bit PNG. COM must be initialised on the thread.
bool WritePng(clsDIBSection& image, const std::wstring& path);

}  // namespace gallery
