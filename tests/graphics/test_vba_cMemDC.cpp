// vba_cMemDC and clsDIBSection: the scratch DC only grows; the DIB's pixel view is 32-bit only.
#include <gtest/gtest.h>

#include "common/CtlError.h"
#include "graphics/clsDIBSection.h"
#include "graphics/vba_cMemDC.h"

namespace {

TEST(vba_cMemDC, GrowsNeverShrinksAndCopiesPictures) {
    vba_cMemDC scratch;
    EXPECT_EQ(scratch.hDC(), nullptr);
    struct Step {
        bool setWidth;
        int32_t value;
        int32_t width, height;
    };
    const Step steps[] = {{true, 40, 40, 0}, {false, 20, 40, 20}, {true, 10, 40, 20},
                          {false, 5, 40, 20}, {true, 41, 41, 20},  {false, 20, 41, 20}};
    for (const Step& s : steps) {
        if (s.setWidth) {
            scratch.Width(s.value);
        } else {
            scratch.Height(s.value);
        }
        EXPECT_EQ(scratch.Width(), s.width) << s.value;
        EXPECT_EQ(scratch.Height(), s.height) << s.value;
    }
    ASSERT_NE(scratch.hDC(), nullptr);
    BITMAP info{};
    ::GetObjectW(::GetCurrentObject(scratch.hDC(), OBJ_BITMAP), sizeof(info), &info);
    EXPECT_EQ(info.bmWidth, 41);
    EXPECT_EQ(info.bmHeight, 20);

    const uint32_t words[6] = {0x00FF0000u, 0x0000FF00u, 0x000000FFu, 0x00FFFFFFu, 0, 0x00808080u};
    const HBITMAP picture = ::CreateBitmap(3, 2, 1, 32, words);
    scratch.CreateFromPicture(picture);
    EXPECT_EQ(scratch.Width(), 41) << "a smaller picture does not shrink it";
    EXPECT_EQ(::GetPixel(scratch.hDC(), 0, 0), 0x000000FFu);
    EXPECT_EQ(::GetPixel(scratch.hDC(), 1, 0), 0x0000FF00u);
    EXPECT_EQ(::GetPixel(scratch.hDC(), 2, 1), 0x00808080u);
    EXPECT_NE(::GetObjectType(picture), 0u) << "the picture's bitmap stays the caller's";
    ::DeleteObject(picture);
}

TEST(clsDIBSection, PixelViewIsFor32BitsOnly) {
    clsDIBSection dib;
    ASSERT_TRUE(dib.Create(4, 2, 24));
    try {
        dib.Pixels32();
        FAIL() << "a 24-bit section has no 32-bit pixel view";
    } catch (const CtlError& error) {
        EXPECT_EQ(error.Source(), u"pvBuildSA3D");
        EXPECT_EQ(error.Description(), u"Cannot create Safe Array for this DIB bpp");
        EXPECT_EQ(error.Number(), static_cast<int32_t>(0x80040001u));
    }
    ASSERT_TRUE(dib.Create(4, 2, 32));
    dib.Row(1)[3] = 0x00ABCDEFu;
    EXPECT_EQ(::GetPixel(dib.hDC(), 3, 1), 0x00EFCDABu);
    EXPECT_FALSE(dib.Create(0, 5));
    EXPECT_EQ(dib.hDC(), nullptr);
}

}  // namespace
