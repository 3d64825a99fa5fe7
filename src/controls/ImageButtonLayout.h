// ImageButtonLayout: where the image button puts its picture and its caption, from its size alone.
#pragma once

#include <cstdint>
#include <functional>

#include "common/CtlTypes.h"

// The eleven arrangements of picture and caption; there is no value 9.
enum eUniButtonImage_ImagePos : int32_t {
    eubiip_Top = 0,
    eubiip_Left = 1,
    eubiip_Right = 2,
    eubiip_Bottom = 3,
    eubiip_Centered = 4,
    eubiip_Top_TextNear = 5,
    eubiip_Left_TextNear = 6,
    eubiip_Right_TextNear = 7,
    eubiip_Bottom_TextNear = 8,
    eubiip_Left_TextCentered = 10,
    eubiip_Right_TextCentered = 11,
};

struct ImageButtonMetrics {
    int32_t width = 0;       // W
    int32_t height = 0;      // H
    int32_t inset = 0;       // B: 2, or 4 with the focus rectangle shown (scaled by DPI)
    int32_t gap = 3;         // between picture and text (scaled by DPI)
    int32_t textInset = 1;   // of a caption without a picture (scaled by DPI)
    int32_t pictureWidth = 0;   // pw, after shrinking; 0 without a picture
    int32_t pictureHeight = 0;  // ph
    bool hasPicture = false;
    bool hasCaption = false;
};

struct ImageButtonLayoutResult {
    CTL_RECT image;  // I: the picture is centred in it
    CTL_RECT text;   // T
    int32_t textAlign = 1;  // DT_CENTER; DT_LEFT (0) or DT_RIGHT (2) for the "near" positions
};

// Measures the caption wrapped at `width` pixels: its width and height.
using MeasureCaption = std::function<void(int32_t width, int32_t& textWidth, int32_t& textHeight)>;

// Halves are taken in floating point and rounded half to even. A position outside the table
// (9, for one) lays out nothing: both rectangles stay empty.
ImageButtonLayoutResult LayOutImageButton(const ImageButtonMetrics& m, int32_t imagePos, const MeasureCaption& measure);

// The shrink rule: a picture larger than the inner area (W - 2B by H - 2B) shrinks with its aspect
// ratio kept, rounded; a smaller one is never enlarged. False when nothing changes.
bool ShrinkPictureToFit(int32_t innerWidth, int32_t innerHeight, int32_t& pictureWidth, int32_t& pictureHeight);
