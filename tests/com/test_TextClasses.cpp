#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "TextComTestSupport.h"

namespace {

using namespace comtest;
using tc::com::CLSID_cStringBuilder2;
using tc::com::CLSID_clsFileIni;
using tc::com::CLSID_clsFileIniEx;

constexpr int32_t kTextCompare = 1;

std::string FileBytes(const std::wstring& path) {
    std::ifstream in(path.c_str(), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

TEST(ComStringBuilder, AppendsAndReplacesThroughDispatch) {
    OleSession ole;
    ComPtr<IDispatch> builder = Server::Instance().Create(CLSID_cStringBuilder2);
    ASSERT_TRUE(builder);
    EXPECT_EQ(S_OK, Call(builder.get(), L"Append", {L"Ab"}).hr);
    EXPECT_EQ(S_OK, Call(builder.get(), L"AppendWithNewLine", {L"\u0416"}).hr);
    EXPECT_EQ(u"Ab\u0416\r\n", Call(builder.get(), L"ToString").value.Text());
    EXPECT_EQ(5, Call(builder.get(), L"Length").value.v.lVal);

    // Compare omitted: binary, so the other case is not found; given as text compare, it is.
    EXPECT_EQ(S_OK, Call(builder.get(), L"ReplaceString", {L"aB", L"x"}).hr);
    EXPECT_EQ(u"Ab\u0416\r\n", Call(builder.get(), L"ToString").value.Text());
    EXPECT_EQ(S_OK, Call(builder.get(), L"ReplaceString", {L"aB", L"x", Var(kTextCompare)}).hr);
    EXPECT_EQ(u"x\u0416\r\n", Call(builder.get(), L"ToString").value.Text());

    EXPECT_EQ(S_OK, Put(builder.get(), L"TheString", Var(L"new")).hr);
    EXPECT_EQ(u"new", Call(builder.get(), L"ToString").value.Text());
}

TEST(ComFileIniEx, RowsAndSectionsComeBackAsStringArrays) {
    OleSession ole;
    ScratchFolder folder(L"tc_com_iniex");
    ComPtr<IDispatch> ini = Server::Instance().Create(CLSID_clsFileIniEx);
    ASSERT_TRUE(ini);
    EXPECT_EQ(S_OK, Put(ini.get(), L"CommentChar", Var(L";")).hr);
    StringSlot text(u"[S]\r\n; note\r\nk = v\r\n");
    const CallResult loaded = Call(ini.get(), L"LoadFromString", {text.Arg()});
    EXPECT_EQ(VARIANT_TRUE, loaded.value.v.boolVal);
    EXPECT_EQ(u"v", Call(ini.get(), L"GetString", {L"s", L"K"}).value.Text());
    EXPECT_EQ(u"dflt", Call(ini.get(), L"GetString", {L"s", L"none", L"dflt"}).value.Text());

    Var names;
    EXPECT_EQ(S_OK, Call(ini.get(), L"GetSectionNames", {Ref(VT_VARIANT, &names.v)}).hr);
    EXPECT_EQ((std::vector<std::u16string>{u"", u"S"}), StringsIn(names.v));
    Var rows;
    EXPECT_EQ(S_OK, Call(ini.get(), L"GetSectionRows", {L"S", Ref(VT_VARIANT, &rows.v)}).hr);
    EXPECT_EQ(std::vector<std::u16string>{u"k = v"}, StringsIn(rows.v));
    EXPECT_EQ(u"k", Call(ini.get(), L"GetSectionRowKey", {rows, Var(int32_t{0})}).value.Text());
    EXPECT_EQ(u"v", Call(ini.get(), L"GetSectionRowValue", {rows, Var(int32_t{0})}).value.Text());

    // Text outside the ANSI code page makes the saved file UTF-16, and a new object reads it back.
    EXPECT_EQ(S_OK, Call(ini.get(), L"AddString", {L"S", L"\u041A\u043B\u044E\u0447", L"\u4E2D\u6587"}).hr);
    const std::wstring path = folder.Path(L"rows.ini");
    EXPECT_EQ(VARIANT_TRUE, Call(ini.get(), L"Save", {path.c_str()}).value.v.boolVal);
    EXPECT_EQ("\xFF\xFE", FileBytes(path).substr(0, 2));
    EXPECT_NE(std::string::npos, FileBytes(path).find(std::string("\r\0\n\0", 4)));
    // A separator given: the rows are joined by it alone.
    const std::wstring unixPath = folder.Path(L"unix.ini");
    EXPECT_EQ(VARIANT_TRUE, Call(ini.get(), L"pvSave", {unixPath.c_str(), L"\n"}).value.v.boolVal);
    EXPECT_NE(std::string::npos, FileBytes(unixPath).find(std::string("v\0\n\0", 4)));
    EXPECT_EQ(std::string::npos, FileBytes(unixPath).find(std::string("\r\0", 2)));
    ComPtr<IDispatch> again = Server::Instance().Create(CLSID_clsFileIniEx);
    ASSERT_TRUE(again);
    EXPECT_EQ(VARIANT_TRUE, Call(again.get(), L"Load", {path.c_str()}).value.v.boolVal);
    EXPECT_EQ(u"\u4E2D\u6587", Call(again.get(), L"GetString", {L"s", L"\u043A\u043B\u044E\u0447"}).value.Text());
}

TEST(ComFileIni, ProfileCallsKeepUnicodeAndListSections) {
    OleSession ole;
    ScratchFolder folder(L"tc_com_ini");
    ComPtr<IDispatch> ini = Server::Instance().Create(CLSID_clsFileIni);
    ASSERT_TRUE(ini);
    const std::wstring path = folder.Path(L"profile.ini");
    EXPECT_EQ(S_OK, Put(ini.get(), L"IniFile", Var(path.c_str())).hr);
    const wchar_t* greek = L"\u0395\u03BB\u03BB\u03B7\u03BD\u03B9\u03BA\u03AC";
    EXPECT_EQ(S_OK, Call(ini.get(), L"WriteString", {L"Sec", L"key", greek}).hr);
    EXPECT_EQ(S_OK, Call(ini.get(), L"WriteBool", {L"Sec", L"flag", Var(true)}).hr);
    EXPECT_EQ("\xFF\xFE", FileBytes(path).substr(0, 2));
    EXPECT_EQ(u"\u0395\u03BB\u03BB\u03B7\u03BD\u03B9\u03BA\u03AC",
              Call(ini.get(), L"ReadString", {L"Sec", L"key"}).value.Text());
    EXPECT_EQ(u"", Call(ini.get(), L"ReadString", {L"Sec", L"none"}).value.Text());
    EXPECT_EQ(u"dflt", Call(ini.get(), L"ReadString", {L"Sec", L"none", L"dflt"}).value.Text());
    EXPECT_EQ(VARIANT_TRUE, Call(ini.get(), L"ReadBool", {L"Sec", L"flag"}).value.v.boolVal);
    EXPECT_EQ(VARIANT_TRUE, Call(ini.get(), L"ReadBool", {L"Sec", L"none", Var(true)}).value.v.boolVal);

    Var rows;
    EXPECT_EQ(S_OK, Call(ini.get(), L"GetSectionRows", {L"Sec", Ref(VT_VARIANT, &rows.v)}).hr);
    EXPECT_EQ((std::vector<std::u16string>{u"key=\u0395\u03BB\u03BB\u03B7\u03BD\u03B9\u03BA\u03AC", u"flag=1", u""}),
              StringsIn(rows.v));
    EXPECT_EQ(u"flag", Call(ini.get(), L"GetSectionRowKey", {rows, Var(int32_t{1})}).value.Text());
    Var names;
    EXPECT_EQ(S_OK, Call(ini.get(), L"GetSectionNames", {Ref(VT_VARIANT, &names.v)}).hr);
    EXPECT_EQ((std::vector<std::u16string>{u"Sec", u""}), StringsIn(names.v));
}

}  // namespace
