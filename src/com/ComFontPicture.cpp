#include "com/ComFontPicture.h"

#include <algorithm>
#include <vector>

#include "com/ComConvert.h"
#include "com/ComPtr.h"
#include "frame/StdFont.h"
#include "frame/StdPicture.h"

namespace tc::com {

namespace {

// Which platform object stands for which of our objects. The platform object is held while ours
// lives, so that a get hands out the object the host set; entries of dead objects are dropped at
// the next look-up.
template <class Ours>
class ObjectPairs {
public:
    IUnknown* Find(const Ours* ours) {
        prune();
        for (const Pair& pair : m_pairs) {
            const auto live = pair.ours.lock();
            if (live.get() == ours) return pair.theirs.get();
        }
        return nullptr;
    }
    std::shared_ptr<Ours> Find(IUnknown* theirs) {
        prune();
        for (const Pair& pair : m_pairs) {
            if (pair.theirs.get() == theirs) return pair.ours.lock();
        }
        return nullptr;
    }
    void Add(const std::shared_ptr<Ours>& ours, IUnknown* theirs) {
        m_pairs.push_back(Pair{ours, ComPtr<IUnknown>::Share(theirs)});
    }

private:
    struct Pair {
        std::weak_ptr<Ours> ours;
        ComPtr<IUnknown> theirs;
    };
    void prune() {
        std::erase_if(m_pairs, [](const Pair& pair) { return pair.ours.expired(); });
    }
    std::vector<Pair> m_pairs;
};

// Objects belong to the apartment that made them.
thread_local ObjectPairs<StdFont> t_fonts;
thread_local ObjectPairs<StdPicture> t_pictures;

// The identity of a COM object, for comparing two pointers to it.
ComPtr<IUnknown> identityOf(IUnknown* object) {
    ComPtr<IUnknown> unknown;
    if (object) object->QueryInterface(IID_IUnknown, unknown.putVoid());
    return unknown;
}

void readFont(IFont* source, StdFont& target) {
    BSTR name = nullptr;
    if (SUCCEEDED(source->get_Name(&name)) && name) {
        target.Name(FromBstr(name));
        ::SysFreeString(name);
    }
    CY size{};
    if (SUCCEEDED(source->get_Size(&size))) target.Size(static_cast<float>(static_cast<double>(size.int64) / 10000.0));
    SHORT weight = 0;
    if (SUCCEEDED(source->get_Weight(&weight))) target.Weight(weight);
    SHORT charset = 0;
    if (SUCCEEDED(source->get_Charset(&charset))) target.Charset(charset);
    BOOL flag = FALSE;
    if (SUCCEEDED(source->get_Italic(&flag))) target.Italic(flag != FALSE);
    if (SUCCEEDED(source->get_Underline(&flag))) target.Underline(flag != FALSE);
    if (SUCCEEDED(source->get_Strikethrough(&flag))) target.Strikethrough(flag != FALSE);
}

ComPtr<IFont> fontOf(IUnknown* object) {
    ComPtr<IFont> font;
    if (object) object->QueryInterface(IID_IFont, font.putVoid());
    return font;
}

}  // namespace

std::shared_ptr<StdFont> FromFontDisp(IFontDisp* font) {
    if (!font) return nullptr;
    const ComPtr<IUnknown> identity = identityOf(font);
    if (auto known = t_fonts.Find(identity.get())) return known;
    const ComPtr<IFont> source = fontOf(font);
    if (!source) throw ComFailure{DISP_E_TYPEMISMATCH};
    auto ours = std::make_shared<StdFont>();
    readFont(source.get(), *ours);
    t_fonts.Add(ours, identity.get());
    return ours;
}

IFontDisp* ToFontDisp(const std::shared_ptr<StdFont>& font) {
    if (!font) return nullptr;
    IFontDisp* out = nullptr;
    if (IUnknown* known = t_fonts.Find(font.get())) {
        if (FAILED(known->QueryInterface(IID_IFontDisp, reinterpret_cast<void**>(&out)))) throw ComFailure{E_FAIL};
        return out;
    }
    FONTDESC desc{};
    desc.cbSizeofstruct = sizeof(desc);
    std::u16string name = font->Name();
    desc.lpstrName = reinterpret_cast<LPOLESTR>(name.data());
    desc.cySize.int64 = static_cast<LONGLONG>(static_cast<double>(font->Size()) * 10000.0 + 0.5);
    desc.sWeight = font->Weight();
    desc.sCharset = font->Charset();
    desc.fItalic = font->Italic() ? TRUE : FALSE;
    desc.fUnderline = font->Underline() ? TRUE : FALSE;
    desc.fStrikethrough = font->Strikethrough() ? TRUE : FALSE;
    const HRESULT hr = ::OleCreateFontIndirect(&desc, IID_IFontDisp, reinterpret_cast<void**>(&out));
    if (FAILED(hr)) throw ComFailure{hr};
    const ComPtr<IUnknown> identity = identityOf(out);
    t_fonts.Add(font, identity.get());
    return out;
}

void SyncFontFromHost(const std::shared_ptr<StdFont>& font) {
    if (!font) return;
    const ComPtr<IFont> source = fontOf(t_fonts.Find(font.get()));
    if (source) readFont(source.get(), *font);
}

std::shared_ptr<StdPicture> FromPictureDisp(IPictureDisp* picture) {
    if (!picture) return nullptr;
    const ComPtr<IUnknown> identity = identityOf(picture);
    if (auto known = t_pictures.Find(identity.get())) return known;
    ComPtr<IPicture> source;
    if (FAILED(picture->QueryInterface(IID_IPicture, source.putVoid()))) throw ComFailure{DISP_E_TYPEMISMATCH};
    SHORT type = PICTYPE_NONE;
    OLE_HANDLE handle = 0;
    source->get_Type(&type);
    source->get_Handle(&handle);
    // The platform object keeps owning its handle; the pair below keeps it alive with ours.
    const auto raw = reinterpret_cast<HANDLE>(static_cast<UINT_PTR>(handle));
    std::shared_ptr<StdPicture> ours;
    if (type == PICTYPE_BITMAP && raw) {
        ours = StdPicture::FromBitmap(static_cast<HBITMAP>(raw), false);
    } else if (type == PICTYPE_ICON && raw) {
        ours = StdPicture::FromIcon(static_cast<HICON>(raw), false);
    } else {
        ours = StdPicture::Empty();
    }
    t_pictures.Add(ours, identity.get());
    return ours;
}

IPictureDisp* ToPictureDisp(const std::shared_ptr<StdPicture>& picture) {
    if (!picture) return nullptr;
    IPictureDisp* out = nullptr;
    if (IUnknown* known = t_pictures.Find(picture.get())) {
        if (FAILED(known->QueryInterface(IID_IPictureDisp, reinterpret_cast<void**>(&out)))) throw ComFailure{E_FAIL};
        return out;
    }
    PICTDESC desc{};
    desc.cbSizeofstruct = sizeof(desc);
    desc.picType = PICTYPE_NONE;
    if (picture->Type() == StdPicture::kTypeBitmap) {
        desc.picType = PICTYPE_BITMAP;
        desc.bmp.hbitmap = picture->Bitmap();
    } else if (picture->Type() == StdPicture::kTypeIcon) {
        desc.picType = PICTYPE_ICON;
        desc.icon.hicon = static_cast<HICON>(picture->Handle());
    }
    // Our object owns the handle; the pair keeps the platform object only while ours lives.
    const HRESULT hr = ::OleCreatePictureIndirect(&desc, IID_IPictureDisp, FALSE, reinterpret_cast<void**>(&out));
    if (FAILED(hr)) throw ComFailure{hr};
    const ComPtr<IUnknown> identity = identityOf(out);
    t_pictures.Add(picture, identity.get());
    return out;
}

}  // namespace tc::com
