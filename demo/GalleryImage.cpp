// Swatch sheet rendering and PNG writing through WIC.
#include "GalleryImage.h"

#include <wincodec.h>

#include <vector>

#include "frame/WindowDpi.h"
#include "graphics/DrawButton.h"
#include "graphics/GdiRaii.h"
#include "graphics/modCommonDraw.h"

namespace gallery {

bool RenderSwatches(clsDIBSection& sheet, int32_t dpi) {
    const auto px = [dpi](int32_t pixels) { return ScaleToDpi(pixels, dpi); };
    if (!sheet.Create(px(kSwatchWidth), px(kSwatchHeight))) return false;
    DrawRectCoords(sheet.hDC(), 0, 0, px(kSwatchWidth), px(kSwatchHeight), 0x00FFFFFF, true);
    for (int32_t k = 0; k < 4; ++k) {
        for (int32_t s = 0; s <= 8; ++s) {
            for (int32_t c = 0; c < 4; ++c) {
                CTL_RECT cell{px(8 + 104 * c), px(8 + 340 * k + 36 * s), 0, 0};
                cell.right = cell.left + px(96);
                cell.bottom = cell.top + px(28);
                const bool pressed = c == 1 || c == 3;
                const bool rounded = c == 2 || c == 3;
                DrawButton(sheet.hDC(), cell, kSwatchBacks[k], true, -1, pressed, false, false, false, rounded, s, -1,
                           true, dpi);
            }
        }
    }
    ::GdiFlush();
    return true;
}

bool WritePng(clsDIBSection& image, const std::wstring& path) {
    ::GdiFlush();
    ComRef<IWICImagingFactory> factory;
    if (FAILED(::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                                  reinterpret_cast<void**>(factory.put())))) {
        return false;
    }
    ComRef<IWICStream> stream;
    if (FAILED(factory->CreateStream(stream.put()))) return false;
    if (FAILED(stream->InitializeFromFilename(path.c_str(), GENERIC_WRITE))) return false;
    ComRef<IWICBitmapEncoder> encoder;
    if (FAILED(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, encoder.put()))) return false;
    if (FAILED(encoder->Initialize(stream.get(), WICBitmapEncoderNoCache))) return false;
    ComRef<IWICBitmapFrameEncode> frame;
    if (FAILED(encoder->CreateNewFrame(frame.put(), nullptr))) return false;
    if (FAILED(frame->Initialize(nullptr))) return false;
    const UINT width = static_cast<UINT>(image.Width());
    const UINT height = static_cast<UINT>(image.Height());
    if (FAILED(frame->SetSize(width, height))) return false;
    WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
    if (FAILED(frame->SetPixelFormat(&format)) || format != GUID_WICPixelFormat24bppBGR) return false;
    // GDI leaves the fourth byte undefined: write three bytes a pixel so nothing turns transparent.
    const UINT stride = (width * 3 + 3) & ~3u;
    std::vector<BYTE> rows(static_cast<size_t>(stride) * height, 0);
    for (UINT y = 0; y < height; ++y) {
        const uint32_t* source = image.Row(static_cast<int32_t>(y));
        BYTE* target = rows.data() + static_cast<size_t>(y) * stride;
        for (UINT x = 0; x < width; ++x) {
            target[x * 3 + 0] = static_cast<BYTE>(source[x] & 0xFFu);
            target[x * 3 + 1] = static_cast<BYTE>((source[x] >> 8) & 0xFFu);
            target[x * 3 + 2] = static_cast<BYTE>((source[x] >> 16) & 0xFFu);
        }
    }
    if (FAILED(frame->WritePixels(height, stride, static_cast<UINT>(rows.size()), rows.data()))) return false;
    if (FAILED(frame->Commit())) return false;
    return SUCCEEDED(encoder->Commit());
}

}  // namespace gallery
