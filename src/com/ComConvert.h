// Conversions between the wire types of the type library and the library's C++ types: the
// comtype tags, ComIn, ComOut, ComRef (by-reference arguments) and the VARIANT forms of each.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "com/ComPrerequisites.h"
#include "common/CtlTypes.h"

class StdFont;
class StdPicture;

namespace tc::com {

// A failed HRESULT that is not a library error (a null out pointer, a wrong argument type).
struct ComFailure {
    HRESULT hr;
};

namespace comtype {
struct String {};
struct Bool {};
struct Byte {};
struct Short {};
struct Long {};
struct Single {};
struct Double {};
struct Currency {};
struct Handle {};
struct Color {};
struct Bytes {};
struct Variant {};
struct Font {};
struct Picture {};
struct Dispatch {};
struct Unknown {};
struct Rect {};
struct Point {};
struct Enum {};
template <class Adapter>
struct Object {};
}  // namespace comtype

// A handle-sized value that becomes whichever handle or integer type the C++ member takes.
struct HandleValue {
    LONG_PTR value;
    template <class T>
    operator T() const {
        if constexpr (std::is_pointer_v<T>) {
            return reinterpret_cast<T>(value);
        } else {
            return static_cast<T>(value);
        }
    }
};

// An enumeration value that becomes the C++ enumeration the member takes, or a plain integer.
struct EnumValue {
    LONG value;
    template <class T>
    operator T() const {
        return static_cast<T>(value);
    }
};

std::u16string FromBstr(BSTR text);
BSTR ToBstr(const std::u16string& text);
std::vector<uint8_t> FromByteArray(SAFEARRAY* array);
SAFEARRAY* ToByteArray(const std::vector<uint8_t>& bytes);
std::shared_ptr<StdFont> FromFontDisp(IFontDisp* font);
IFontDisp* ToFontDisp(const std::shared_ptr<StdFont>& font);
std::shared_ptr<StdPicture> FromPictureDisp(IPictureDisp* picture);
IPictureDisp* ToPictureDisp(const std::shared_ptr<StdPicture>& picture);

inline void CheckOut(const void* out) {
    if (!out) throw ComFailure{E_POINTER};
}

// Tags of the library's own classes (generated) carry Wrap and Unwrap.
template <class Tag>
concept ObjectTag = requires { typename Tag::Cpp; };

// ---- ComIn: the C++ value of an [in] argument ----
template <class Tag, class Wire>
decltype(auto) ComIn(Wire&& wire) {
    if constexpr (std::is_same_v<Tag, comtype::String>) {
        return FromBstr(wire);
    } else if constexpr (std::is_same_v<Tag, comtype::Bool>) {
        return wire != VARIANT_FALSE;
    } else if constexpr (std::is_same_v<Tag, comtype::Byte>) {
        return static_cast<uint8_t>(wire);
    } else if constexpr (std::is_same_v<Tag, comtype::Short>) {
        return static_cast<int16_t>(wire);
    } else if constexpr (std::is_same_v<Tag, comtype::Long> || std::is_same_v<Tag, comtype::Color>) {
        return static_cast<int32_t>(wire);
    } else if constexpr (std::is_same_v<Tag, comtype::Single>) {
        return static_cast<float>(wire);
    } else if constexpr (std::is_same_v<Tag, comtype::Double>) {
        return static_cast<double>(wire);
    } else if constexpr (std::is_same_v<Tag, comtype::Currency>) {
        // Sizes cross as whole numbers of the fixed-point type: the fraction is dropped.
        return static_cast<int64_t>(wire.int64 / 10000);
    } else if constexpr (std::is_same_v<Tag, comtype::Handle>) {
        return HandleValue{wire};
    } else if constexpr (std::is_same_v<Tag, comtype::Enum>) {
        return EnumValue{static_cast<LONG>(wire)};
    } else if constexpr (std::is_same_v<Tag, comtype::Bytes>) {
        return FromByteArray(wire);
    } else if constexpr (std::is_same_v<Tag, comtype::Font>) {
        return FromFontDisp(wire);
    } else if constexpr (std::is_same_v<Tag, comtype::Picture>) {
        return FromPictureDisp(wire);
    } else if constexpr (ObjectTag<Tag>) {
        return Tag::Unwrap(wire);
    } else {
        // Variants, interfaces and adapters' own objects go to the member as they are.
        return std::forward<Wire>(wire);
    }
}

// ---- ComOut: a C++ result into an [out] pointer ----
template <class Tag, class Wire, class Value>
void ComOut(Wire* out, Value&& value) {
    CheckOut(out);
    if constexpr (std::is_same_v<Tag, comtype::String>) {
        *out = ToBstr(value);
    } else if constexpr (std::is_same_v<Tag, comtype::Bool>) {
        *out = value ? VARIANT_TRUE : VARIANT_FALSE;
    } else if constexpr (std::is_same_v<Tag, comtype::Currency>) {
        out->int64 = static_cast<LONGLONG>(value) * 10000;
    } else if constexpr (std::is_same_v<Tag, comtype::Handle>) {
        if constexpr (std::is_pointer_v<std::decay_t<Value>>) {
            *out = reinterpret_cast<LONG_PTR>(value);
        } else {
            *out = static_cast<LONG_PTR>(value);
        }
    } else if constexpr (std::is_same_v<Tag, comtype::Bytes>) {
        *out = ToByteArray(value);
    } else if constexpr (std::is_same_v<Tag, comtype::Font>) {
        *out = ToFontDisp(value);
    } else if constexpr (std::is_same_v<Tag, comtype::Picture>) {
        *out = ToPictureDisp(value);
    } else if constexpr (std::is_same_v<Tag, comtype::Variant>) {
        ::VariantInit(out);
        const HRESULT hr = ::VariantCopy(out, const_cast<VARIANT*>(&value));
        if (FAILED(hr)) throw ComFailure{hr};
    } else if constexpr (std::is_same_v<Tag, comtype::Dispatch> || std::is_same_v<Tag, comtype::Unknown>) {
        *out = value;
        if (*out) (*out)->AddRef();
    } else if constexpr (ObjectTag<Tag>) {
        *out = nullptr;
        const HRESULT hr = Tag::Wrap(std::forward<Value>(value), out);
        if (FAILED(hr)) throw ComFailure{hr};
    } else {
        *out = static_cast<Wire>(value);
    }
}

// Frees what an [in, out] argument held before a new value goes in.
template <class Tag, class Wire>
void ReleaseWire(Wire& wire) {
    if constexpr (std::is_same_v<Tag, comtype::String>) {
        ::SysFreeString(wire);
        wire = nullptr;
    } else if constexpr (std::is_same_v<Tag, comtype::Bytes>) {
        if (wire) ::SafeArrayDestroy(wire);
        wire = nullptr;
    } else if constexpr (std::is_same_v<Tag, comtype::Variant>) {
        ::VariantClear(&wire);
    }
}

// ---- ComRef: an [in, out] argument, read in at construction and written back by Commit ----
template <class Tag, class Wire>
class ComRefOf {
public:
    explicit ComRefOf(Wire* wire) : m_wire(wire), value((CheckOut(wire), ComIn<Tag>(*wire))) {}
    void Commit() {
        ReleaseWire<Tag>(*m_wire);
        ComOut<Tag>(m_wire, value);
    }

private:
    Wire* m_wire;

public:
    std::decay_t<decltype(ComIn<Tag>(std::declval<Wire&>()))> value;
};

// Records are the caller's memory: the member works on them in place.
template <class Record>
class ComRecordRef {
public:
    explicit ComRecordRef(Record* record) : value((CheckOut(record), *record)) {}
    void Commit() {}
    Record& value;
};

template <class Tag>
struct WireOf;
template <> struct WireOf<comtype::String> { using type = BSTR; };
template <> struct WireOf<comtype::Bool> { using type = VARIANT_BOOL; };
template <> struct WireOf<comtype::Byte> { using type = BYTE; };
template <> struct WireOf<comtype::Short> { using type = SHORT; };
template <> struct WireOf<comtype::Long> { using type = LONG; };
template <> struct WireOf<comtype::Color> { using type = OLE_COLOR; };
template <> struct WireOf<comtype::Enum> { using type = LONG; };
template <> struct WireOf<comtype::Single> { using type = FLOAT; };
template <> struct WireOf<comtype::Double> { using type = DOUBLE; };
template <> struct WireOf<comtype::Currency> { using type = CY; };
template <> struct WireOf<comtype::Handle> { using type = LONG_PTR; };
template <> struct WireOf<comtype::Bytes> { using type = SAFEARRAY*; };
template <> struct WireOf<comtype::Variant> { using type = VARIANT; };
template <> struct WireOf<comtype::Dispatch> { using type = IDispatch*; };

template <class Tag>
struct ComRefSelect {
    using type = ComRefOf<Tag, typename WireOf<Tag>::type>;
};
template <> struct ComRefSelect<comtype::Rect> { using type = ComRecordRef<CTL_RECT>; };
template <> struct ComRefSelect<comtype::Point> { using type = ComRecordRef<CTL_POINTAPI>; };
// A by-reference VARIANT is worked on in place too: a copy of its contents would be freed twice.
template <> struct ComRefSelect<comtype::Variant> { using type = ComRecordRef<VARIANT>; };

template <class Tag>
using ComRef = typename ComRefSelect<Tag>::type;

// An optional [in, out] argument: Wine's dispatch passes no pointer when the caller leaves it out,
// and the member then works on a local that holds the default.
template <class Tag>
class ComOptionalRef {
    using Wire = typename WireOf<Tag>::type;

public:
    ComOptionalRef(Wire* wire, Wire fallback) : m_local(fallback), m_ref(wire ? wire : &m_local), value(m_ref.value) {}
    // Points into itself: a copy would write through the original's local.
    ComOptionalRef(const ComOptionalRef&) = delete;
    ComOptionalRef& operator=(const ComOptionalRef&) = delete;
    ~ComOptionalRef() { ReleaseWire<Tag>(m_local); }
    void Commit() { m_ref.Commit(); }

private:
    Wire m_local;
    ComRef<Tag> m_ref;

public:
    decltype(m_ref.value)& value;
};

// ---- VARIANT forms, for dispatch by hand and for events ----
template <class Tag>
constexpr VARTYPE VarTypeOf() {
    if constexpr (std::is_same_v<Tag, comtype::String>) return VT_BSTR;
    else if constexpr (std::is_same_v<Tag, comtype::Bool>) return VT_BOOL;
    else if constexpr (std::is_same_v<Tag, comtype::Byte>) return VT_UI1;
    else if constexpr (std::is_same_v<Tag, comtype::Short>) return VT_I2;
    else if constexpr (std::is_same_v<Tag, comtype::Long> || std::is_same_v<Tag, comtype::Enum>) return VT_I4;
    else if constexpr (std::is_same_v<Tag, comtype::Color>) return VT_UI4;
    else if constexpr (std::is_same_v<Tag, comtype::Single>) return VT_R4;
    else if constexpr (std::is_same_v<Tag, comtype::Double>) return VT_R8;
    else if constexpr (std::is_same_v<Tag, comtype::Currency>) return VT_CY;
    else if constexpr (std::is_same_v<Tag, comtype::Handle>) return sizeof(LONG_PTR) == 8 ? VT_I8 : VT_I4;
    else if constexpr (std::is_same_v<Tag, comtype::Dispatch> || std::is_same_v<Tag, comtype::Font> ||
                       std::is_same_v<Tag, comtype::Picture>) return VT_DISPATCH;
    else if constexpr (std::is_same_v<Tag, comtype::Variant>) return VT_VARIANT;
    else return VT_EMPTY;
}

// The wire value inside a VARIANT of the tag's own type (after VariantChangeType).
template <class Tag>
auto& VariantField(VARIANT& v) {
    if constexpr (std::is_same_v<Tag, comtype::String>) return v.bstrVal;
    else if constexpr (std::is_same_v<Tag, comtype::Bool>) return v.boolVal;
    else if constexpr (std::is_same_v<Tag, comtype::Byte>) return v.bVal;
    else if constexpr (std::is_same_v<Tag, comtype::Short>) return v.iVal;
    else if constexpr (std::is_same_v<Tag, comtype::Long> || std::is_same_v<Tag, comtype::Enum>) return v.lVal;
    else if constexpr (std::is_same_v<Tag, comtype::Color>) return v.ulVal;
    else if constexpr (std::is_same_v<Tag, comtype::Single>) return v.fltVal;
    else if constexpr (std::is_same_v<Tag, comtype::Double>) return v.dblVal;
    else if constexpr (std::is_same_v<Tag, comtype::Currency>) return v.cyVal;
    else if constexpr (std::is_same_v<Tag, comtype::Handle>) {
        if constexpr (sizeof(LONG_PTR) == 8) return v.llVal;
        else return v.lVal;
    } else if constexpr (std::is_same_v<Tag, comtype::Dispatch> || std::is_same_v<Tag, comtype::Font> ||
                         std::is_same_v<Tag, comtype::Picture>) {
        // Fonts and pictures travel as their dispatch interfaces (cast down by the reader).
        return v.pdispVal;
    }
}

// A method's wire result into the VARIANT the caller of Invoke gave (which may be null).
template <class Tag, class Wire>
void StoreResult(VARIANT* result, Wire& wire) {
    if (!result) {
        ReleaseWire<Tag>(wire);
        return;
    }
    ::VariantInit(result);
    result->vt = VarTypeOf<Tag>();
    VariantField<Tag>(*result) = wire;
}

}  // namespace tc::com
