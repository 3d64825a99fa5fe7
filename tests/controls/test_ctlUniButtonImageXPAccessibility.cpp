// The image button as a screen reader reads it, hosted in a Win32Surface.
#include <gtest/gtest.h>

#include "ImageButtonTestSupport.h"
#include "support/AccessibleProbe.h"
#include "support/OleSession.h"

namespace {

using imagebuttontest::ButtonFixture;
using testsupport::AccessibleOf;
using testsupport::AskRole;
using testsupport::AskState;
using testsupport::AskText;
using testsupport::ChildId;
using Log = std::vector<std::string>;

TEST(ctlUniButtonImageXPAccessibility, PushButtonNamedByItsCaptionPressedByItsDefaultAction) {
    const testsupport::OleSession ole;
    auto f = std::make_unique<ButtonFixture>();
    ctlUniButtonImageXP& b = *f->button;
    b.Caption(u"&\u041E\u0442\u043A\u0440\u044B\u0442\u044C \u6253\u5F00 \U0001F4C2");
    b.Tip(u"tip \u4E16");
    const auto object = AccessibleOf(f->hwnd());
    ASSERT_TRUE(object);

    EXPECT_EQ(AskRole(object.get()), ROLE_SYSTEM_PUSHBUTTON);
    EXPECT_EQ(AskText(object.get(), &IAccessible::get_accName).text,
              u"\u041E\u0442\u043A\u0440\u044B\u0442\u044C \u6253\u5F00 \U0001F4C2");
    EXPECT_EQ(AskText(object.get(), &IAccessible::get_accDescription).text, u"tip \u4E16");
    EXPECT_EQ(AskText(object.get(), &IAccessible::get_accKeyboardShortcut).text, u"Alt+\u041E");
    EXPECT_EQ(AskText(object.get(), &IAccessible::get_accDefaultAction).text, u"Press");
    EXPECT_EQ(AskState(object.get()), STATE_SYSTEM_FOCUSABLE);

    // The default action clicks through the button's own click handler.
    f->events.log.clear();
    EXPECT_EQ(object->accDoDefaultAction(ChildId(CHILDID_SELF)), S_OK);
    EXPECT_EQ(f->events.log, Log{"Click"});

    // Under Tristate it is a check button; stuck in, it reads as pressed.
    b.Tristate(true);
    EXPECT_EQ(AskRole(object.get()), ROLE_SYSTEM_CHECKBUTTON);
    EXPECT_EQ(object->accDoDefaultAction(ChildId(CHILDID_SELF)), S_OK);
    EXPECT_TRUE(b.Pressed());
    EXPECT_EQ(AskState(object.get()) & STATE_SYSTEM_PRESSED, STATE_SYSTEM_PRESSED);
    b.Pressed(false);
    EXPECT_EQ(AskState(object.get()) & STATE_SYSTEM_PRESSED, 0);
    // Pressed without Tristate is no visible state, so it is not read either.
    b.Tristate(false);
    b.Pressed(true);
    EXPECT_EQ(AskState(object.get()) & STATE_SYSTEM_PRESSED, 0);

    // The form's default button says so; a disabled one cannot be pressed.
    f->surface.HostExtender().Default(true);
    EXPECT_EQ(AskState(object.get()) & STATE_SYSTEM_DEFAULT, STATE_SYSTEM_DEFAULT);
    b.Enabled(false);
    EXPECT_EQ(AskState(object.get()) & STATE_SYSTEM_UNAVAILABLE, STATE_SYSTEM_UNAVAILABLE);
    f->events.log.clear();
    EXPECT_NE(object->accDoDefaultAction(ChildId(CHILDID_SELF)), S_OK);
    EXPECT_TRUE(f->events.log.empty());

    EXPECT_EQ(AskText(object.get(), &IAccessible::get_accName, 1).hr, E_INVALIDARG);
    f.reset();
    EXPECT_EQ(AskText(object.get(), &IAccessible::get_accName).hr, RPC_E_DISCONNECTED);
}

}  // namespace
