#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "foundation/Contract.h"
#include "foundation/Export.h"
#include "foundation/LCTypes.h"

/// The family's one text type: a run of 8-bit bytes that no operation interprets.
///
/// No encoding is tied to the bytes, and a zero byte may stand inside; what takes `char const *` stops at the
/// first zero, and a null pointer is the caller's fault. Number texts, their reading and case folding are
/// those of the classic locale whatever locale the process has set, so stored data never changes with a host
/// program. Arguments may be the object itself. Operations that raise leave the object as it was.
class QRTCL_API LCString {
public:
    /// What the find family answers when nothing is found.
    static constexpr LCUInt64 npos = ~LCUInt64{0};

    /// Equality that ignores the case of ASCII letters, as `EqCI`.
    struct LCEqualCI {
        bool operator()(LCString const & a, LCString const & b) const noexcept { return a.EqCI(b); }
    };
    /// The order of the upper-case forms, as bytes: "_" sorts after all letters. Allocates nothing.
    struct QRTCL_API LCCompareCI {
        bool operator()(LCString const & a, LCString const & b) const noexcept;
    };

    LCString() = default;
    LCString(LCString const &) = default;
    LCString(LCString &&) noexcept = default;
    LCString & operator=(LCString const &) = default;
    LCString & operator=(LCString && other) noexcept
    {
        if (this != &other) movText = std::move(other.movText);
        return *this;
    }
    virtual ~LCString() = default;

    LCString(std::string const & text) : movText(text) {}
    LCString(std::string && text) noexcept : movText(std::move(text)) {}
    explicit LCString(std::string_view text) : movText(text) {}
    LCString(char const * text) : movText(text) {}
    /// Wide characters 0x00 to 0xFF become the byte of that number; the conversion stops before the first one
    /// above.
    LCString(wchar_t const * text);
    LCString(std::nullptr_t) = delete;

    /// One byte; a zero byte gives the empty text. An integer or a bool is no byte and does not convert.
    template <std::same_as<char> Char> LCString(Char c) : movText(c == '\0' ? 0u : 1u, c) {}
    template <std::same_as<bool> Bool> LCString(Bool) = delete;
    /// `count` copies of `c`; raises std::length_error for a negative count.
    template <std::same_as<char> Char> LCString(int count, Char c) { AssignCopies(count, c); }

    // Numbers. If the memory for the text can't be had, these hold "+NAN" and do not throw.

    /// Decimal digits, with "-" in front of a negative number.
    explicit LCString(int v);
    explicit LCString(unsigned int v);
    explicit LCString(long v);
    explicit LCString(unsigned long v);
    explicit LCString(long long v);
    explicit LCString(unsigned long long v);
    /// With `hex`, lower-case hexadecimal digits without prefix; a negative `v` shows its 32-bit two's
    /// complement.
    template <std::same_as<bool> Bool> LCString(int v, Bool hex) : LCString(v, 0, ' ', hex) {}
    /// As above, then filled up on the left to `width`; the fill stands before the sign ("00-5"). A longer
    /// text stays whole.
    template <std::same_as<bool> Bool>
    LCString(int v, int width, char fill, Bool hex) : movText(IntegerText(v, width, fill, hex))
    {}
    /// Fixed notation with `precision` digits behind the point (negative: 6), exactly rounded, never an
    /// exponent; then filled up on the left to `width`. Infinities and not-a-number are "inf", "-inf", "nan",
    /// "-nan".
    template <std::same_as<char> Char>
    LCString(double v, int precision, int width, Char fill) : movText(PaddedText(v, precision, width, fill))
    {}
    /// The form in which the family stores numbers. A negative `precision` gives 12 digits behind the point
    /// without trailing zeros: 1.5 is "1.5", 100.0 is "100", -0.0 is "-0". Otherwise `precision` digits,
    /// whose trailing zeros go if `trim` is true.
    template <std::same_as<bool> Bool>
    LCString(double v, int precision, Bool trim) : movText(StoredText(v, precision, trim))
    {}

    /// A double is no integer.
    template <std::floating_point Float, typename T> LCString(Float, T) = delete;

    std::string const & str() const noexcept { return movText; }
    char const * c_str() const noexcept { return movText.c_str(); }
    /// A new zero-terminated array of length + 1 wide characters, which the caller releases with `delete[]`.
    /// Converts up to the first zero byte, one to one; zeros fill the rest.
    wchar_t * ToCharPointer() const;
    /// Replaces the text by `n` bytes from `p`, zero bytes included.
    LCString & assign(char const * p, unsigned int n);

    LCUInt64 size() const noexcept { return movText.size(); }
    LCUInt64 length() const noexcept { return movText.size(); }
    int GetLength() const noexcept { return static_cast<int>(movText.size()); }
    bool empty() const noexcept { return movText.empty(); }
    bool IsEmpty() const noexcept { return movText.empty(); }
    /// Empty, or blanks (0x20) only; a tab is no blank.
    bool IsTrimEmpty() const noexcept;
    /// Keeps the storage.
    void clear() noexcept { movText.clear(); }
    /// Cuts, or pads with zero bytes.
    void resize(unsigned int n) { movText.resize(n); }

    // The caller stays within the text; only the contract checks look.
    char operator[](unsigned int i) const
    {
        QRTCL_REQUIRE(i <= movText.size(), "LCString::operator[]", this, "index past the end");
        return movText[i];
    }
    char & operator[](unsigned int i)
    {
        QRTCL_REQUIRE(i <= movText.size(), "LCString::operator[]", this, "index past the end");
        return movText[i];
    }
    char GetAt(int i) const { return (*this)[static_cast<unsigned int>(i)]; }
    void SetAt(int i, char c) { (*this)[static_cast<unsigned int>(i)] = c; }

    // Byte order, bytes taken as unsigned; at a tie the shorter text is less.
    friend bool operator==(LCString const & a, LCString const & b) noexcept { return a.movText == b.movText; }
    friend bool operator==(LCString const & a, char const * b) noexcept { return a.movText == b; }
    friend bool operator==(LCString const &, std::nullptr_t) = delete;
    friend std::strong_ordering operator<=>(LCString const & a, LCString const & b) noexcept
    {
        return a.movText <=> b.movText;
    }
    friend std::strong_ordering operator<=>(LCString const & a, char const * b) noexcept
    {
        return a.movText <=> b;
    }
    /// Equal but for the case of ASCII letters.
    bool EqCI(LCString const & other) const noexcept { return size() == other.size() && SameCI(other); }
    bool NEqCI(LCString const & other) const noexcept { return !EqCI(other); }

    friend LCString operator+(LCString const & a, LCString const & b)
    {
        return LCString(a.movText + b.movText);
    }
    friend LCString operator+(LCString && a, LCString const & b)
    {
        return LCString(std::move(a.movText.append(b.movText)));
    }
    LCString & operator+=(LCString const & rhs)
    {
        movText += rhs.movText;
        return *this;
    }
    /// Joins a path with exactly one backslash at the seam; an empty side adds none. A slash is no separator
    /// here.
    LCString & operator&=(LCString const & rhs);
    LCString operator&(LCString const & rhs) const;

    void ToLowerCase() noexcept;
    void ToUpperCase() noexcept;
    LCString LowerCase() const;
    LCString UpperCase() const;

    // Trimming takes blanks (0x20) only.
    LCString CopyTrimLeft() const;
    LCString CopyTrimRight() const;
    LCString CopyTrim() const;
    void TrimLeft();
    void TrimRight();
    void Trim();
    /// Removes the leading run of `c`.
    template <std::same_as<char> Char> void TrimLeft(Char c) { TrimLeftOf(c); }

    // Substrings. "Raises" is std::out_of_range with the text "invalid string position".

    /// Raises if `pos` is beyond the end.
    LCString substr(unsigned int pos) const;
    LCString substr(unsigned int pos, unsigned int n) const;
    /// The whole text if `n` exceeds the length or is negative.
    LCString Left(int n) const;
    /// Unlike `Left`, raises if `n` exceeds the length or is negative.
    LCString Right(int n) const;
    /// From `pos` to the end (not the last `pos` bytes); raises if `pos` is beyond the end or negative.
    LCString Tail(int pos) const;
    /// Empty if `pos` is beyond the end; raises if it is negative. A negative `n` means up to the end.
    LCString Mid(int pos, int n) const;

    /// Removes at most `n` bytes; raises if `pos` is beyond the end.
    LCString & erase(unsigned int pos, unsigned int n);
    /// Raises if `pos` is beyond the end.
    LCString & insert(unsigned int pos, LCString const & s);
    void Reverse() noexcept;

    // Reading numbers, as the standard formatted extraction does in the classic locale: white space and a
    // sign may come first, reading stops at the first byte that can't go on, and what follows is ignored. A
    // failure is a text without a number, or a value that does not fit. `hex` takes an optional "0x". The
    // forms with a check leave in `out` what the extraction leaves there: the nearest limit where the value
    // does not fit, 0 where there is no number, and `out` untouched where the text is empty or white space
    // only.

    double AsDouble(double def = 0.0) const noexcept;
    bool AsDoubleWithCheck(double & out) const noexcept;
    int AsInt(int def = 0, bool hex = false) const noexcept;
    bool AsIntWithCheck(int & out, bool hex = false) const noexcept;
    LCLong AsLong(LCLong def = 0, bool hex = false) const noexcept;
    /// The range is that of 32 bits, also for a native `long` that is wider.
    template <typename Long>
    requires std::same_as<Long, LCLong> || std::same_as<Long, long>
    bool AsLongWithCheck(Long & out, bool hex = false) const noexcept
    {
        constexpr int untouched = 1;  // no failure leaves this
        int value = untouched;
        bool const done = AsIntWithCheck(value, hex);
        if (done || value != untouched) out = static_cast<Long>(value);
        return done;
    }
    /// A leading "-" is accepted, and the value wraps modulo 2 to the 32nd. `def` is taken by its bits.
    unsigned int AsUInt(int def = 0, bool hex = false) const noexcept;
    bool AsUIntWithCheck(unsigned int & out, bool hex = false) const noexcept;

    // A pointer, a text in quotes above all, is no flag.
    template <typename T> int AsInt(int, T *) const = delete;
    template <typename T> bool AsIntWithCheck(int &, T *) const = delete;
    template <typename T> LCLong AsLong(LCLong, T *) const = delete;
    template <typename Long, typename T> bool AsLongWithCheck(Long &, T *) const = delete;
    template <typename T> unsigned int AsUInt(int, T *) const = delete;
    template <typename T> bool AsUIntWithCheck(unsigned int &, T *) const = delete;

    /// Without the zeros at the end of the fraction, the blanks behind them, and a point that is left at the
    /// end. A text without a point comes back unchanged.
    static LCString CleanDoubleString(LCString const & s);
    LCString CleanDoubleString() const;
    void CleanDoubleString();
    /// Reads a double after turning all but digits, ",", "-" and "." into blanks; 0.0 if there is none.
    double IgnoreCharactersToDouble();

    /// Reads a whole file; false if it can't be read (the text is then what was read, mostly nothing). Empty
    /// lines before the first line with content are lost, and so is the line end of the last line.
    bool LoadFromFile(LCString const & path);
    /// Writes the bytes and nothing else. The result only says that the file could be opened.
    bool SaveToFile(LCString const & path) const;

    // Positions of bytes from the start, or `npos`.

    LCUInt64 Find(LCString const & s, LCUInt64 pos = 0) const noexcept
    {
        return movText.find(s.movText, pos);
    }
    LCUInt64 find(LCString const & s, LCUInt64 pos = 0) const noexcept
    {
        return movText.find(s.movText, pos);
    }
    /// A zero byte counts as the empty text.
    template <std::same_as<char> Char> LCUInt64 Find(Char c) const noexcept
    {
        return c == '\0' ? 0 : movText.find(c);
    }
    LCUInt64 rfind(LCString const & s, LCUInt64 pos = npos) const noexcept
    {
        return movText.rfind(s.movText, pos);
    }
    /// A zero byte counts as the empty text.
    template <std::same_as<char> Char> LCUInt64 ReverseFind(Char c) const noexcept
    {
        return c == '\0' ? movText.size() : movText.rfind(c);
    }
    LCUInt64 find_first_of(LCString const & set, LCUInt64 pos = 0) const noexcept
    {
        return movText.find_first_of(set.movText, pos);
    }
    LCUInt64 find_last_of(LCString const & set, LCUInt64 pos = npos) const noexcept
    {
        return movText.find_last_of(set.movText, pos);
    }
    /// Ignores the case of ASCII letters; linear on every input. Unlike `Find`, does not find the empty text
    /// at the very end.
    LCUInt64 FindCI(LCString const & s, LCUInt64 pos = 0) const noexcept;
    bool Contains(LCString const & s) const noexcept { return Find(s, 0) != npos; }
    /// Unlike `Contains`, the empty text does not contain the empty text.
    bool ContainsCI(LCString const & s) const noexcept { return FindCI(s, 0) != npos; }

    // Replacing goes through the text once: what was put in is not searched, and matches do not overlap. An
    // empty `from` changes nothing.
    void ReplaceInString(LCString const & from, LCString const & to);
    void ReplaceInStringCI(LCString const & from, LCString const & to);
    LCString Replace(LCString const & from, LCString const & to) const;
    LCString ReplaceCI(LCString const & from, LCString const & to) const;

    /// `s` between single quotes; quotes inside are not escaped.
    static LCString QuotedStr(LCString const & s);

    /// 1 if the whole text matches, else 0. "*" is any run of bytes, "?" exactly one, and nothing escapes
    /// them; slash and backslash are the same byte. A zero byte ends either text.
    int CompareWildCards(LCString const & pattern);
    int CompareWildCardsCI(LCString const & pattern);

private:
    void AssignCopies(int count, char c);
    void TrimLeftOf(char c);
    bool SameCI(LCString const & other) const noexcept;
    static std::string IntegerText(int v, int width, char fill, bool hex) noexcept;
    static std::string StoredText(double v, int precision, bool trim) noexcept;
    static std::string PaddedText(double v, int precision, int width, char fill) noexcept;

    std::string movText;
};

/// Hash of the bytes, consistent with `==`.
template <> struct std::hash<LCString> {
    std::size_t operator()(LCString const & s) const noexcept { return std::hash<std::string>()(s.str()); }
};
