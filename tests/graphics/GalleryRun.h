// GalleryRun: runs the gallery executable with arguments and reads back the PNG and layout files it writes.
#pragma once

#include <wincodec.h>

#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "graphics/GdiRaii.h"

namespace galleryrun {

// The build hands in a host path; under Wine the host's root is drive Z:.
inline std::wstring windowsPath(const std::string& path) {
    std::wstring wide(path.begin(), path.end());
    if (!wide.empty() && wide[0] == L'/') wide = L"Z:" + wide;
    for (wchar_t& c : wide) {
        if (c == L'/') c = L'\\';
    }
    return wide;
}

inline bool runGallery(const std::wstring& arguments) {
    std::wstring command = L"\"" + windowsPath(TC_GALLERY_EXE) + L"\" " + arguments;
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process{};
    if (!::CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) {
        return false;
    }
    const DWORD waited = ::WaitForSingleObject(process.hProcess, 120000);
    DWORD code = 1;
    ::GetExitCodeProcess(process.hProcess, &code);
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    return waited == WAIT_OBJECT_0 && code == 0;
}

// A file in the temporary folder, deleted first.
inline std::wstring tempFile(const wchar_t* name) {
    wchar_t folder[MAX_PATH] = {};
    ::GetTempPathW(MAX_PATH, folder);
    const std::wstring path = std::wstring(folder) + name;
    ::DeleteFileW(path.c_str());
    return path;
}

struct Image {
    UINT width = 0;
    UINT height = 0;
    std::vector<uint32_t> pixels;  // 0x00RRGGBB
    int32_t At(UINT x, UINT y) const {
        const uint32_t word = pixels[y * width + x];
        return static_cast<int32_t>(((word >> 16) & 0xFFu) | (word & 0xFF00u) | ((word & 0xFFu) << 16));
    }
};

// COM must be initialised on the thread.
inline bool readPng(const std::wstring& path, Image& image) {
    ComRef<IWICImagingFactory> factory;
    if (FAILED(::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                                  reinterpret_cast<void**>(factory.put())))) {
        return false;
    }
    ComRef<IWICBitmapDecoder> decoder;
    if (FAILED(factory->CreateDecoderFromFilename(path.c_str(), nullptr, GENERIC_READ, WICDecodeMetadataCacheOnLoad,
                                                  decoder.put()))) {
        return false;
    }
    ComRef<IWICBitmapFrameDecode> frame;
    if (FAILED(decoder->GetFrame(0, frame.put()))) return false;
    ComRef<IWICFormatConverter> converter;
    if (FAILED(factory->CreateFormatConverter(converter.put()))) return false;
    if (FAILED(converter->Initialize(frame.get(), GUID_WICPixelFormat32bppBGR, WICBitmapDitherTypeNone, nullptr, 0.0,
                                     WICBitmapPaletteTypeCustom))) {
        return false;
    }
    converter->GetSize(&image.width, &image.height);
    image.pixels.assign(static_cast<size_t>(image.width) * image.height, 0);
    return SUCCEEDED(converter->CopyPixels(nullptr, image.width * 4, static_cast<UINT>(image.pixels.size() * 4),
                                           reinterpret_cast<BYTE*>(image.pixels.data())));
}

// The lines of a --layout file, each split into its words.
inline std::vector<std::vector<std::string>> readLayout(const std::wstring& path) {
    std::vector<std::vector<std::string>> lines;
    const int size = ::WideCharToMultiByte(CP_ACP, 0, path.c_str(), -1, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<size_t>(size > 0 ? size : 1), '\0');
    ::WideCharToMultiByte(CP_ACP, 0, path.c_str(), -1, narrow.data(), size, nullptr, nullptr);
    std::ifstream file(narrow.c_str());
    std::string line;
    while (std::getline(file, line)) {
        std::istringstream words(line);
        std::vector<std::string> split;
        std::string word;
        while (words >> word) split.push_back(word);
        if (!split.empty()) lines.push_back(split);
    }
    return lines;
}

}  // namespace galleryrun
