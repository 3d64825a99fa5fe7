// The gallery's --swatches sheet: its size, white between cells, and cells equal to DrawButton drawn alone.
#include <gtest/gtest.h>

#include <wincodec.h>

#include <string>
#include <vector>

#include "DibCanvas.h"
#include "graphics/DrawButton.h"
#include "graphics/GdiRaii.h"

namespace {

// The build hands in a host path; under Wine the host's root is drive Z:.
std::wstring windowsPath(const std::string& path) {
    std::wstring wide(path.begin(), path.end());
    if (!wide.empty() && wide[0] == L'/') wide = L"Z:" + wide;
    for (wchar_t& c : wide) {
        if (c == L'/') c = L'\\';
    }
    return wide;
}

bool runGallery(const std::wstring& arguments) {
    std::wstring command = L"\"" + windowsPath(TC_GALLERY_EXE) + L"\" " + arguments;
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process{};
    if (!::CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) {
        return false;
    }
    const DWORD waited = ::WaitForSingleObject(process.hProcess, 120000);
    DWORD code = 1;
    ::GetExitCodeProcess(process.hProcess, &code);
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    return waited == WAIT_OBJECT_0 && code == 0;
}

struct Image {
    UINT width = 0;
    UINT height = 0;
    std::vector<uint32_t> pixels;  // 0x00RRGGBB
    int32_t At(UINT x, UINT y) const {
        const uint32_t word = pixels[y * width + x];
        return static_cast<int32_t>(((word >> 16) & 0xFFu) | (word & 0xFF00u) | ((word & 0xFFu) << 16));
    }
};

bool readPng(const std::wstring& path, Image& image) {
    ComRef<IWICImagingFactory> factory;
    if (FAILED(::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                                  reinterpret_cast<void**>(factory.put())))) {
        return false;
    }
    ComRef<IWICBitmapDecoder> decoder;
    if (FAILED(factory->CreateDecoderFromFilename(path.c_str(), nullptr, GENERIC_READ, WICDecodeMetadataCacheOnLoad,
                                                  decoder.put()))) {
        return false;
    }
    ComRef<IWICBitmapFrameDecode> frame;
    if (FAILED(decoder->GetFrame(0, frame.put()))) return false;
    ComRef<IWICFormatConverter> converter;
    if (FAILED(factory->CreateFormatConverter(converter.put()))) return false;
    if (FAILED(converter->Initialize(frame.get(), GUID_WICPixelFormat32bppBGR, WICBitmapDitherTypeNone, nullptr, 0.0,
                                     WICBitmapPaletteTypeCustom))) {
        return false;
    }
    converter->GetSize(&image.width, &image.height);
    image.pixels.assign(static_cast<size_t>(image.width) * image.height, 0);
    return SUCCEEDED(converter->CopyPixels(nullptr, image.width * 4, static_cast<UINT>(image.pixels.size() * 4),
                                           reinterpret_cast<BYTE*>(image.pixels.data())));
}

TEST(SwatchSheet, SizeWhiteGapsAndCellsAsDrawnAlone) {
    ASSERT_TRUE(SUCCEEDED(::CoInitialize(nullptr)));
    {
        wchar_t folder[MAX_PATH] = {};
        ::GetTempPathW(MAX_PATH, folder);
        const std::wstring path = std::wstring(folder) + L"tarnwick-swatches-test.png";
        ::DeleteFileW(path.c_str());
        ASSERT_TRUE(runGallery(L"--swatches \"" + path + L"\""));
        Image sheet;
        ASSERT_TRUE(readPng(path, sheet));
        ::DeleteFileW(path.c_str());
        ASSERT_EQ(sheet.width, 424u);
        ASSERT_EQ(sheet.height, 1368u);

        const int32_t backs[4] = {0x00F0F0F0, 0x00FFFFFF, 0x00404040, 0x00D08040};
        const auto inCell = [](UINT x, UINT y) {
            if (x < 8 || y < 8) return false;
            const UINT column = (x - 8) / 104, columnOffset = (x - 8) % 104;
            if (column > 3 || columnOffset >= 96) return false;
            const UINT block = (y - 8) / 340, blockOffset = (y - 8) % 340;
            if (block > 3) return false;
            const UINT row = blockOffset / 36, rowOffset = blockOffset % 36;
            return row <= 8 && rowOffset < 28;
        };
        int outsideNotWhite = 0;
        for (UINT y = 0; y < sheet.height; ++y)
            for (UINT x = 0; x < sheet.width; ++x)
                if (!inCell(x, y) && sheet.At(x, y) != 0x00FFFFFF) ++outsideNotWhite;
        EXPECT_EQ(outsideNotWhite, 0);

        struct Cell {
            int k, s, c;
        };
        const Cell cells[] = {{0, 0, 0}, {0, 3, 1}, {1, 4, 2}, {2, 4, 3}, {2, 7, 0}, {3, 8, 3}, {3, 5, 2}, {1, 6, 1}};
        for (const Cell& cell : cells) {
            // Drawn alone on white at the same offset inside a cell-sized canvas with a margin.
            DibCanvas alone(112, 44, 0x00FFFFFF);
            CTL_RECT rc{8, 8, 104, 36};
            DrawButton(alone.dc(), rc, backs[cell.k], true, -1, cell.c == 1 || cell.c == 3, false, false, false,
                       cell.c == 2 || cell.c == 3, cell.s, -1);
            const UINT left = 8 + 104 * static_cast<UINT>(cell.c);
            const UINT top = 8 + 340 * static_cast<UINT>(cell.k) + 36 * static_cast<UINT>(cell.s);
            int differing = 0;
            for (int32_t y = 0; y < 28; ++y)
                for (int32_t x = 0; x < 96; ++x)
                    if (sheet.At(left + static_cast<UINT>(x), top + static_cast<UINT>(y)) != alone.At(8 + x, 8 + y)) {
                        ++differing;
                    }
            EXPECT_EQ(differing, 0) << "cell k=" << cell.k << " s=" << cell.s << " c=" << cell.c;
        }
    }
    ::CoUninitialize();
}

}  // namespace
