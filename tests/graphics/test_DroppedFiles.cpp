// GetUnicodeDroppedFiles over a data object: wide and narrow lists, missing format, failures, damaged blocks.
#include <gtest/gtest.h>

#include <shlobj.h>

#include <cstring>
#include <string>
#include <vector>

#include "graphics/modCommonDraw.h"
#include "support/StackComObject.h"

namespace {

// A data object that offers one CF_HDROP block, as built by the test.
class FakeDrop : public testsupport::StackComObject<IDataObject, IID_IDataObject> {
public:
    std::vector<unsigned char> block;
    bool offerDrop = true;
    bool failGet = false;

    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) override {
        if (failGet || !offerDrop || format->cfFormat != CF_HDROP) return DV_E_FORMATETC;
        const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, block.size());
        std::memcpy(::GlobalLock(memory), block.data(), block.size());
        ::GlobalUnlock(memory);
        medium->tymed = TYMED_HGLOBAL;
        medium->hGlobal = memory;
        medium->pUnkForRelease = nullptr;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) override {
        return (offerDrop && format->cfFormat == CF_HDROP && (format->tymed & TYMED_HGLOBAL) != 0) ? S_OK
                                                                                                  : DV_E_FORMATETC;
    }
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD, IEnumFORMATETC**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }
};

std::vector<unsigned char> wideBlock(const std::vector<std::u16string>& files, bool terminated = true) {
    DROPFILES header{};
    header.pFiles = sizeof(DROPFILES);
    header.fWide = TRUE;
    std::vector<unsigned char> block(sizeof(header));
    std::memcpy(block.data(), &header, sizeof(header));
    const auto append = [&](const std::u16string& s) {
        const auto* bytes = reinterpret_cast<const unsigned char*>(s.c_str());
        block.insert(block.end(), bytes, bytes + (s.size() + 1) * 2);
    };
    for (const auto& f : files) append(f);
    if (terminated) {
        append(u"");
    } else {
        block.resize(block.size() - 2);  // the last name loses its terminator too
    }
    return block;
}

TEST(DroppedFiles, ReadsTheWideListAndFallsBackOnFailure) {
    const std::vector<CtlString> fallback = {u"C:\\narrowed?.txt"};
    const std::vector<CtlString> names = {u"C:\\\u0416\u03A9\\a.txt", u"Z:\\tmp\\\u05D0 b.dat", u"c"};
    FakeDrop drop;
    drop.block = wideBlock(names);
    EXPECT_EQ(GetUnicodeDroppedFiles(&drop, fallback), names);

    // A damaged block: no final terminator. What is there is read, nothing past the end.
    drop.block = wideBlock({u"first", u"second"}, false);
    const std::vector<CtlString> damaged = GetUnicodeDroppedFiles(&drop, fallback);
    ASSERT_GE(damaged.size(), 1u);
    EXPECT_EQ(damaged[0], u"first");

    // A narrow list is widened through the ANSI code page.
    DROPFILES header{};
    header.pFiles = sizeof(DROPFILES);
    header.fWide = FALSE;
    std::vector<unsigned char> narrow(sizeof(header));
    std::memcpy(narrow.data(), &header, sizeof(header));
    for (const char* s : {"C:\\one.txt", "two", ""}) narrow.insert(narrow.end(), s, s + std::strlen(s) + 1);
    drop.block = narrow;
    EXPECT_EQ(GetUnicodeDroppedFiles(&drop, fallback), (std::vector<CtlString>{u"C:\\one.txt", u"two"}));

    // A header pointing outside the block gives the fallback.
    drop.block = wideBlock(names);
    reinterpret_cast<DROPFILES*>(drop.block.data())->pFiles = 100000;
    EXPECT_EQ(GetUnicodeDroppedFiles(&drop, fallback), fallback);

    drop.failGet = true;
    EXPECT_EQ(GetUnicodeDroppedFiles(&drop, fallback), fallback);
    drop.offerDrop = false;
    EXPECT_TRUE(GetUnicodeDroppedFiles(&drop, fallback).empty()) << "no CF_HDROP: empty";
    EXPECT_TRUE(GetUnicodeDroppedFiles(nullptr, fallback).empty());
}

}  // namespace
