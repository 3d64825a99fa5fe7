#include "frame/ControlFrame.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frame/TipLayer.h"
#include "support/FakeSurface.h"

namespace {

// The smallest control on the frame: counts its drawings and exposes the frame's steps.
class ProbeControl final : public ControlFrame {
public:
    ProbeControl(ControlSurface& surface, ControlEvents* events) : ControlFrame(surface, events) {}
    int draws = 0;
    int regionUpdates = 0;
    int starts = 0;
    int stops = 0;
    CtlString& tip = m_sTip;  // the frame keeps the tip
    bool drawsThroughAutoRedraw = false;
    std::vector<bool> guardSeenWhileDrawing;

    using ControlFrame::ExternalInitControl;
    using ControlFrame::FinishLoading;
    using ControlFrame::ForceLostFocus;
    using ControlFrame::HasFocus;
    using ControlFrame::IsStarted;
    using ControlFrame::RefreshControl;
    using ControlFrame::RequestDrawControl;
    using ControlFrame::TerminateControl;
    using ControlFrame::UpdateAccessKeys;

protected:
    void DrawControl(HDC) override {
        const DrawingScope scope(*this);
        if (!scope.entered()) return;
        ++draws;
    }
    void UpdateRegion() override { ++regionUpdates; }
    bool DrawsThroughAutoRedraw() const override { return drawsThroughAutoRedraw; }
    void StartControl() override { ++starts; }
    void StopControl() override { ++stops; }
};

class RecordingEvents final : public ControlEvents {
public:
    std::string trace;
    void Click() override { trace += "Click "; }
    void MouseMove(int16_t&, int16_t&, float&, float&) override { trace += "MouseMove "; }
    void OLEGiveFeedback(int32_t& Effect, bool& DefaultCursors) override {
        Effect = 2;
        DefaultCursors = false;
    }
};

class RecordingTipManager final : public TipLayerSink {
public:
    std::vector<CtlString> tips;
    CtlString current;
    void SetTip(const CtlString& sTip, int32_t lMaxWidth, const CtlString&) override {
        EXPECT_EQ(lMaxWidth, 300);
        tips.push_back(sTip);
        current = sTip;
    }
    CtlString CurrentTipText() const override { return current; }
};

TEST(ControlFrame, AccessKeyIsTheCharacterAfterASingleAmpersand) {
    const struct {
        CtlString caption;
        CtlString key;
    } cases[] = {
        {u"&File", u"F"},         {u"Save &as", u"a"},  {u"Fish && &Chips", u"C"}, {u"A&&B", u""},
        {u"No key", u""},         {u"Trailing&", u""},  {u"&&&x", u"x"},           {u"\u0416&\u0443", u"\u0443"},
        {u"&a &b", u"a"},  // the scan ends at the first key
    };
    for (const auto& c : cases) EXPECT_EQ(AccessKeyOfCaption(c.caption), c.key) << std::string(c.caption.begin(), c.caption.end());

    testsupport::FakeSurface surface;
    ProbeControl control(surface, nullptr);
    control.UpdateAccessKeys(u"&Open");
    EXPECT_EQ(surface.AccessKeys(), u"O");
    control.UpdateAccessKeys(u"Open");
    EXPECT_EQ(surface.AccessKeys(), u"");
}

TEST(ControlFrame, RepaintRequestsDependOnModeAndAutoRedraw) {
    testsupport::FakeSurface surface;
    ProbeControl control(surface, nullptr);

    // Design mode: at once, through the surface's Refresh and its Paint; run mode without
    // AutoRedraw only invalidates (no window here, so nothing at all).
    for (const bool userMode : {false, true}) {
        surface.userMode = userMode;
        control.RequestDrawControl();
        EXPECT_EQ(surface.refreshCount, 1);
        EXPECT_EQ(control.draws, 1);
    }

    // AutoRedraw control: drawn directly, then shown with Refresh.
    surface.autoRedraw = true;
    control.drawsThroughAutoRedraw = true;
    control.RequestDrawControl();
    EXPECT_EQ(control.draws, 2);
    EXPECT_EQ(surface.refreshCount, 2);

    // Resize re-shapes and redraws, except while a drawing runs.
    control.Resize();
    EXPECT_EQ(control.regionUpdates, 1);
    EXPECT_EQ(control.draws, 3);

    // Enabled redraws only on a change.
    control.Enabled(true);
    EXPECT_EQ(control.draws, 3);
    control.Enabled(false);
    EXPECT_EQ(control.draws, 4);
    EXPECT_FALSE(surface.Enabled());
}

TEST(ControlFrame, TipsReachALiveManagerOnlyAtRunTime) {
    testsupport::FakeSurface surface;
    RecordingEvents events;
    ProbeControl control(surface, &events);
    int16_t button = 0;
    int16_t shift = 0;
    float x = 1.0F;
    float y = 1.0F;

    control.tip = u"Hello";
    control.MouseMove(button, shift, x, y);  // no manager: nothing, but the event is raised
    EXPECT_EQ(events.trace, "MouseMove ");

    RecordingTipManager manager;
    RegisterTooltipManager(&manager);
    control.MouseMove(button, shift, x, y);
    surface.userMode = false;
    control.MouseMove(button, shift, x, y);  // design mode: no tip
    surface.userMode = true;
    control.tip.clear();
    control.MouseMove(button, shift, x, y);  // empty tip clears the shown one...
    control.MouseMove(button, shift, x, y);  // ...and then costs nothing
    UnregisterTooltipManager(&manager);
    control.tip = u"After";
    control.MouseMove(button, shift, x, y);

    EXPECT_EQ(manager.tips, (std::vector<CtlString>{u"Hello", u""}));
    EXPECT_FALSE(IsTooltipManagerAlive());
}

TEST(ControlFrame, EventsAreReRaisedWithTheirArgumentsByReference) {
    testsupport::FakeSurface surface;
    RecordingEvents events;
    {
        ProbeControl control(surface, &events);
        ASSERT_EQ(surface.client, &control);
        int32_t effect = 1;
        bool defaultCursors = true;
        surface.client->OLEGiveFeedback(effect, defaultCursors);
        EXPECT_EQ(effect, 2);
        EXPECT_FALSE(defaultCursors);
        surface.client->Click();
        EXPECT_EQ(events.trace, "Click ");
    }
    EXPECT_EQ(surface.client, nullptr);  // detached from its surface
}

TEST(ControlFrame, FocusAndManualStart) {
    testsupport::FakeSurface surface;
    ProbeControl control(surface, nullptr);
    control.GotFocus();
    EXPECT_TRUE(control.HasFocus());
    control.ForceLostFocus();
    EXPECT_FALSE(control.HasFocus());
    EXPECT_EQ(control.draws, 0);  // redraws go through an invalidation at run time

    control.FinishLoading(true);  // ManualStart: the host decides
    EXPECT_FALSE(control.IsStarted());
    control.ExternalInitControl();
    control.ExternalInitControl();
    EXPECT_EQ(control.starts, 1);
    EXPECT_TRUE(control.IsStarted());
    control.TerminateControl();
    control.TerminateControl();
    EXPECT_EQ(control.stops, 1);

    testsupport::FakeSurface designSurface;
    designSurface.userMode = false;
    ProbeControl designed(designSurface, nullptr);
    designed.FinishLoading(false);  // design mode: no start step
    EXPECT_FALSE(designed.IsStarted());
}

}  // namespace
