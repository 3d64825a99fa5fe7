// TestDataObject: a drag's data object on the test's stack, with Unicode text and a file list.
#pragma once

#include "platform/win32/WinApi.h"

#include <ole2.h>
#include <shlobj.h>

#include <cstring>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/StackComObject.h"

namespace testsupport {

// A wide CF_HDROP block: the header, each name with its zero, and a closing zero. Without
// `terminated` the closing zero and the last name's zero are left out, as in a damaged block.
inline std::vector<unsigned char> WideFileList(const std::vector<std::u16string>& files, bool terminated = true) {
    DROPFILES header{};
    header.pFiles = sizeof(DROPFILES);
    header.fWide = TRUE;
    std::vector<unsigned char> block(sizeof(header));
    std::memcpy(block.data(), &header, sizeof(header));
    for (const std::u16string& name : files) {
        const auto* bytes = reinterpret_cast<const unsigned char*>(name.c_str());
        block.insert(block.end(), bytes, bytes + (name.size() + 1) * sizeof(char16_t));
    }
    if (terminated) {
        block.insert(block.end(), sizeof(char16_t), 0);
    } else if (!files.empty()) {
        block.resize(block.size() - sizeof(char16_t));
    }
    return block;
}

// Offers `text` as CF_UNICODETEXT when set and `fileList` as CF_HDROP when not empty, both in
// global memory; `failGet` makes GetData fail although QueryGetData still offers the format.
class TestDataObject : public StackComObject<IDataObject, IID_IDataObject> {
public:
    TestDataObject() = default;
    explicit TestDataObject(std::vector<std::u16string> files) : fileList(WideFileList(files)) {}
    TestDataObject(std::u16string unicodeText, const std::vector<std::u16string>& files)
        : text(std::move(unicodeText)), fileList(files.empty() ? std::vector<unsigned char>() : WideFileList(files)) {}

    std::optional<std::u16string> text;
    std::vector<unsigned char> fileList;
    bool failGet = false;

    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) override {
        if (!format || !(format->tymed & TYMED_HGLOBAL)) return DV_E_FORMATETC;
        const bool offered =
            (format->cfFormat == CF_UNICODETEXT && text) || (format->cfFormat == CF_HDROP && !fileList.empty());
        return offered ? S_OK : DV_E_FORMATETC;
    }
    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) override {
        if (failGet || QueryGetData(format) != S_OK) return DV_E_FORMATETC;
        const void* content = fileList.data();
        size_t size = fileList.size();
        if (format->cfFormat == CF_UNICODETEXT) {
            content = text->c_str();
            size = (text->size() + 1) * sizeof(char16_t);
        }
        const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, size);
        if (!memory) return E_OUTOFMEMORY;
        std::memcpy(::GlobalLock(memory), content, size);
        ::GlobalUnlock(memory);
        medium->tymed = TYMED_HGLOBAL;
        medium->hGlobal = memory;
        medium->pUnkForRelease = nullptr;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD, IEnumFORMATETC**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }
};

}  // namespace testsupport
