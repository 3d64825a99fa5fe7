// MaskRegion: builds a window region from a mask bitmap (every pixel not of the mask colour).
#pragma once

#include <cstdint>

#include "platform/win32/WinApi.h"

// The caller owns the region returned; an all-hole or unreadable bitmap gives an empty region,
// never nullptr, so that a transparent surface without content shows nothing rather than all.
HRGN CreateRegionFromMask(HBITMAP hMask, COLORREF holeColor);
