#include "com/ComPropertyBag.h"

#include <cstring>

#include "com/ComConvert.h"
#include "com/ComPtr.h"
#include "frame/StdFont.h"
#include "frame/StdPicture.h"

namespace tc::com {

namespace {

// Stream layout: the magic "TCPB", a version, the count, then per pair the key (length in code
// units, UTF-16LE), a kind byte and the value.
constexpr uint32_t kMagic = 0x42504354;  // "TCPB" read as little-endian
constexpr uint32_t kVersion = 1;
enum Kind : uint8_t { kEmpty, kBool, kInteger, kLong, kSingle, kDouble, kString, kBytes, kFont, kPicture };

class Writer {
public:
    void Raw(const void* data, size_t size) {
        const auto* bytes = static_cast<const uint8_t*>(data);
        m_bytes.insert(m_bytes.end(), bytes, bytes + size);
    }
    template <class T>
    void Value(T value) {
        Raw(&value, sizeof(value));
    }
    void Text(const CtlString& text) {
        Value(static_cast<uint32_t>(text.size()));
        Raw(text.data(), text.size() * sizeof(char16_t));
    }
    void Bytes(const std::vector<uint8_t>& bytes) {
        Value(static_cast<uint32_t>(bytes.size()));
        Raw(bytes.data(), bytes.size());
    }
    const std::vector<uint8_t>& Result() const noexcept { return m_bytes; }

private:
    std::vector<uint8_t> m_bytes;
};

class Reader {
public:
    explicit Reader(IStream* stream) noexcept : m_stream(stream) {}
    bool Raw(void* data, size_t size) {
        if (size == 0) return true;
        ULONG read = 0;
        return SUCCEEDED(m_stream->Read(data, static_cast<ULONG>(size), &read)) && read == size;
    }
    template <class T>
    bool Value(T& value) {
        return Raw(&value, sizeof(value));
    }
    bool Text(CtlString& text) {
        uint32_t units = 0;
        if (!Value(units) || units > (1U << 28)) return false;
        text.resize(units);
        return Raw(text.data(), units * sizeof(char16_t));
    }
    bool Bytes(std::vector<uint8_t>& bytes) {
        uint32_t size = 0;
        if (!Value(size) || size > (1U << 30)) return false;
        bytes.resize(size);
        return Raw(bytes.data(), size);
    }

private:
    IStream* m_stream;
};

// A picture's own stream form (the platform picture saves itself); empty for no picture.
std::vector<uint8_t> pictureBytes(const std::shared_ptr<StdPicture>& picture) {
    if (!picture || picture->Type() == StdPicture::kTypeNone) return {};
    ComPtr<IPictureDisp> disp = ComPtr<IPictureDisp>::Attach(ToPictureDisp(picture));
    ComPtr<IPersistStream> persist;
    ComPtr<IStream> memory;
    if (!disp || FAILED(disp->QueryInterface(IID_IPersistStream, persist.putVoid())) ||
        FAILED(::CreateStreamOnHGlobal(nullptr, TRUE, memory.put())) || FAILED(persist->Save(memory.get(), TRUE))) {
        return {};
    }
    STATSTG stat{};
    memory->Stat(&stat, STATFLAG_NONAME);
    std::vector<uint8_t> bytes(static_cast<size_t>(stat.cbSize.QuadPart));
    const LARGE_INTEGER start{};
    memory->Seek(start, STREAM_SEEK_SET, nullptr);
    ULONG read = 0;
    memory->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read);
    bytes.resize(read);
    return bytes;
}

std::shared_ptr<StdPicture> pictureFromBytes(const std::vector<uint8_t>& bytes) {
    if (bytes.empty()) return StdPicture::Empty();
    ComPtr<IStream> memory;
    if (FAILED(::CreateStreamOnHGlobal(nullptr, TRUE, memory.put()))) return StdPicture::Empty();
    ULONG written = 0;
    memory->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written);
    const LARGE_INTEGER start{};
    memory->Seek(start, STREAM_SEEK_SET, nullptr);
    ComPtr<IPictureDisp> disp;
    if (FAILED(::OleLoadPicture(memory.get(), static_cast<LONG>(bytes.size()), FALSE, IID_IPictureDisp,
                                disp.putVoid()))) {
        return StdPicture::Empty();
    }
    return FromPictureDisp(disp.get());
}

}  // namespace

// ---- VARIANT conversions ----

HRESULT VariantFromBagValue(const CtlVariant& value, VARIANT& out) {
    ::VariantInit(&out);
    try {
        if (const auto* b = std::get_if<bool>(&value)) {
            out.vt = VT_BOOL;
            out.boolVal = *b ? VARIANT_TRUE : VARIANT_FALSE;
        } else if (const auto* i = std::get_if<int16_t>(&value)) {
            out.vt = VT_I2;
            out.iVal = *i;
        } else if (const auto* l = std::get_if<int32_t>(&value)) {
            out.vt = VT_I4;
            out.lVal = *l;
        } else if (const auto* f = std::get_if<float>(&value)) {
            out.vt = VT_R4;
            out.fltVal = *f;
        } else if (const auto* d = std::get_if<double>(&value)) {
            out.vt = VT_R8;
            out.dblVal = *d;
        } else if (const auto* s = std::get_if<CtlString>(&value)) {
            out.vt = VT_BSTR;
            out.bstrVal = ToBstr(*s);
        } else if (const auto* bytes = std::get_if<CtlByteArray>(&value)) {
            out.vt = VT_ARRAY | VT_UI1;
            out.parray = ToByteArray(*bytes);
        } else if (const auto* font = std::get_if<std::shared_ptr<StdFont>>(&value)) {
            out.vt = VT_DISPATCH;
            out.pdispVal = ToFontDisp(*font);
        } else if (const auto* picture = std::get_if<std::shared_ptr<StdPicture>>(&value)) {
            out.vt = VT_DISPATCH;
            out.pdispVal = ToPictureDisp(*picture);
        }
    } catch (const ComFailure& failure) {
        ::VariantClear(&out);
        return failure.hr;
    }
    return S_OK;
}

CtlVariant BagValueFromVariant(const VARIANT& value) {
    const VARIANT* v = &value;
    if (v->vt == (VT_VARIANT | VT_BYREF) && v->pvarVal) v = v->pvarVal;
    try {
        switch (v->vt) {
            case VT_BOOL: return v->boolVal != VARIANT_FALSE;
            case VT_I2: return static_cast<int16_t>(v->iVal);
            case VT_UI1: return static_cast<int16_t>(v->bVal);
            case VT_I4: case VT_INT: return static_cast<int32_t>(v->lVal);
            case VT_UI4: case VT_UINT: return static_cast<int32_t>(v->ulVal);
            case VT_R4: return v->fltVal;
            case VT_R8: return v->dblVal;
            case VT_BSTR: return FromBstr(v->bstrVal);
            case VT_ARRAY | VT_UI1: return FromByteArray(v->parray);
            case VT_DISPATCH: case VT_UNKNOWN: {
                if (!v->punkVal) return CtlVariant();
                ComPtr<IFontDisp> font;
                if (SUCCEEDED(v->punkVal->QueryInterface(IID_IFontDisp, font.putVoid()))) {
                    return FromFontDisp(font.get());
                }
                ComPtr<IPictureDisp> picture;
                if (SUCCEEDED(v->punkVal->QueryInterface(IID_IPictureDisp, picture.putVoid()))) {
                    return FromPictureDisp(picture.get());
                }
                return CtlVariant();
            }
            default: return CtlVariant();
        }
    } catch (const ComFailure&) {
        return CtlVariant();
    }
}

// ---- the container's bag ----

CtlVariant ContainerPropertyBag::ReadProperty(const CtlString& key, const CtlVariant& defaultValue) {
    if (!m_bag) return defaultValue;
    VARIANT value;
    ::VariantInit(&value);
    const HRESULT hr = m_bag->Read(reinterpret_cast<LPCOLESTR>(key.c_str()), &value, m_log);
    if (FAILED(hr) || value.vt == VT_EMPTY) {
        ::VariantClear(&value);
        return defaultValue;
    }
    CtlVariant result = BagValueFromVariant(value);
    ::VariantClear(&value);
    return VariantIsEmpty(result) ? defaultValue : result;
}

void ContainerPropertyBag::WriteProperty(const CtlString& key, const CtlVariant& value, const CtlVariant&) {
    if (!m_bag) return;
    VARIANT wire;
    if (FAILED(VariantFromBagValue(value, wire))) return;
    m_bag->Write(reinterpret_cast<LPCOLESTR>(key.c_str()), &wire);
    ::VariantClear(&wire);
}

// ---- the stream's pairs ----

CtlVariant StreamPropertyBag::ReadProperty(const CtlString& key, const CtlVariant& defaultValue) {
    for (const auto& [name, value] : m_values) {
        if (name == key) return value;
    }
    return defaultValue;
}

void StreamPropertyBag::WriteProperty(const CtlString& key, const CtlVariant& value, const CtlVariant&) {
    for (auto& [name, stored] : m_values) {
        if (name == key) {
            stored = value;
            return;
        }
    }
    m_values.emplace_back(key, value);
}

HRESULT StreamPropertyBag::Save(IStream* stream) const {
    if (!stream) return E_POINTER;
    Writer out;
    out.Value(kMagic);
    out.Value(kVersion);
    out.Value(static_cast<uint32_t>(m_values.size()));
    for (const auto& [name, value] : m_values) {
        out.Text(name);
        if (const auto* b = std::get_if<bool>(&value)) {
            out.Value(kBool);
            out.Value(static_cast<uint8_t>(*b ? 1 : 0));
        } else if (const auto* i = std::get_if<int16_t>(&value)) {
            out.Value(kInteger);
            out.Value(*i);
        } else if (const auto* l = std::get_if<int32_t>(&value)) {
            out.Value(kLong);
            out.Value(*l);
        } else if (const auto* f = std::get_if<float>(&value)) {
            out.Value(kSingle);
            out.Value(*f);
        } else if (const auto* d = std::get_if<double>(&value)) {
            out.Value(kDouble);
            out.Value(*d);
        } else if (const auto* s = std::get_if<CtlString>(&value)) {
            out.Value(kString);
            out.Text(*s);
        } else if (const auto* bytes = std::get_if<CtlByteArray>(&value)) {
            out.Value(kBytes);
            out.Bytes(*bytes);
        } else if (const auto* font = std::get_if<std::shared_ptr<StdFont>>(&value)) {
            const StdFont plain = *font ? **font : StdFont();
            out.Value(kFont);
            out.Text(plain.Name());
            out.Value(plain.Size());
            out.Value(plain.Weight());
            out.Value(plain.Charset());
            out.Value(static_cast<uint8_t>((plain.Italic() ? 1 : 0) | (plain.Underline() ? 2 : 0) |
                                           (plain.Strikethrough() ? 4 : 0)));
        } else if (const auto* picture = std::get_if<std::shared_ptr<StdPicture>>(&value)) {
            out.Value(kPicture);
            out.Bytes(pictureBytes(*picture));
        } else {
            out.Value(kEmpty);
        }
    }
    const std::vector<uint8_t>& bytes = out.Result();
    ULONG written = 0;
    const HRESULT hr = stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written);
    if (FAILED(hr)) return hr;
    return written == bytes.size() ? S_OK : STG_E_MEDIUMFULL;
}

HRESULT StreamPropertyBag::Load(IStream* stream) {
    if (!stream) return E_POINTER;
    Reader in(stream);
    uint32_t magic = 0;
    uint32_t version = 0;
    uint32_t count = 0;
    if (!in.Value(magic) || magic != kMagic || !in.Value(version) || version != kVersion || !in.Value(count)) {
        return E_FAIL;
    }
    m_values.clear();
    for (uint32_t index = 0; index < count; ++index) {
        CtlString name;
        uint8_t kind = kEmpty;
        if (!in.Text(name) || !in.Value(kind)) return E_FAIL;
        CtlVariant value;
        bool ok = true;
        switch (kind) {
            case kEmpty: break;
            case kBool: { uint8_t b = 0; ok = in.Value(b); value = b != 0; break; }
            case kInteger: { int16_t i = 0; ok = in.Value(i); value = i; break; }
            case kLong: { int32_t l = 0; ok = in.Value(l); value = l; break; }
            case kSingle: { float f = 0; ok = in.Value(f); value = f; break; }
            case kDouble: { double d = 0; ok = in.Value(d); value = d; break; }
            case kString: { CtlString s; ok = in.Text(s); value = std::move(s); break; }
            case kBytes: { CtlByteArray bytes; ok = in.Bytes(bytes); value = std::move(bytes); break; }
            case kFont: {
                CtlString fontName;
                float size = 0;
                int16_t weight = 0;
                int16_t charset = 0;
                uint8_t flags = 0;
                ok = in.Text(fontName) && in.Value(size) && in.Value(weight) && in.Value(charset) && in.Value(flags);
                auto font = std::make_shared<StdFont>(fontName, size);
                font->Weight(weight);
                font->Charset(charset);
                font->Italic((flags & 1) != 0);
                font->Underline((flags & 2) != 0);
                font->Strikethrough((flags & 4) != 0);
                value = std::move(font);
                break;
            }
            case kPicture: { CtlByteArray bytes; ok = in.Bytes(bytes); value = pictureFromBytes(bytes); break; }
            default: return E_FAIL;
        }
        if (!ok) return E_FAIL;
        m_values.emplace_back(std::move(name), std::move(value));
    }
    return S_OK;
}

}  // namespace tc::com
