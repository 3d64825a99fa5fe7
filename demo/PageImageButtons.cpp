// Gallery page: image buttons with pictures in every placement, every style, the default and
// cancel marks, Tristate, disabled, round regions, shrunk and see-through pictures, captions in
// many scripts, and the arrow buttons other controls embed.
#include <memory>
#include <vector>

#include "GalleryPage.h"
#include "controls/ChildImageButton.h"
#include "controls/ctlUniButtonImageXP.h"
#include "frame/Win32Surface.h"
#include "graphics/ArrowPictures.h"
#include "graphics/DrawButton.h"
#include "graphics/GdiRaii.h"
#include "graphics/clsFontHDC.h"
#include "graphics/modCommonDraw.h"

namespace {

int S(int pixels) { return GalleryScale(pixels); }

constexpr int32_t kSeeThrough = 0x00FF00FF;  // magenta at 0,0: the default transparent colour

// A picture of `size` pixels: a disc of `colour` with a lighter square inside, on magenta.
std::shared_ptr<StdPicture> discPicture(int size, int32_t colour) {
    const WindowDCGuard screen(nullptr);
    BitmapOwner bitmap(::CreateCompatibleBitmap(screen.get(), size, size));
    const MemoryDCOwner dc(::CreateCompatibleDC(screen.get()));
    if (!bitmap || !dc) return nullptr;
    {
        const ScopedSelect target(dc.get(), bitmap.get());
        DrawRectCoords(dc.get(), 0, 0, size, size, kSeeThrough, true);
        pvDrawEllipse(dc.get(), 1, 1, size - 1, size - 1, true, colour, colour, 1, PS_SOLID);
        const int inner = size / 4;
        DrawRectCoords(dc.get(), size / 2 - inner / 2, size / 2 - inner / 2, size / 2 + inner / 2 + 1,
                       size / 2 + inner / 2 + 1, ColorInc(colour, 90), true);
    }
    return StdPicture::FromBitmap(bitmap.release(), true);
}

struct Placed {
    std::unique_ptr<Win32Surface> surface;
    std::unique_ptr<ctlUniButtonImageXP> button;  // declared after the surface: goes first
};

class ImageButtonsPage : public GalleryPage {
public:
    void Create(HWND parent, const RECT& area) override {
        m_face = GalleryFaceFor();
        m_origin = POINT{area.left, area.top};
        const int left = 12;
        // Pictures are the user's and never rescaled: the page, as the user, makes them for its DPI.
        const auto small = discPicture(S(16), 0x00C06020);

        // The eleven placements (9 is none).
        const struct {
            int32_t pos;
            const char16_t* name;
        } places[] = {{eubiip_Top, u"Top"},
                      {eubiip_Left, u"Left"},
                      {eubiip_Right, u"Right"},
                      {eubiip_Bottom, u"Bottom"},
                      {eubiip_Centered, u"Centered"},
                      {eubiip_Top_TextNear, u"Top, near"},
                      {eubiip_Left_TextNear, u"Left, near"},
                      {eubiip_Right_TextNear, u"Right, near"},
                      {eubiip_Bottom_TextNear, u"Bottom, near"},
                      {eubiip_Left_TextCentered, u"Left, centred"},
                      {eubiip_Right_TextCentered, u"Right, centred"}};
        for (int i = 0; i < 11; ++i) {
            ctlUniButtonImageXP& b = add(parent, left + (i % 6) * 112, 32 + (i / 6) * 62, 106, 56);
            b.Caption(places[i].name);
            b.Picture(small);
            b.ImagePos(places[i].pos);
        }

        // Every style, with an access key; then the roles and states.
        int y = 32 + 2 * 62 + 28;
        const char16_t* const styles[] = {u"&Flat", u"&Xp", u"X&pEx", u"&Vista", u"&Glass", u"Vista&2", u"Vista&3",
                                          u"Vista&4", u"Xp&8"};
        for (int s = 0; s <= 8; ++s) {
            ctlUniButtonImageXP& b = add(parent, left + s * 100, y, 94, 30);
            b.Caption(styles[s]);
            b.Style(s);
            b.Picture(small);
            b.ImagePos(eubiip_Left);
            b.BackColor(s % 2 == 0 ? 0x00E0C0A0 : 0x8000000F);
        }
        y += 36;
        const struct {
            const char16_t* caption;
            int kind;
        } roles[] = {{u"Default (&OK)", 0}, {u"Cancel", 1}, {u"Disabled", 2}, {u"Tristate, pressed", 3},
                     {u"Round region", 4}, {u"Focus shown", 5}};
        for (int i = 0; i < 6; ++i) {
            Placed& placed = addPlaced(parent, left + i * 150, y, 144, 30);
            ctlUniButtonImageXP& b = *placed.button;
            b.Caption(roles[i].caption);
            b.Picture(small);
            b.ImagePos(eubiip_Left_TextCentered);
            switch (roles[i].kind) {
                case 0: placed.surface->HostExtender().Default(true); break;
                case 1: placed.surface->HostExtender().Cancel(true); break;
                case 2: b.Enabled(false); break;
                case 3:
                    b.Tristate(true);
                    b.Pressed(true);
                    break;
                case 4: b.UseRoundRegions(true); break;
                case 5: b.GotFocus(); break;
                default: break;
            }
        }

        // Pictures: shrunk to fit, and the three transparency rules.
        y += 60;
        const auto large = discPicture(S(48), 0x00208040);
        const struct {
            const char16_t* caption;
            int32_t transparency;
            bool large;
        } pictures[] = {{u"48 px, shrunk", eUniImage_TranspType_ByCoords, true},
                        {u"No transparency", eUniImage_TranspType_NoTransp, false},
                        {u"By colour", eUniImage_TranspType_ByColor, false},
                        {u"By pixel 0,0", eUniImage_TranspType_ByCoords, false}};
        for (int i = 0; i < 4; ++i) {
            ctlUniButtonImageXP& b = add(parent, left + i * 150, y, 144, 40);
            b.Caption(pictures[i].caption);
            b.Picture(pictures[i].large ? large : small);
            b.ImagePos(eubiip_Left);
            b.TransparencyType(static_cast<eUniImage_TranspType>(pictures[i].transparency));
            b.TransparentColor(kSeeThrough);
        }
        // Arrow buttons as other controls embed them.
        const eArrowDirection arrows[] = {eArrowDirection::Up, eArrowDirection::Down, eArrowDirection::Left,
                                          eArrowDirection::Right};
        for (int i = 0; i < 4; ++i) {
            auto child = std::make_unique<ChildImageButton>(parent, m_origin.x + S(left + 620 + i * 24),
                                                            m_origin.y + S(y + 10), S(20), S(20));
            child->ShowArrow(arrows[i], 0x00202020);
            m_arrows.push_back(std::move(child));
        }

        // Captions in many scripts.
        y += 70;
        const char16_t* const scripts[] = {
            u"\u0421\u043E\u0445\u0440\u0430\u043D\u0438\u0442\u044C",     // Cyrillic
            u"\u4FDD\u5B58\u6587\u4EF6",                                     // Chinese
            u"\u4FDD\u5B58\u3059\u308B",                                     // Japanese
            u"\u062D\u0641\u0638",                                           // Arabic
            u"\u0938\u0939\u0947\u091C\u0947\u0902",                         // Devanagari
            u"\u0391\u03C0\u03BF\u03B8\u03AE\u03BA\u03B5\u03C5\u03C3\u03B7", // Greek
            u"Save \U0001F4BE",                                              // a surrogate pair
        };
        for (int i = 0; i < 7; ++i) {
            ctlUniButtonImageXP& b = add(parent, left + i * 128, y, 122, 48);
            b.Caption(scripts[i]);
            b.Picture(small);
            b.ImagePos(i % 2 == 0 ? eubiip_Top : eubiip_Right);
            b.Font(std::make_shared<StdFont>(GalleryFaceFor(scripts[i]), 10.0F));
        }
        m_scriptsTop = y;
        m_picturesTop = y - 70;
        m_stylesTop = 32 + 2 * 62 + 28;
    }

    void Paint(HDC hdc, const RECT& area) override {
        clsFontHDC font;
        try {
            font.SetFontToDC(hdc, m_face, GalleryPoints(hdc, 10), 0x00202020, true);
        } catch (...) {
        }
        ::SetBkMode(hdc, TRANSPARENT);
        const auto text = [&](const char16_t* caption, int l, int t) {
            DrawTextCoords(hdc, caption, area.left + S(l), area.top + S(t), area.left + S(l + 700), area.top + S(t + 18),
                           DT_SINGLELINE | DT_NOPREFIX);
        };
        text(u"ctlUniButtonImageXP: the picture's placements", 12, 10);
        text(u"Styles (with access keys), and the roles and states", 12, m_stylesTop - 22);
        text(u"Pictures: shrunk to fit, transparency rules; arrow buttons as child windows", 12, m_picturesTop - 22);
        text(u"Captions in many scripts", 12, m_scriptsTop - 22);
    }

private:
    Placed& addPlaced(HWND parent, int x, int y, int width, int height) {
        auto surface = std::make_unique<Win32Surface>(parent, m_origin.x + S(x), m_origin.y + S(y), S(width), S(height));
        surface->Font(std::make_shared<StdFont>(m_face, 9.0F));
        auto button = std::make_unique<ctlUniButtonImageXP>(*surface);
        m_buttons.push_back({std::move(surface), std::move(button)});
        return m_buttons.back();
    }
    ctlUniButtonImageXP& add(HWND parent, int x, int y, int width, int height) {
        return *addPlaced(parent, x, y, width, height).button;
    }

    CtlString m_face;
    POINT m_origin{0, 0};
    int m_stylesTop = 0;
    int m_picturesTop = 0;
    int m_scriptsTop = 0;
    std::vector<Placed> m_buttons;
    std::vector<std::unique_ptr<ChildImageButton>> m_arrows;
};

}  // namespace

TC_GALLERY_PAGE(ImageButtonsPage, 22, L"Image buttons")
