#pragma once

#include <string>
#include <utility>

#include "standins/host/sdk/maxtypes.h"

/// Text in UTF-8.
class UTF8Str {
public:
    explicit UTF8Str(std::string bytes) : bytes_(std::move(bytes)) {}

    /// Null-terminated; valid as long as the object exists.
    const char* data() const { return bytes_.c_str(); }

private:
    std::string bytes_;
};

/// Text in the host's code page, which is UTF-8.
using CStr = UTF8Str;

/// The host's text: 16-bit units, with a surrogate pair for each character above 0xFFFF.
class WStr {
public:
    WStr() = default;
    /// Null makes an empty text.
    WStr(const wchar_t* text) : text_(text ? text : L"") {}

    /// Null-terminated; valid until the object changes.
    const wchar_t* data() const { return text_.c_str(); }
    operator const wchar_t*() const { return data(); }

    int Length() const { return static_cast<int>(text_.size()); }
    bool isNull() const { return text_.empty(); }

    WStr& Append(const WStr& other) {
        text_ += other.text_;
        return *this;
    }
    WStr& operator+=(const WStr& other) { return Append(other); }
    WStr operator+(const WStr& other) const { return WStr(*this).Append(other); }
    bool operator==(const WStr& other) const { return text_ == other.text_; }

    /// An unpaired surrogate becomes the replacement character U+FFFD.
    UTF8Str ToUTF8() const;
    CStr ToCStr() const { return ToUTF8(); }

private:
    std::wstring text_;
};

using MSTR = WStr;
using TSTR = WStr;
