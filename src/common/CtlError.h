// CtlError: the one host-visible error of the library (number, source, description).
#pragma once

#include <cstdint>
#include <exception>
#include <string>

class CtlError : public std::exception {
public:
    // 0x80040001, the number of every public error that names no other.
    static constexpr int32_t kDefaultNumber = static_cast<int32_t>(0x80040001u);
    // Plumbing errors combine their own number with this base.
    static constexpr int32_t kPlumbingBase = static_cast<int32_t>(0x80040000u);
    // Numbers of the language runtime, kept as they are.
    static constexpr int32_t kInvalidProcedureCall = 5;
    static constexpr int32_t kOverflow = 6;
    static constexpr int32_t kSubscriptOutOfRange = 9;

    CtlError(std::u16string source, std::u16string description, int32_t number = kDefaultNumber);

    // An error of the window plumbing: number | 0x80040000, source "TarnwickControls30.WindowProc".
    static CtlError Plumbing(int32_t number, std::u16string description);

    int32_t Number() const noexcept { return m_lNumber; }
    const std::u16string& Source() const noexcept { return m_sSource; }
    const std::u16string& Description() const noexcept { return m_sDescription; }

    // UTF-8 "source: description (0xNNNNNNNN)", for logs and test failures.
    const char* what() const noexcept override { return m_sWhat.c_str(); }

private:
    int32_t m_lNumber;
    std::u16string m_sSource;
    std::u16string m_sDescription;
    std::string m_sWhat;
};
