#include <gtest/gtest.h>

#include "ComTestSupport.h"
#include "support/OleSession.h"

namespace {

using namespace comtest;

TEST(ComLargeNumber, ArithmeticAndErrorsThroughDispatch) {
    const testsupport::OleSession ole;
    {
        ComPtr<IDispatch> number = Server::Instance().Create(tc::com::CLSID_clsLargeNumber);
        ASSERT_TRUE(number);
        EXPECT_EQ(S_FALSE, Server::Instance().CanUnloadNow());

        struct Case {
            const wchar_t* member;
            std::vector<Var> args;
            std::u16string expected;
        };
        const Case cases[] = {
            {L"StrAdd", {L"99999999999999999999", L"1"}, u"100000000000000000000"},
            {L"StrMult", {L"123456789", L"987654321"}, u"121932631112635269"},
            {L"ConvertBases", {L"255", L"10", L"16"}, u"FF"},
            {L"StrGT", {L"10", L"9"}, u"-1"},
        };
        for (const Case& c : cases) {
            const CallResult r = Call(number.get(), c.member, c.args);
            EXPECT_EQ(S_OK, r.hr) << static_cast<const void*>(c.member);
            EXPECT_EQ(c.expected, r.value.Text());
        }

        // The library's error reaches the caller as DISP_E_EXCEPTION with its number and text.
        const CallResult error = Call(number.get(), L"StrDec", {L"0"});
        EXPECT_EQ(DISP_E_EXCEPTION, error.hr);
        EXPECT_EQ(-2147221404, error.scode);
        EXPECT_EQ(u"Cannot deal with negative numbers!", error.description);
    }
    EXPECT_EQ(S_OK, Server::Instance().CanUnloadNow());
}

}  // namespace
