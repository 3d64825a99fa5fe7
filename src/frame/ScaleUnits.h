// ScaleUnits: conversion of lengths between the host's scale modes (twips, points, pixels, HiMetric...).
#pragma once

#include <cstdint>

// Converts `value` from one eCtlScaleMode to another at `pixelsPerInch` on the axis concerned.
// Characters are 120 twips wide and 240 high, so the axis matters. User mode (0) and unknown
// modes are taken as twips, the unit a container without a scale of its own uses.
float ConvertScaleUnits(float value, int16_t fromMode, int16_t toMode, bool vertical, int32_t pixelsPerInch) noexcept;
