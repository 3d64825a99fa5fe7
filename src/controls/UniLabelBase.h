// UniLabelBase: what ctlUniLabel and ctlUniLabelNoFlick share (fields, lets, persistence, drawing),
// with their enumerations and their event interface ctlUniLabelEvents.
#pragma once

#include <cstdint>
#include <memory>

#include "frame/ControlFrame.h"
#include "frame/PropertyBag.h"

// The type library's member names carry blanks ("UniLabel Align Left"); here they are underscores.
enum eUniLabel_TextAlign : int32_t { UniLabel_Align_Left = 0, UniLabel_Align_Right = 1, UniLabel_Align_Center = 2 };
enum eUniLabel_TextVAlign : int32_t { UniLabel_VAlign_Top = 0, UniLabel_VAlign_Middle = 1, UniLabel_VAlign_Bottom = 2 };
enum eUniLabel_BackStyle : int32_t { UniLabel_BS_Transparent = 0, UniLabel_BS_Opaque = 1 };
enum eUniLabel_BorderStyle : int32_t { UniLabel_BS_None = 0, UniLabel_BS_Border = 1 };

class ctlUniLabelEvents : public ControlEvents {
public:
    virtual void Resize() {}
};

class UniLabelBase : public ControlFrame {
public:
    UniLabelBase(ControlSurface& surface, ctlUniLabelEvents* events);

    // The host's event sink; nullptr stops the events.
    void Advise(ctlUniLabelEvents* events) noexcept;

    // ---- host entry points ----
    void InitProperties();
    void ReadProperties(PropertyBag& bag);
    void WriteProperties(PropertyBag& bag) const;

    // ---- public members ----
    const CtlString& Caption() const noexcept { return m_sCaption; }
    void Caption(const CtlString& value);
    int32_t BackColor() const noexcept { return m_lBackColor; }
    void BackColor(int32_t value);
    int16_t Margin() const noexcept { return m_iMargin; }
    void Margin(int16_t value);
    int32_t Style() const noexcept { return m_iStyle; }
    void Style(int32_t value);
    int32_t ForeColor() const noexcept { return m_lForeColor; }
    void ForeColor(int32_t value);
    int32_t BorderColor() const noexcept { return m_lBorderColor; }
    void BorderColor(int32_t value);
    eUniLabel_TextAlign Alignment() const noexcept { return m_iAlignment; }
    void Alignment(eUniLabel_TextAlign value);
    eUniLabel_TextVAlign VAlignment() const noexcept { return m_iVAlignment; }
    void VAlignment(eUniLabel_TextVAlign value);
    eUniLabel_BorderStyle BorderStyle() const noexcept { return m_iBorderStyle; }
    void BorderStyle(eUniLabel_BorderStyle value);
    bool AutoSize() const noexcept { return m_bAutoSize; }
    void AutoSize(bool value);
    using ControlFrame::Tip;
    bool RoundedBorders() const noexcept { return m_bRoundedBorders; }
    void RoundedBorders(bool value);
    int32_t BackColorOut() const noexcept { return m_lBackColorOut; }
    void BackColorOut(int32_t value);
    bool UseRoundRegions() const noexcept { return m_bUseRoundRegions; }
    void UseRoundRegions(bool value);
    using ControlFrame::ApplyFontChanges;
    using ControlFrame::Enabled;
    using ControlFrame::Font;
    using ControlFrame::Hwnd;
    using ControlFrame::MouseIcon;
    using ControlFrame::MousePointer;
    using ControlFrame::OLEDrag;
    using ControlFrame::OLEDropMode;

    // Static text named by its caption; no value, no default action.
    int32_t AccessibleRole(int32_t child) const override;

protected:
    // BackStyle: public on the no-flicker label only.
    eUniLabel_BackStyle BackStyleValue() const noexcept { return m_iBackStyle; }
    void SetBackStyleValue(eUniLabel_BackStyle value);

    // The drawing both variants share. `quality` is the font quality of the mask; with
    // `bSelectFontForText` the caption's font is selected into `hdc` around the final text.
    void DrawLabel(HDC hdc, int32_t quality, bool bSelectFontForText);
    // The shape step of ctlUniLabel: draws through a window DC when the label has a mask.
    void pvUpdateRegion();

    CtlString AccessibleCaption() const override { return m_sCaption; }
    void RaiseResize() override;

private:
    void autoSizeStep(HDC hdc);
    void shapeAndRedraw();

    ctlUniLabelEvents* m_labelEvents;
    CtlString m_sCaption;
    int32_t m_lBackColor = kDefaultBackColor;
    int32_t m_lForeColor = kDefaultForeColor;
    int32_t m_lBorderColor = -1;
    int32_t m_lBackColorOut = -1;
    eUniLabel_TextAlign m_iAlignment = UniLabel_Align_Left;
    eUniLabel_TextVAlign m_iVAlignment = UniLabel_VAlign_Top;
    eUniLabel_BackStyle m_iBackStyle = UniLabel_BS_Opaque;
    eUniLabel_BorderStyle m_iBorderStyle = UniLabel_BS_None;
    bool m_bAutoSize = false;
    int16_t m_iMargin = 0;
    int32_t m_iStyle = 0;
    bool m_bRoundedBorders = false;
    bool m_bUseRoundRegions = false;
};
