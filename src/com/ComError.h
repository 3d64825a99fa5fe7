// Library errors at the COM boundary: CtlError becomes an HRESULT with IErrorInfo, and a failed
// call through dispatch becomes DISP_E_EXCEPTION with its EXCEPINFO.
#pragma once

#include <exception>
#include <new>

#include "com/ComConvert.h"
#include "common/CtlError.h"

namespace tc::com {

// The HRESULT of a library error number: negative numbers are HRESULTs already; the language
// runtime's small numbers (5, 6, 9, 11) travel in the control facility, as hosts expect.
HRESULT HresultOfErrorNumber(int32_t number) noexcept;
// Sets the thread's error info from the error; returns its HRESULT.
HRESULT ReportError(const CtlError& error, const wchar_t* defaultSource) noexcept;
// Fills EXCEPINFO from the thread's error info when hr failed; returns DISP_E_EXCEPTION then.
HRESULT ExceptionFromErrorInfo(HRESULT hr, EXCEPINFO* excepInfo) noexcept;

template <class F>
HRESULT GuardCall(const wchar_t* source, F&& body) noexcept {
    // Error info is only touched on failure: a successful call costs nothing extra, and a failure
    // without a library error clears what an earlier failure may have left.
    try {
        body();
        return S_OK;
    } catch (const CtlError& error) {
        return ReportError(error, source);
    } catch (const ComFailure& failure) {
        ::SetErrorInfo(0, nullptr);
        return failure.hr;
    } catch (const std::bad_alloc&) {
        ::SetErrorInfo(0, nullptr);
        return E_OUTOFMEMORY;
    } catch (...) {
        ::SetErrorInfo(0, nullptr);
        return E_UNEXPECTED;
    }
}

}  // namespace tc::com
