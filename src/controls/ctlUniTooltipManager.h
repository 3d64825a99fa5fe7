// ctlUniTooltipManager: the control that switches the thread's tip service on and holds its settings.
#pragma once

#include <cstdint>
#include <memory>

#include "frame/ControlFrame.h"
#include "frame/PropertyBag.h"
#include "frame/TipLayer.h"

// Placed once on a form. At run time it has no look (its window is hidden); while ActivateTips is
// true it is the tip layer's manager, so the tip rule of every control reaches the tip window,
// and its settings are applied to that window. Its end takes the service down. It raises no
// events. Designers show it as a small labelled box.
class ctlUniTooltipManager final : public ControlFrame {
public:
    static constexpr int32_t kDefaultTipBgColor = static_cast<int32_t>(0x80000018u);
    static constexpr int32_t kDefaultTipFgColor = static_cast<int32_t>(0x80000017u);
    static constexpr int32_t kDefaultMaxWidth = 300;

    explicit ctlUniTooltipManager(ControlSurface& surface, ControlEvents* events = nullptr);
    ~ctlUniTooltipManager() override;

    // ---- host entry points ----
    void InitProperties();
    void ReadProperties(PropertyBag& bag);
    void WriteProperties(PropertyBag& bag) const;

    // ---- public members, in slot order ----
    bool PersistentTip() const noexcept { return m_bPersistentTip; }
    void PersistentTip(bool value);
    bool ActivateTips() const noexcept { return m_bActivateTips; }
    void ActivateTips(bool value);
    void SetTip(const CtlString& sTip, int32_t lMaxWidth = kDefaultMaxWidth, const CtlString& sTag = CtlString(),
                int32_t XMax = 0, int32_t YMax = 0);
    CtlString GetTip() const;
    int32_t TipBgColor() const noexcept { return m_lTipBgColor; }
    void TipBgColor(int32_t value);
    int32_t TipFgColor() const noexcept { return m_lTipFgColor; }
    void TipFgColor(int32_t value);
    std::shared_ptr<StdFont> TipFont() const { return m_tipFont; }
    void TipFont(std::shared_ptr<StdFont> value);
    void UpdateTip(const CtlString& sTip, int32_t lMaxWidth = kDefaultMaxWidth, const CtlString& sTag = CtlString(),
                   int32_t XMax = 0, int32_t YMax = 0);
    bool TipIsVisible() const;
    CtlString GetTipTag() const;
    int32_t Style() const noexcept { return m_iStyle; }
    void Style(int32_t value);
    int16_t Transparency() const noexcept { return m_iTransparency; }
    void Transparency(int16_t value);
    void HideTip();
    using ControlFrame::Hwnd;

    // A designer switching to run mode starts the service (UserMode is an ambient property).
    void AmbientChanged(const CtlString& propertyName) override;

protected:
    void DrawControl(HDC hdc) override;

private:
    // What the controls' tip rule reaches while this manager serves.
    class Sink final : public TipLayerSink {
    public:
        explicit Sink(ctlUniTooltipManager& owner) noexcept : m_owner(owner) {}
        void SetTip(const CtlString& sTip, int32_t lMaxWidth, const CtlString& sTag) override {
            m_owner.SetTip(sTip, lMaxWidth, sTag);
        }
        CtlString CurrentTipText() const override { return m_owner.GetTip(); }

    private:
        ctlUniTooltipManager& m_owner;
    };

    bool isServing() const noexcept;
    void startService();
    void stopService() noexcept;
    void applySettings();
    void hideAtRunTime();
    static void defaultStyleChanged(int32_t style) noexcept;

    bool m_bPersistentTip = false;
    bool m_bActivateTips = true;
    int32_t m_lTipBgColor = kDefaultTipBgColor;
    int32_t m_lTipFgColor = kDefaultTipFgColor;
    int32_t m_iStyle = -1;
    int16_t m_iTransparency = 0;
    std::shared_ptr<StdFont> m_tipFont;
    Sink m_sink{*this};
};
