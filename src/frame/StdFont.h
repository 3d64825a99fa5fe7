// StdFont: the shared font object of surfaces and controls (Name, Size, Bold, Italic, Underline, Strikethrough).
#pragma once

#include <cstdint>
#include <memory>

#include "common/CtlTypes.h"

// Held by std::shared_ptr: a control's Font set stores the host's object itself, so a host that
// changes a member later changes what the control will use at its next ApplyFontChanges.
class StdFont {
public:
    StdFont() = default;
    StdFont(CtlString name, float size, bool bold = false, bool italic = false);

    const CtlString& Name() const noexcept { return m_sName; }
    void Name(CtlString value) { m_sName = std::move(value); }
    // Points; the host's font object keeps four decimals, which a float holds for every usable size.
    float Size() const noexcept { return m_fSize; }
    void Size(float value) noexcept { m_fSize = value; }
    bool Bold() const noexcept { return m_iWeight >= 550; }
    void Bold(bool value) noexcept { m_iWeight = value ? 700 : 400; }
    bool Italic() const noexcept { return m_bItalic; }
    void Italic(bool value) noexcept { m_bItalic = value; }
    bool Underline() const noexcept { return m_bUnderline; }
    void Underline(bool value) noexcept { m_bUnderline = value; }
    bool Strikethrough() const noexcept { return m_bStrikethrough; }
    void Strikethrough(bool value) noexcept { m_bStrikethrough = value; }
    int16_t Weight() const noexcept { return m_iWeight; }
    void Weight(int16_t value) noexcept { m_iWeight = value; }
    int16_t Charset() const noexcept { return m_iCharset; }
    void Charset(int16_t value) noexcept { m_iCharset = value; }

    // A separate object with the same members, for hosts that want a font of their own.
    std::shared_ptr<StdFont> Clone() const { return std::make_shared<StdFont>(*this); }

    friend bool operator==(const StdFont&, const StdFont&) = default;

private:
    CtlString m_sName = u"MS Sans Serif";
    float m_fSize = 8.25F;
    int16_t m_iWeight = 400;
    int16_t m_iCharset = 1;
    bool m_bItalic = false;
    bool m_bUnderline = false;
    bool m_bStrikethrough = false;
};
