// DispArgs: the positional arguments of one IDispatch::Invoke, for the members dispatched by hand.
#pragma once

#include <vector>

#include "com/ComConvert.h"

namespace tc::com {

class DispArgs {
public:
    DispArgs(DISPPARAMS& params, UINT* argError) noexcept : m_params(params), m_argError(argError) {}
    ~DispArgs();
    // Holds converted copies of the caller's arguments for the length of one call.
    DispArgs(const DispArgs&) = delete;
    DispArgs& operator=(const DispArgs&) = delete;

    // Between `required` and `total` positional arguments and no named ones.
    bool Expect(UINT total, UINT required) noexcept;

    // Argument i (from the left) as the tag's wire type; an absent optional one takes `fallback`.
    template <class Tag, class Wire, class Fallback>
    bool Get(UINT index, Wire& out, const Fallback& fallback) {
        VARIANT* arg = At(index);
        if (!arg) {
            out = static_cast<Wire>(fallback);
            return true;
        }
        m_converted.emplace_back();
        VARIANT& converted = m_converted.back();
        ::VariantInit(&converted);
        const HRESULT hr = ::VariantChangeType(&converted, arg, 0, VarTypeOf<Tag>());
        if (FAILED(hr)) return Fail(hr, index);
        out = static_cast<Wire>(VariantField<Tag>(converted));
        return true;
    }

    // A record argument by reference (VT_RECORD, possibly behind VT_BYREF|VT_VARIANT): the caller's
    // memory, which the member changes in place. Null with the error set when it is no record.
    template <class Record>
    Record* RecordAt(UINT index) {
        VARIANT* arg = At(index);
        if (arg && V_VT(arg) == (VT_BYREF | VT_VARIANT)) arg = V_VARIANTREF(arg);
        if (!arg || (V_VT(arg) & ~VT_BYREF) != VT_RECORD || !V_RECORD(arg)) {
            Fail(arg ? DISP_E_TYPEMISMATCH : DISP_E_PARAMNOTFOUND, index);
            return nullptr;
        }
        // Another record (a point where a rectangle is due) would be read and written past its end.
        ULONG size = 0;
        if (!V_RECORDINFO(arg) || FAILED(V_RECORDINFO(arg)->GetSize(&size)) || size != sizeof(Record)) {
            Fail(DISP_E_TYPEMISMATCH, index);
            return nullptr;
        }
        return static_cast<Record*>(V_RECORD(arg));
    }

    HRESULT Error() const noexcept { return m_error; }

private:
    // The argument at position index, or null when it is absent or marked missing.
    VARIANT* At(UINT index) const noexcept;
    bool Fail(HRESULT hr, UINT index) noexcept;

    DISPPARAMS& m_params;
    UINT* m_argError;
    HRESULT m_error = S_OK;
    std::vector<VARIANT> m_converted;
};

}  // namespace tc::com
