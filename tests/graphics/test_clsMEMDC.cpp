// clsMEMDC: creation, errors, resizing, cloning, painting, bitmap hand-over and the picture object.
#include <gtest/gtest.h>

#include <olectl.h>

#include "common/CtlError.h"
#include "graphics/clsMEMDC.h"

namespace {

SIZE bitmapSize(HGDIOBJ bitmap) {
    BITMAP info{};
    ::GetObjectW(bitmap, sizeof(info), &info);
    return SIZE{info.bmWidth, info.bmHeight};
}

int32_t pixel(HDC dc, int x, int y) { return static_cast<int32_t>(::GetPixel(dc, x, y)); }

void paintQuadrants(clsMEMDC& dc) {
    ::SetPixel(dc.hDC(), 0, 0, 0x000000FF);
    ::SetPixel(dc.hDC(), 1, 0, 0x0000FF00);
    ::SetPixel(dc.hDC(), 0, 1, 0x00FF0000);
    ::SetPixel(dc.hDC(), 1, 1, 0x00FFFFFF);
}

TEST(clsMEMDC, CreateDcSizesAndModes) {
    struct Case {
        int32_t width, height, mode;
        int32_t expectedWidth, expectedHeight;
    };
    const Case cases[] = {{10, 5, eMemDcBkMode_OPAQUE, 10, 5},
                          {-3, -1, eMemDcBkMode_TRANSPARENT, 1, 1},
                          {7, -20, eMemDcBkMode_OPAQUE, 7, 1}};
    for (const Case& c : cases) {
        clsMEMDC dc;
        dc.CreateDC(c.width, c.height, c.mode);
        ASSERT_NE(dc.hDC(), nullptr);
        ASSERT_NE(dc.hBmp(), nullptr);
        EXPECT_EQ(dc.Width(), c.expectedWidth);
        EXPECT_EQ(dc.Height(), c.expectedHeight);
        const SIZE size = bitmapSize(dc.hBmp());
        EXPECT_EQ(size.cx, c.expectedWidth);
        EXPECT_EQ(size.cy, c.expectedHeight);
        EXPECT_EQ(::GetCurrentObject(dc.hDC(), OBJ_BITMAP), dc.hBmp());
        EXPECT_EQ(dc.BkMode(), c.mode);
        EXPECT_EQ(::GetStretchBltMode(dc.hDC()), COLORONCOLOR);
        // The screen's depth, not the single plane of a fresh memory DC.
        BITMAP info{};
        ::GetObjectW(dc.hBmp(), sizeof(info), &info);
        EXPECT_GT(info.bmBitsPixel, 1);
    }
    // Creating again replaces the content.
    clsMEMDC dc;
    dc.CreateDC(4, 4);
    const HBITMAP first = dc.hBmp();
    dc.CreateDC(6, 2);
    EXPECT_EQ(dc.Width(), 6);
    EXPECT_EQ(::GetObjectType(first), 0u) << "the first bitmap is deleted";
}

TEST(clsMEMDC, CreateDcReportsARefusedBitmap) {
    clsMEMDC dc;
    try {
        dc.CreateDC(200000, 200000, eMemDcBkMode_OPAQUE);
        FAIL() << "a 160 GB bitmap cannot be made";
    } catch (const CtlError& error) {
        EXPECT_EQ(error.Number(), static_cast<int32_t>(0x80040001u));
        EXPECT_EQ(error.Source(), u"clsMemDC.CreateDC");
        EXPECT_EQ(error.Description(), u"clsMemDC.CreateDC.hBmp not created");
    }
    EXPECT_EQ(dc.hBmp(), nullptr);
    dc.Destroy();
    dc.Destroy();
    EXPECT_EQ(dc.hDC(), nullptr);
}

TEST(clsMEMDC, EmptyObjectDoesNothing) {
    clsMEMDC dc;
    EXPECT_EQ(dc.BkMode(), 0);
    EXPECT_EQ(dc.BkColor(), 0);
    dc.BkMode(eMemDcBkMode_OPAQUE);
    dc.BkColor(0x123456);
    dc.DrawBackColor(0x123456);
    dc.PaintPicture(nullptr);
    EXPECT_EQ(dc.ReleasehBmp(), nullptr);
    EXPECT_FALSE(dc.Picture());
    EXPECT_EQ(dc.Width(), 0);
}

TEST(clsMEMDC, BackColourAndFill) {
    clsMEMDC dc;
    dc.CreateDC(3, 2, eMemDcBkMode_OPAQUE);
    dc.BkColor(static_cast<int32_t>(0x80000005u));
    EXPECT_EQ(dc.BkColor(), static_cast<int32_t>(::GetSysColor(COLOR_WINDOW)));
    dc.DrawBackColor(0x00102030);
    EXPECT_EQ(pixel(dc.hDC(), 0, 0), 0x00102030);
    EXPECT_EQ(pixel(dc.hDC(), 2, 1), 0x00102030);
    dc.DrawBackColor(static_cast<int32_t>(0x8000000Fu));
    EXPECT_EQ(pixel(dc.hDC(), 1, 1), static_cast<int32_t>(::GetSysColor(COLOR_BTNFACE)));
}

TEST(clsMEMDC, ResizeCutKeepsTopLeftAndMode) {
    clsMEMDC dc;
    dc.CreateDC(2, 2, eMemDcBkMode_OPAQUE);
    paintQuadrants(dc);
    dc.ResizeCutDC(5, 3, eMemDcBkMode_TRANSPARENT);
    EXPECT_EQ(dc.Width(), 5);
    EXPECT_EQ(dc.Height(), 3);
    EXPECT_EQ(dc.BkMode(), eMemDcBkMode_OPAQUE) << "the mode comes from the old DC";
    EXPECT_EQ(pixel(dc.hDC(), 0, 0), 0x000000FF);
    EXPECT_EQ(pixel(dc.hDC(), 1, 0), 0x0000FF00);
    EXPECT_EQ(pixel(dc.hDC(), 0, 1), 0x00FF0000);
    EXPECT_EQ(pixel(dc.hDC(), 1, 1), 0x00FFFFFF);
    // Cut to 1 wide; a height below 1 keeps the height.
    dc.ResizeCutDC(1, 0);
    EXPECT_EQ(dc.Width(), 1);
    EXPECT_EQ(dc.Height(), 3);
    EXPECT_EQ(pixel(dc.hDC(), 0, 1), 0x00FF0000);
    // Without a DC it is CreateDC, with the given mode.
    clsMEMDC fresh;
    fresh.ResizeCutDC(4, 4, eMemDcBkMode_OPAQUE);
    EXPECT_EQ(fresh.Width(), 4);
    EXPECT_EQ(fresh.BkMode(), eMemDcBkMode_OPAQUE);
}

TEST(clsMEMDC, ResizeAdaptStretches) {
    clsMEMDC dc;
    dc.CreateDC(2, 2, eMemDcBkMode_OPAQUE);
    paintQuadrants(dc);
    dc.ResizeAdaptDC(4, 0);  // height below 1 keeps 2
    EXPECT_EQ(dc.Width(), 4);
    EXPECT_EQ(dc.Height(), 2);
    EXPECT_EQ(dc.BkMode(), eMemDcBkMode_OPAQUE);
    const int32_t expected[2][4] = {{0x000000FF, 0x000000FF, 0x0000FF00, 0x0000FF00},
                                    {0x00FF0000, 0x00FF0000, 0x00FFFFFF, 0x00FFFFFF}};
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 4; ++x) EXPECT_EQ(pixel(dc.hDC(), x, y), expected[y][x]) << x << "," << y;
    dc.ResizeAdaptDC(0, 4);
    EXPECT_EQ(dc.Width(), 4);
    EXPECT_EQ(pixel(dc.hDC(), 3, 3), 0x00FFFFFF);
    EXPECT_EQ(pixel(dc.hDC(), 0, 2), 0x00FF0000);
}

TEST(clsMEMDC, ClonesAndPaints) {
    clsMEMDC source;
    source.CreateDC(3, 3, eMemDcBkMode_OPAQUE);
    source.DrawBackColor(0x00000080);
    ::SetPixel(source.hDC(), 2, 2, 0x00ABCDEF);

    clsMEMDC part;
    part.CloneFromHdc(source.hDC(), 1, 1, 2, 2, SRCCOPY);
    EXPECT_EQ(part.Width(), 2);
    EXPECT_EQ(pixel(part.hDC(), 1, 1), 0x00ABCDEF);
    EXPECT_EQ(pixel(part.hDC(), 0, 0), 0x00000080);
    EXPECT_EQ(part.BkMode(), eMemDcBkMode_OPAQUE);

    clsMEMDC whole;
    whole.CloneFromHdc(source.hDC(), 0, 0, -1, -1, SRCCOPY);
    EXPECT_EQ(whole.Width(), 3);
    EXPECT_EQ(whole.Height(), 3);

    // The bitmap stays the caller's and alive.
    const HBITMAP theirs = source.ReleasehBmp();
    ASSERT_NE(theirs, nullptr);
    EXPECT_EQ(source.hDC(), nullptr);
    clsMEMDC copy;
    copy.CloneFromHBmp(theirs, eMemDcBkMode_OPAQUE);
    EXPECT_NE(::GetObjectType(theirs), 0u);
    EXPECT_EQ(copy.Width(), 3);
    EXPECT_EQ(copy.BkMode(), eMemDcBkMode_OPAQUE);
    EXPECT_EQ(pixel(copy.hDC(), 2, 2), 0x00ABCDEF);
    ::DeleteObject(theirs);

    // PaintPicture: equal sizes copy, negative sizes mean the whole.
    clsMEMDC target;
    target.CreateDC(6, 6);
    target.DrawBackColor(0);
    copy.PaintPicture(target.hDC(), 2, 1);
    EXPECT_EQ(pixel(target.hDC(), 4, 3), 0x00ABCDEF);
    EXPECT_EQ(pixel(target.hDC(), 1, 1), 0);
    EXPECT_EQ(pixel(target.hDC(), 2, 1), 0x00000080);
    copy.PaintPicture(target.hDC(), 0, 0, 6, 6, 0, 0, -1, -1, SRCCOPY);  // stretched 2x
    EXPECT_EQ(pixel(target.hDC(), 5, 5), 0x00ABCDEF);
    EXPECT_EQ(pixel(target.hDC(), 4, 4), 0x00ABCDEF);
    EXPECT_EQ(pixel(target.hDC(), 3, 3), 0x00000080);
}

TEST(clsMEMDC, PictureTakesTheBitmapOnce) {
    ASSERT_TRUE(SUCCEEDED(::CoInitialize(nullptr)));
    {
        clsMEMDC dc;
        dc.CreateDC(4, 3);
        const HBITMAP bitmap = dc.hBmp();
        ComRef<IDispatch> picture = dc.Picture();
        ASSERT_TRUE(picture);
        EXPECT_EQ(dc.hDC(), nullptr);
        EXPECT_EQ(dc.hBmp(), nullptr);
        EXPECT_FALSE(dc.Picture()) << "a second read yields nothing";
        ComRef<IPicture> asPicture;
        ASSERT_TRUE(SUCCEEDED(picture->QueryInterface(IID_IPicture, reinterpret_cast<void**>(asPicture.put()))));
        OLE_HANDLE handle = 0;
        asPicture->get_Handle(&handle);
        EXPECT_EQ(reinterpret_cast<HBITMAP>(static_cast<uintptr_t>(handle)), bitmap);
        short type = 0;
        asPicture->get_Type(&type);
        EXPECT_EQ(type, PICTYPE_BITMAP);
        EXPECT_NE(::GetObjectType(bitmap), 0u);
        asPicture.reset();
        picture.reset();
        EXPECT_EQ(::GetObjectType(bitmap), 0u) << "the picture owned the bitmap and deleted it";
    }
    ::CoUninitialize();
}

}  // namespace
