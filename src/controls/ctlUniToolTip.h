// ctlUniToolTip: the one tip window of a thread, a borderless top-level popup holding the label lblTip,
// shown and hidden by three timers keyed to the cursor position.
#pragma once

#include <cstdint>
#include <memory>

#include "controls/ctlUniLabelNoFlick.h"
#include "frame/AccessibleSource.h"
#include "frame/ControlTimer.h"
#include "frame/Win32Surface.h"

class SurfaceAccessible;

// Not public: the tooltip manager drives it, and controls reach it through the tip rule.
// SetTip arms TimerActivate (400 ms); when the cursor still rests where it was, the tip shows and
// TimerHideTip (3000 ms) and TimerActiveMM (100 ms, watching for the cursor to move) start.
class ctlUniToolTip final : private AccessibleSource {
public:
    static constexpr int32_t kActivateMs = 400;
    static constexpr int32_t kActiveMouseMoveMs = 100;
    static constexpr int32_t kHideTipMs = 3000;

    ctlUniToolTip();
    ~ctlUniToolTip() override;
    // Owns windows registered by address.
    ctlUniToolTip(const ctlUniToolTip&) = delete;
    ctlUniToolTip& operator=(const ctlUniToolTip&) = delete;

    // ---- the module's instance (per thread) ----
    static ctlUniToolTip& Instance();
    static ctlUniToolTip* Existing() noexcept;
    static void DestroyInstance() noexcept;
    static bool PersistentTip() noexcept;
    static void PersistentTip(bool value) noexcept;

    void SetTip(const CtlString& sTip, int32_t lMaxWidth, const CtlString& sTag, int32_t XMax, int32_t YMax);
    // Changes the text and the limits in place: no delay, timers and position untouched.
    void UpdateTip(const CtlString& sTip, int32_t lMaxWidth, const CtlString& sTag, int32_t XMax, int32_t YMax);
    void HideTip();
    bool TipIsVisible() const noexcept;
    const CtlString& Tip() const noexcept { return m_sTip; }
    const CtlString& Tag() const noexcept { return m_sTag; }

    // ---- settings from the manager ----
    void TipColors(int32_t back, int32_t fore);
    void TipFont(std::shared_ptr<StdFont> font);
    void Style(int32_t style);
    // Percent see-through, 0 (opaque) to 100; other values are clipped.
    void Transparency(int16_t value);
    // The layered window's alpha for a Transparency value: 255 x (100 - t) / 100, rounded.
    static uint8_t AlphaOf(int16_t transparency) noexcept;

    HWND hWnd() const noexcept { return m_hWnd; }
    ctlUniLabelNoFlick& lblTip() noexcept { return *m_lblTip; }
    // The DPI the tip is shown at (its label's surface).
    int32_t Dpi() const { return m_labelSurface->Dpi(); }

private:
    static LRESULT CALLBACK windowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT onGetObject(WPARAM wParam, LPARAM lParam);
    void storeTip(const CtlString& sTip, int32_t lMaxWidth, int32_t XMax, int32_t YMax);
    void layout();
    void show();
    void onActivateTick();
    void onActiveMouseMoveTick();
    void onHideTipTick();
    static POINT cursor() noexcept;
    bool cursorAtLast() const noexcept;

    // AccessibleSource: a tooltip named by its text.
    int32_t AccessibleRole(int32_t child) const override;
    CtlString AccessibleName(int32_t child) const override;
    CtlString AccessibleDescription(int32_t) const override { return CtlString(); }
    CtlString AccessibleValue(int32_t) const override { return CtlString(); }
    int32_t AccessibleState(int32_t child) const override;
    CtlString AccessibleDefaultAction(int32_t) const override { return CtlString(); }
    bool AccessibleDoDefaultAction(int32_t) override { return false; }
    CtlString AccessibleKeyboardShortcut(int32_t) const override { return CtlString(); }

    HWND m_hWnd = nullptr;
    std::unique_ptr<Win32Surface> m_labelSurface;
    std::unique_ptr<ctlUniLabelNoFlick> m_lblTip;
    ControlTimer TimerActivate;
    ControlTimer TimerActiveMM;
    ControlTimer TimerHideTip;
    SurfaceAccessible* m_accessible = nullptr;  // one reference, while screen readers have asked
    bool m_bBusy = false;
    POINT m_ptLast{};
    CtlString m_sTip;
    CtlString m_sTag;
    int32_t m_lMaxWidth = 0;
    int32_t m_lXMax = 0;
    int32_t m_lYMax = 0;
    int16_t m_iTransparency = 0;
};

// The text with blanks, tabs and line breaks cut from both ends.
CtlString TrimTipText(const CtlString& text);
