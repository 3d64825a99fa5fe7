#include "controls/UniLabelBase.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <oleacc.h>

#include "graphics/DrawButton.h"
#include "graphics/clsFontHDC.h"
#include "graphics/clsMEMDC.h"
#include "graphics/modCommonDraw.h"

namespace {

constexpr int32_t kExpandTabs = DT_EXPANDTABS;
constexpr int32_t kMeasureWrapped = DT_CALCRECT | DT_EXPANDTABS | DT_WORDBREAK;  // 1104
constexpr int32_t kMeasureLines = DT_CALCRECT | DT_EXPANDTABS;                   // 1088

// Drawing resumes at the next statement when one fails; nothing leaves DrawControl.
template <class Step>
void skipOnError(Step&& step) noexcept {
    try {
        step();
    } catch (...) {
    }
}

std::vector<CtlString> captionLines(const CtlString& caption) {
    CtlString text;
    text.reserve(caption.size());
    for (size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == u'\n' && i > 0 && caption[i - 1] == u'\r') continue;  // CR LF -> CR
        text.push_back(caption[i]);
    }
    std::vector<CtlString> lines;
    size_t start = 0;
    for (;;) {
        const size_t end = text.find(u'\r', start);
        lines.push_back(text.substr(start, end == CtlString::npos ? CtlString::npos : end - start));
        if (end == CtlString::npos) break;
        start = end + 1;
    }
    return lines;
}

}  // namespace

UniLabelBase::UniLabelBase(ControlSurface& surface, ctlUniLabelEvents* events)
    : ControlFrame(surface, events), m_labelEvents(events) {}

void UniLabelBase::Advise(ctlUniLabelEvents* events) noexcept {
    m_labelEvents = events;
    SetEvents(events);
}

// ---- persistence ----

void UniLabelBase::InitProperties() {
    m_sCaption.clear();
    try {
        m_sCaption = Surface().Extender().Name();  // a new label shows its own name
    } catch (...) {
    }
    m_lBackColor = kDefaultBackColor;
    m_lForeColor = kDefaultForeColor;
    m_lBorderColor = -1;
    m_iAlignment = UniLabel_Align_Left;
    m_iVAlignment = UniLabel_VAlign_Top;
    m_iBackStyle = UniLabel_BS_Opaque;
    m_iBorderStyle = UniLabel_BS_None;
    m_bAutoSize = false;
    m_sTip.clear();
    m_iStyle = 0;
    m_iMargin = 0;
    m_bRoundedBorders = false;
    m_lBackColorOut = -1;
    m_bUseRoundRegions = false;
}

void UniLabelBase::ReadProperties(PropertyBag& bag) {
    ControlSurface& surface = Surface();
    m_sCaption = ReadStringProperty(bag, u"Caption");
    m_lBackColor = ReadLongProperty(bag, u"BackColor", kDefaultBackColor);
    m_lForeColor = ReadLongProperty(bag, u"ForeColor", kDefaultForeColor);
    m_lBorderColor = ReadLongProperty(bag, u"BorderColor", -1);
    m_iAlignment = static_cast<eUniLabel_TextAlign>(ReadLongProperty(bag, u"Alignment", 0));
    m_iVAlignment = static_cast<eUniLabel_TextVAlign>(ReadLongProperty(bag, u"VAlignment", 0));
    m_iBackStyle = static_cast<eUniLabel_BackStyle>(ReadLongProperty(bag, u"BackStyle", 1));
    m_iBorderStyle = static_cast<eUniLabel_BorderStyle>(ReadLongProperty(bag, u"BorderStyle", 0));
    m_bAutoSize = ReadBoolProperty(bag, u"AutoSize", false);
    m_sTip = ReadStringProperty(bag, u"Tip");
    m_iStyle = ReadLongProperty(bag, u"Style", 0);
    surface.Enabled(ReadBoolProperty(bag, u"Enabled", true));
    m_iMargin = ReadIntegerProperty(bag, u"Margin", 0);
    m_bRoundedBorders = ReadBoolProperty(bag, u"RoundedBorders", false);
    m_lBackColorOut = ReadLongProperty(bag, u"BackColorOut", -1);
    m_bUseRoundRegions = ReadBoolProperty(bag, u"UseRoundRegions", false);
    const std::shared_ptr<StdFont> presentFont = surface.Font();
    surface.Font(VariantToFont(bag.ReadProperty(u"Font", presentFont), presentFont));
    surface.OLEDropMode(ReadIntegerProperty(bag, u"OLEDropMode", 0));
    surface.MousePointer(ReadIntegerProperty(bag, u"MousePointer", 0));
    const std::shared_ptr<StdPicture> noIcon = StdPicture::Empty();
    surface.MouseIcon(VariantToPicture(bag.ReadProperty(u"MouseIcon", noIcon), noIcon));
}

void UniLabelBase::WriteProperties(PropertyBag& bag) const {
    const ControlSurface& surface = Surface();
    bag.WriteProperty(u"Font", surface.Font());
    bag.WriteProperty(u"Caption", pvStringToBag(m_sCaption));
    bag.WriteProperty(u"BackColor", m_lBackColor);
    bag.WriteProperty(u"ForeColor", m_lForeColor);
    bag.WriteProperty(u"BorderColor", m_lBorderColor);
    bag.WriteProperty(u"Alignment", static_cast<int32_t>(m_iAlignment));
    bag.WriteProperty(u"VAlignment", static_cast<int32_t>(m_iVAlignment));
    bag.WriteProperty(u"BackStyle", static_cast<int32_t>(m_iBackStyle));
    bag.WriteProperty(u"BorderStyle", static_cast<int32_t>(m_iBorderStyle));
    bag.WriteProperty(u"AutoSize", m_bAutoSize);
    bag.WriteProperty(u"Tip", pvStringToBag(m_sTip));
    bag.WriteProperty(u"Style", m_iStyle);
    bag.WriteProperty(u"Enabled", surface.Enabled());
    bag.WriteProperty(u"Margin", m_iMargin);
    bag.WriteProperty(u"RoundedBorders", m_bRoundedBorders);
    bag.WriteProperty(u"BackColorOut", m_lBackColorOut);
    bag.WriteProperty(u"UseRoundRegions", m_bUseRoundRegions);
    bag.WriteProperty(u"OLEDropMode", surface.OLEDropMode());
    bag.WriteProperty(u"MousePointer", surface.MousePointer());
    bag.WriteProperty(u"MouseIcon", surface.MouseIcon());
}

// ---- accessibility ----

int32_t UniLabelBase::AccessibleRole(int32_t child) const {
    return child == CHILDID_SELF ? ROLE_SYSTEM_STATICTEXT : ControlFrame::AccessibleRole(child);
}

// ---- lets ----

void UniLabelBase::shapeAndRedraw() {
    UpdateRegion();
    RequestDrawControl();
}

void UniLabelBase::Caption(const CtlString& value) {
    m_sCaption = value;
    Surface().PropertyChanged(u"Caption");
    NotifyAccessibleEvent(EVENT_OBJECT_NAMECHANGE);
    shapeAndRedraw();
}

void UniLabelBase::BackColor(int32_t value) {
    m_lBackColor = value;
    RequestDrawControl();
}

void UniLabelBase::Margin(int16_t value) {
    m_iMargin = value;
    shapeAndRedraw();
}

void UniLabelBase::Style(int32_t value) {
    m_iStyle = value;  // -1 stays -1: DrawButton resolves it at each drawing
    RequestDrawControl();
}

void UniLabelBase::ForeColor(int32_t value) {
    m_lForeColor = value;
    RequestDrawControl();
}

void UniLabelBase::BorderColor(int32_t value) {
    m_lBorderColor = value;
    RequestDrawControl();
}

void UniLabelBase::Alignment(eUniLabel_TextAlign value) {
    m_iAlignment = value;
    shapeAndRedraw();
}

void UniLabelBase::VAlignment(eUniLabel_TextVAlign value) {
    m_iVAlignment = value;
    shapeAndRedraw();
}

void UniLabelBase::BorderStyle(eUniLabel_BorderStyle value) {
    m_iBorderStyle = value;
    shapeAndRedraw();
}

void UniLabelBase::AutoSize(bool value) {
    if (m_bAutoSize == value) return;
    m_bAutoSize = value;
    shapeAndRedraw();
}

void UniLabelBase::RoundedBorders(bool value) {
    m_bRoundedBorders = value;
    shapeAndRedraw();
}

void UniLabelBase::BackColorOut(int32_t value) {
    m_lBackColorOut = value;
    RequestDrawControl();
}

void UniLabelBase::UseRoundRegions(bool value) {
    m_bUseRoundRegions = value;
    m_bRoundedBorders = value;
    RequestDrawControl();
}

void UniLabelBase::SetBackStyleValue(eUniLabel_BackStyle value) {
    m_iBackStyle = value;
    shapeAndRedraw();
}

void UniLabelBase::RaiseResize() {
    if (m_labelEvents != nullptr) m_labelEvents->Resize();
}

// ---- drawing ----

void UniLabelBase::pvUpdateRegion() {
    if (m_iBackStyle != UniLabel_BS_Transparent && !m_bUseRoundRegions) return;
    DrawThroughWindowDC();
}

void UniLabelBase::autoSizeStep(HDC hdc) {
    if (!m_bAutoSize) return;
    ControlSurface& surface = Surface();
    int32_t w = 0;
    for (const CtlString& line : captionLines(m_sCaption)) {
        int32_t lineWidth = 0;
        int32_t lineHeight = 0;
        CalculateStringDim(hdc, line, false, lineWidth, lineHeight);
        w = std::max(w, lineWidth);
    }
    if (w < 1) return;  // an empty caption never resizes the label
    CTL_RECT measure{0, 0, w, 1};
    DrawText(hdc, m_sCaption, measure, kMeasureLines);
    int32_t h = measure.bottom - measure.top;
    // Margin is the user's pixels; the border's inset is the label's own and follows the DPI.
    const int32_t e = 2 * m_iMargin + (m_iBorderStyle == UniLabel_BS_Border ? 2 * ScaleByDpi(2) : 0);
    const float scaleWidth = surface.ScaleWidth();
    const float scaleHeight = surface.ScaleHeight();
    // Equal already: this is what ends the Resize that Size below raises.
    if (scaleWidth == static_cast<float>(w + e) && scaleHeight == static_cast<float>(h + e)) return;
    w += e;
    h += e;
    skipOnError([&] {
        // Keep the anchor of the alignment: right grows to the left, centre both ways.
        SurfaceExtender& extender = surface.Extender();
        const SurfaceContainer* container = extender.Container();
        const int16_t mode = container != nullptr && container->HasScaleMode() ? container->ScaleMode() : static_cast<int16_t>(kScaleTwips);
        const float left = surface.ScaleX(extender.Left(), mode, kScalePixels);
        float newLeft = left;
        if (m_iAlignment == UniLabel_Align_Center) {
            newLeft += std::nearbyint((scaleWidth - static_cast<float>(w)) / 2.0F);
        } else if (m_iAlignment == UniLabel_Align_Right) {
            newLeft += scaleWidth - static_cast<float>(w);
        }
        if (newLeft != left) extender.Left(surface.ScaleX(newLeft, kScalePixels, mode));
    });
    skipOnError([&] {
        surface.Size(surface.ScaleX(static_cast<float>(w), kScalePixels, kScaleTwips),
                     surface.ScaleY(static_cast<float>(h), kScalePixels, kScaleTwips));
    });
}

void UniLabelBase::DrawLabel(HDC hdc, int32_t quality, bool bSelectFontForText) {
    const DrawingScope scope(*this);
    if (!scope.entered()) return;
    ControlSurface& surface = Surface();

    skipOnError([&] { autoSizeStep(hdc); });
    skipOnError([&] { ApplyColours(m_lForeColor); });
    const CTL_RECT whole = SurfaceRect();
    CTL_RECT r = whole;

    skipOnError([&] {
        if (m_iBackStyle != UniLabel_BS_Transparent) {
            DrawButton(hdc, r, m_lBackColor, m_iBorderStyle == UniLabel_BS_Border, m_lBorderColor, false, false, false,
                       false, m_bRoundedBorders, m_iStyle, m_lBackColorOut, true, Dpi());
        } else {
            DrawRect(hdc, r, m_lBackColor, true);
        }
    });

    int32_t inset = 0;
    if (m_iBorderStyle == UniLabel_BS_Border) {
        const int32_t borderInset = ScaleByDpi(2);
        inset = m_bAutoSize ? m_iMargin + borderInset : borderInset;
    } else if (m_bAutoSize) {
        inset = m_iMargin;  // Margin counts only with AutoSize
    }
    r.left += inset;
    r.top += inset;
    r.right -= inset;
    r.bottom -= inset;

    if (!m_bAutoSize && m_iVAlignment != UniLabel_VAlign_Top) {
        skipOnError([&] {
            // Measured at the full width, border or not: a text that just wraps may sit a line off.
            CTL_RECT measure = whole;
            DrawText(hdc, m_sCaption, measure, kMeasureWrapped);
            const int32_t h = measure.bottom - measure.top;
            if (m_iVAlignment == UniLabel_VAlign_Middle) {
                r.top = static_cast<int32_t>(std::nearbyint(static_cast<double>(r.bottom - h) / 2.0));
            } else if (m_iVAlignment == UniLabel_VAlign_Bottom) {
                r.top = r.bottom - h;
            }
            if (r.top < 0) r.top = 0;
        });
    }

    int32_t flags = kExpandTabs;
    if (!m_bAutoSize) flags |= DT_WORDBREAK;
    if (m_iAlignment == UniLabel_Align_Center) {
        flags |= DT_CENTER;
    } else if (m_iAlignment == UniLabel_Align_Right) {
        flags |= DT_RIGHT;
    }

    skipOnError([&] {
        if (m_iBackStyle == UniLabel_BS_Transparent) {
            // The window becomes exactly the glyphs: clicks between letters fall through.
            clsMEMDC mask;
            skipOnError([&] { mask.CreateDC(whole.right, whole.bottom, eMemDcBkMode_OPAQUE); });
            mask.DrawBackColor(0);
            mask.BkColor(0);
            clsFontHDC maskFont;
            SelectSurfaceFont(maskFont, mask.hDC(), quality);
            CTL_RECT textRect = r;
            DrawTextColor(mask.hDC(), m_sCaption, textRect, flags, 0x00FFFFFF);
            surface.MaskColor(0);
            maskFont.Destroy();
            ApplyMask(mask);
        } else if (m_bUseRoundRegions) {
            ApplyRoundMask();
        } else {
            ApplyOpaqueShape();
        }
    });

    skipOnError([&] {
        CTL_RECT textRect = r;
        if (bSelectFontForText && m_iBackStyle == UniLabel_BS_Transparent) {
            clsFontHDC textFont;
            SelectSurfaceFont(textFont, hdc, quality);
            DrawText(hdc, m_sCaption, textRect, flags);
            textFont.Destroy();
        } else {
            DrawText(hdc, m_sCaption, textRect, flags);
        }
    });
}
