#include <gtest/gtest.h>

#include <functional>

#include "TextComTestSupport.h"

namespace {

using namespace comtest;
using tc::com::CLSID_clsFileIni;
using tc::com::CLSID_clsFileIniEx;
using tc::com::CLSID_clsUniFile;

constexpr int32_t kFe_UTF16LE = 1;
constexpr int32_t kFe_UTF8 = 2;
constexpr int32_t kEupp_FILE_END = 2;
constexpr int64_t kFiveGiB = int64_t{5} << 30;

// Cyrillic, CJK, a surrogate pair (U+1F600), and a lone high surrogate.
const std::u16string kMixedText = u"Привет 中文 \U0001F600 " + std::u16string(1, char16_t{0xD800}) + u" end";

void ExpectTrue(const CallResult& r, const char* what) {
    EXPECT_EQ(S_OK, r.hr) << what;
    EXPECT_EQ(VT_BOOL, r.value.v.vt) << what;
    EXPECT_EQ(VARIANT_TRUE, r.value.v.boolVal) << what;
}

void ExpectCurrency(int64_t whole, const CallResult& r, const char* what) {
    EXPECT_EQ(S_OK, r.hr) << what;
    ASSERT_EQ(VT_CY, r.value.v.vt) << what;
    EXPECT_EQ(whole * 10000, r.value.v.cyVal.int64) << what;
}

SAFEARRAY* ByteArray(std::initializer_list<uint8_t> bytes) {
    SAFEARRAY* array = ::SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
    uint8_t* data = nullptr;
    ::SafeArrayAccessData(array, reinterpret_cast<void**>(&data));
    std::copy(bytes.begin(), bytes.end(), data);
    ::SafeArrayUnaccessData(array);
    return array;
}

std::vector<uint8_t> BytesOf(SAFEARRAY* array) {
    std::vector<uint8_t> bytes;
    if (!array) return bytes;
    LONG lower = 0;
    LONG upper = -1;
    ::SafeArrayGetLBound(array, 1, &lower);
    ::SafeArrayGetUBound(array, 1, &upper);
    uint8_t* data = nullptr;
    ::SafeArrayAccessData(array, reinterpret_cast<void**>(&data));
    bytes.assign(data, data + (upper - lower + 1));
    ::SafeArrayUnaccessData(array);
    return bytes;
}

TEST(ComUniFile, BytesNumbersAndPositionsCrossAsArraysAndCurrency) {
    OleSession ole;
    ScratchFolder folder(L"tc_com_unifile");
    ComPtr<IDispatch> file = Server::Instance().Create(CLSID_clsUniFile);
    ASSERT_TRUE(file);
    const std::wstring path = folder.Path(L"data.bin");

    ExpectTrue(Call(file.get(), L"OpenFileWrite", {path.c_str()}), "open for writing, bShared omitted");
    SAFEARRAY* written = ByteArray({0x00, 0x7F, 0x80, 0xFE, 0xFF});
    ExpectTrue(Call(file.get(), L"WriteBytes", {Ref(VT_ARRAY | VT_UI1, &written)}), "WriteBytes");
    ::SafeArrayDestroy(written);
    ExpectTrue(Call(file.get(), L"WriteLong", {Var(int32_t{0x11223344})}), "WriteLong");
    // Still in the write cache: the size counts pending bytes.
    ExpectCurrency(9, Call(file.get(), L"LOF"), "LOF before the flush");
    ExpectCurrency(9, Call(file.get(), L"GetFilePos"), "GetFilePos after writing");
    EXPECT_EQ(S_OK, Call(file.get(), L"CloseFile").hr);

    ExpectTrue(Call(file.get(), L"OpenFileRead", {path.c_str(), Var(false)}), "open for reading, bShared given");
    SAFEARRAY* read = ByteArray({0, 0, 0, 0, 0});
    Var readRef = Ref(VT_ARRAY | VT_UI1, &read);
    ExpectTrue(Call(file.get(), L"ReadBytes", {readRef}), "ReadBytes");
    EXPECT_EQ(VT_UI1, [&] {
        VARTYPE vt = VT_EMPTY;
        ::SafeArrayGetVartype(read, &vt);
        return vt;
    }());
    EXPECT_EQ((std::vector<uint8_t>{0x00, 0x7F, 0x80, 0xFE, 0xFF}), BytesOf(read));
    ::SafeArrayDestroy(read);
    LONG number = 0;
    ExpectTrue(Call(file.get(), L"ReadLong", {Ref(VT_I4, &number)}), "ReadLong");
    EXPECT_EQ(0x11223344, number);

    // iFrom given: from the end; omitted: from the beginning.
    EXPECT_EQ(S_OK, Call(file.get(), L"SetFilePos", {Cy(0), Var(kEupp_FILE_END)}).hr);
    ExpectCurrency(9, Call(file.get(), L"GetFilePos"), "position at the end");
    EXPECT_EQ(S_OK, Call(file.get(), L"SetFilePos", {Cy(1)}).hr);
    BYTE byte = 0;
    ExpectTrue(Call(file.get(), L"ReadByte", {Ref(VT_UI1, &byte)}), "ReadByte");
    EXPECT_EQ(0x7F, byte);
    EXPECT_EQ(S_OK, Call(file.get(), L"CloseFile").hr);
    ExpectCurrency(9, Call(file.get(), L"st_FileLen", {path.c_str()}), "st_FileLen");

    // Raw memory by address: the caller's own buffers, in its own process.
    const auto address = [](void* at) {
        Var v;
        v.v.vt = sizeof(void*) == 8 ? VT_I8 : VT_I4;
        if constexpr (sizeof(void*) == 8) {
            v.v.llVal = reinterpret_cast<LONGLONG>(at);
        } else {
            v.v.lVal = static_cast<LONG>(reinterpret_cast<LONG_PTR>(at));
        }
        return v;
    };
    const std::wstring raw = folder.Path(L"raw.bin");
    char source[] = "raw bytes";
    ExpectTrue(Call(file.get(), L"OpenFileWrite", {raw.c_str()}), "open for WriteAny");
    ExpectTrue(Call(file.get(), L"WriteAny", {address(source), Var(int32_t{9})}), "WriteAny");
    EXPECT_EQ(S_OK, Call(file.get(), L"CloseFile").hr);
    char target[10] = {};
    ExpectTrue(Call(file.get(), L"OpenFileRead", {raw.c_str()}), "open for ReadAny");
    ExpectTrue(Call(file.get(), L"ReadAny", {address(target), Var(int32_t{8})}), "ReadAny");
    EXPECT_STREQ("raw byte", target);
    EXPECT_EQ(S_OK, Call(file.get(), L"CloseFile").hr);

    // Positions beyond 4 GiB: a sparse file with one byte behind a hole of 5 GiB.
    const std::wstring big = folder.Path(L"big.bin");
    ExpectTrue(Call(file.get(), L"OpenFileWrite", {big.c_str()}), "open the big file");
    EXPECT_EQ(S_OK, Call(file.get(), L"SetFilePos", {Cy(kFiveGiB)}).hr);
    byte = 0x5A;
    ExpectTrue(Call(file.get(), L"WriteByte", {Ref(VT_UI1, &byte)}), "WriteByte beyond 4 GiB");
    ExpectCurrency(kFiveGiB + 1, Call(file.get(), L"GetFilePos"), "GetFilePos beyond 4 GiB");
    EXPECT_EQ(S_OK, Call(file.get(), L"CloseFile").hr);
    ExpectTrue(Call(file.get(), L"OpenFileRead", {big.c_str()}), "reopen the big file");
    ExpectCurrency(kFiveGiB + 1, Call(file.get(), L"LOF"), "LOF beyond 4 GiB");
    // The last byte of a file is not fetched through the cache: read it with the cache off.
    EXPECT_EQ(S_OK, Put(file.get(), L"UseCache", Var(false)).hr);
    EXPECT_EQ(S_OK, Call(file.get(), L"SetFilePos", {Cy(kFiveGiB)}).hr);
    ExpectCurrency(kFiveGiB, Call(file.get(), L"RealFilePos"), "RealFilePos beyond 4 GiB");
    byte = 0;
    ExpectTrue(Call(file.get(), L"ReadByte", {Ref(VT_UI1, &byte)}), "ReadByte beyond 4 GiB");
    EXPECT_EQ(0x5A, byte);
    EXPECT_EQ(S_OK, Call(file.get(), L"CloseFile").hr);
}

TEST(ComUniFile, UnicodeTextRoundTripsThroughLinesAndWholeFiles) {
    OleSession ole;
    ScratchFolder folder(L"tc_com_unitext");
    ComPtr<IDispatch> file = Server::Instance().Create(CLSID_clsUniFile);
    ASSERT_TRUE(file);
    const std::wstring path = folder.Path(L"text.txt");

    for (const int32_t encoding : {kFe_UTF16LE, kFe_UTF8}) {
        SCOPED_TRACE(encoding);
        ExpectTrue(Call(file.get(), L"OpenFileWrite", {path.c_str()}), "open for writing");
        ExpectTrue(Call(file.get(), L"WriteBOM", {Var(encoding)}), "WriteBOM");
        ExpectTrue(Call(file.get(), L"WriteLine", {Var(kMixedText), Var(encoding)}), "WriteLine");
        ExpectTrue(Call(file.get(), L"WriteLine", {L"second", Var(encoding)}), "WriteLine");
        EXPECT_EQ(S_OK, Call(file.get(), L"CloseFile").hr);

        ExpectTrue(Call(file.get(), L"OpenFileRead", {path.c_str()}), "open for reading");
        const CallResult mark = Call(file.get(), L"ReadBOM");
        EXPECT_EQ(VT_I4, mark.value.v.vt);
        EXPECT_EQ(encoding, mark.value.v.lVal);
        // The by-reference string is written back.
        StringSlot line(u"stale");
        ExpectTrue(Call(file.get(), L"ReadLine", {line.Arg(), Var(encoding)}), "ReadLine");
        EXPECT_EQ(Units(kMixedText), Units(line.Text()));
        ExpectTrue(Call(file.get(), L"ReadLine", {line.Arg(), Var(encoding)}), "ReadLine");
        EXPECT_EQ(u"second", line.Text());
        EXPECT_EQ(S_OK, Call(file.get(), L"CloseFile").hr);
    }

    // The whole-file members: iEncoding given, bRaiseError omitted.
    ExpectTrue(Call(file.get(), L"st_StringToTextFile", {path.c_str(), Var(kMixedText), Var(kFe_UTF16LE)}),
               "st_StringToTextFile");
    StringSlot whole(u"stale");
    ExpectTrue(Call(file.get(), L"st_TextFileToString", {path.c_str(), whole.Arg()}), "st_TextFileToString");
    EXPECT_EQ(Units(kMixedText), Units(whole.Text()));
}

TEST(ComTextErrors, LibraryErrorsReachTheCallerWithNumberAndText) {
    OleSession ole;
    ScratchFolder folder(L"tc_com_texterrors");
    const std::wstring missing = folder.Path(L"missing.txt");
    ComPtr<IDispatch> file = Server::Instance().Create(CLSID_clsUniFile);
    ComPtr<IDispatch> ini = Server::Instance().Create(CLSID_clsFileIni);
    ComPtr<IDispatch> iniEx = Server::Instance().Create(CLSID_clsFileIniEx);
    ASSERT_TRUE(file && ini && iniEx);

    struct Case {
        const char* what;
        std::function<CallResult()> call;
        std::u16string description;
        std::u16string source;  // empty: not checked
    };
    StringSlot text(u"");
    const Case cases[] = {
        {"a second open after a failed one",
         [&] {
             Call(file.get(), L"OpenFileRead", {missing.c_str()});
             return Call(file.get(), L"OpenFileRead", {missing.c_str()});
         },
         u"A file is already open!", u"clsUniFile.OpenFile"},
        {"a web path given to a local path member", [&] { return Call(file.get(), L"st_OneBackSlash", {L"a/b"}); },
         u"Not a local path", u"ufu_OneBackSlash"},
        {"a missing text file",
         [&] { return Call(file.get(), L"st_TextFileToString", {missing.c_str(), text.Arg()}); },
         u"Error reading file", u"ufu_TextFileToString"},
        {"an INI read with no file", [&] { return Call(ini.get(), L"ReadString", {L"s", L"k"}); }, u"I need a file!",
         u""},
        {"a lookup before a load", [&] { return Call(iniEx.get(), L"GetString", {L"s", L"k"}); },
         u"Please load the file first!", u""},
        {"a save with no file", [&] { return Call(iniEx.get(), L"Save"); }, u"I need a file!", u""},
    };
    for (const Case& c : cases) {
        const CallResult r = c.call();
        EXPECT_EQ(DISP_E_EXCEPTION, r.hr) << c.what;
        EXPECT_EQ(-2147221503, r.scode) << c.what;
        EXPECT_EQ(c.description, r.description) << c.what;
        if (!c.source.empty()) {
            EXPECT_EQ(c.source, r.source) << c.what;
        }
    }
    Call(file.get(), L"CloseFile");
}

}  // namespace
