#include "foundation/LCString.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <stdexcept>

#include "foundation/detail/NumberText.h"
#include "foundation/detail/Text.h"
#include "platform/Files.h"

namespace number = qrtcl::number;
namespace text = qrtcl::text;

namespace {

constexpr unsigned int wholeText = ~0u;

void CheckPosition(std::string const & s, unsigned int pos)
{
    if (pos > s.size()) throw std::out_of_range("invalid string position");
}

/// At most 20 digits and a sign.
template <typename Integer> std::string Decimal(Integer v)
{
    bool const negative = v < Integer{0};
    std::uint64_t const bits = static_cast<std::uint64_t>(v);
    return number::Decimal(negative ? 0 - bits : bits, negative);
}

void PadLeft(std::string & s, int width, char fill)
{
    if (width > 0 && s.size() < static_cast<std::size_t>(width)) {
        s.insert(0, static_cast<std::size_t>(width) - s.size(), fill);
    }
}

/// What `format` gives; if it throws, "+NAN", which needs no memory.
template <typename Format> std::string FormatOrNan(Format format) noexcept
{
    try {
        return format();
    } catch (...) {
        return "+NAN";
    }
}

}  // namespace

bool LCString::LCCompareCI::operator()(LCString const & a, LCString const & b) const noexcept
{
    return text::CompareUpper(a.movText, b.movText) < 0;
}

LCString::LCString(wchar_t const * s)
{
    for (; *s != L'\0' && static_cast<unsigned long>(*s) <= 0xFF; ++s)
        movText.push_back(static_cast<char>(*s));
}

void LCString::AssignCopies(int count, char c)
{
    if (count < 0) throw std::length_error("string too long");
    movText.assign(static_cast<std::size_t>(count), c);
}

// Eleven characters at most need no memory of their own, so nothing can fail.
LCString::LCString(int v) : movText(Decimal(v)) {}
LCString::LCString(unsigned int v) : movText(Decimal(v)) {}
LCString::LCString(long v) : movText(FormatOrNan([&] { return Decimal(v); })) {}
LCString::LCString(unsigned long v) : movText(FormatOrNan([&] { return Decimal(v); })) {}
LCString::LCString(long long v) : movText(FormatOrNan([&] { return Decimal(v); })) {}
LCString::LCString(unsigned long long v) : movText(FormatOrNan([&] { return Decimal(v); })) {}

std::string LCString::PaddedText(double v, int precision, int width, char fill) noexcept
{
    return FormatOrNan([&] {
        std::string text = number::Fixed(v, precision < 0 ? 6 : precision, false);
        PadLeft(text, width, fill);
        return text;
    });
}

std::string LCString::IntegerText(int v, int width, char fill, bool hex) noexcept
{
    return FormatOrNan([&] {
        std::string text;
        if (hex) {
            char buffer[8];
            text.assign(buffer,
                        std::to_chars(buffer, std::end(buffer), static_cast<unsigned int>(v), 16).ptr);
        } else {
            text = Decimal(v);
        }
        PadLeft(text, width, fill);
        return text;
    });
}

std::string LCString::StoredText(double v, int precision, bool trim) noexcept
{
    constexpr int storedPrecision = 12;
    return FormatOrNan([&] {
        return number::Fixed(v, precision < 0 ? storedPrecision : precision,
                             precision < 0 || (trim && precision != 0));
    });
}

wchar_t * LCString::ToCharPointer() const
{
    wchar_t * const wide = new wchar_t[movText.size() + 1]();
    for (std::size_t i = 0; i < movText.size() && movText[i] != '\0'; ++i) {
        wide[i] = static_cast<unsigned char>(movText[i]);
    }
    return wide;
}

LCString & LCString::assign(char const * p, unsigned int n)
{
    movText.assign(p, n);
    return *this;
}

bool LCString::IsTrimEmpty() const noexcept { return movText.find_first_not_of(' ') == std::string::npos; }

bool LCString::SameCI(LCString const & other) const noexcept { return text::EqualCI(movText, other.movText); }

LCString & LCString::operator&=(LCString const & rhs)
{
    constexpr char separator = '\\';
    if (rhs.empty()) return *this;
    if (empty()) return *this = rhs;
    bool const behind = movText.back() == separator;
    bool const ahead = rhs.movText.front() == separator;
    if (!behind && !ahead) {
        movText.reserve(movText.size() + 1 + rhs.movText.size());
        // The right side may be this object: its bytes are taken before the separator is put in.
        std::size_t const rhsSize = rhs.movText.size();
        movText += separator;
        movText.append(rhs.movText, 0, rhsSize);
    } else {
        movText.append(rhs.movText, behind && ahead ? 1 : 0);
    }
    return *this;
}

LCString LCString::operator&(LCString const & rhs) const
{
    LCString joined(*this);
    joined &= rhs;
    return joined;
}

void LCString::ToLowerCase() noexcept
{
    std::transform(movText.begin(), movText.end(), movText.begin(), text::ToLower);
}
void LCString::ToUpperCase() noexcept
{
    std::transform(movText.begin(), movText.end(), movText.begin(), text::ToUpper);
}

LCString LCString::LowerCase() const
{
    LCString copy(*this);
    copy.ToLowerCase();
    return copy;
}

LCString LCString::UpperCase() const
{
    LCString copy(*this);
    copy.ToUpperCase();
    return copy;
}

LCString LCString::CopyTrimLeft() const { return LCString(text::TrimLeft(movText, ' ')); }
LCString LCString::CopyTrimRight() const { return LCString(text::TrimRight(movText, ' ')); }
LCString LCString::CopyTrim() const { return LCString(text::TrimRight(text::TrimLeft(movText, ' '), ' ')); }

void LCString::TrimLeft() { TrimLeftOf(' '); }
void LCString::TrimRight() { movText.resize(text::TrimRight(movText, ' ').size()); }
void LCString::Trim()
{
    TrimRight();
    TrimLeft();
}
void LCString::TrimLeftOf(char c) { movText.erase(0, movText.size() - text::TrimLeft(movText, c).size()); }

LCString LCString::substr(unsigned int pos) const { return substr(pos, wholeText); }

LCString LCString::substr(unsigned int pos, unsigned int n) const
{
    CheckPosition(movText, pos);
    return LCString(movText.substr(pos, n == wholeText ? std::string::npos : n));
}

LCString LCString::Left(int n) const { return substr(0, n < 0 ? wholeText : static_cast<unsigned int>(n)); }

LCString LCString::Right(int n) const
{
    return substr(static_cast<unsigned int>(movText.size()) - static_cast<unsigned int>(n));
}

LCString LCString::Tail(int pos) const { return substr(static_cast<unsigned int>(pos)); }

LCString LCString::Mid(int pos, int n) const
{
    if (pos >= 0 && static_cast<unsigned int>(pos) > movText.size()) return LCString();
    return substr(static_cast<unsigned int>(pos), n < 0 ? wholeText : static_cast<unsigned int>(n));
}

LCString & LCString::erase(unsigned int pos, unsigned int n)
{
    CheckPosition(movText, pos);
    movText.erase(pos, n == wholeText ? std::string::npos : n);
    return *this;
}

LCString & LCString::insert(unsigned int pos, LCString const & s)
{
    CheckPosition(movText, pos);
    movText.insert(pos, s.movText);
    return *this;
}

void LCString::Reverse() noexcept { std::reverse(movText.begin(), movText.end()); }

bool LCString::AsDoubleWithCheck(double & out) const noexcept { return number::ReadDouble(movText, out); }
bool LCString::AsIntWithCheck(int & out, bool hex) const noexcept
{
    return number::ReadInt(movText, hex, out);
}
bool LCString::AsUIntWithCheck(unsigned int & out, bool hex) const noexcept
{
    return number::ReadUInt(movText, hex, out);
}

double LCString::AsDouble(double def) const noexcept
{
    double value = 0.0;
    return AsDoubleWithCheck(value) ? value : def;
}

int LCString::AsInt(int def, bool hex) const noexcept
{
    int value = 0;
    return AsIntWithCheck(value, hex) ? value : def;
}

LCLong LCString::AsLong(LCLong def, bool hex) const noexcept { return AsInt(static_cast<int>(def), hex); }

unsigned int LCString::AsUInt(int def, bool hex) const noexcept
{
    unsigned int value = 0;
    return AsUIntWithCheck(value, hex) ? value : static_cast<unsigned int>(def);
}

LCString LCString::CleanDoubleString(LCString const & s)
{
    LCString copy(s);
    copy.CleanDoubleString();
    return copy;
}

LCString LCString::CleanDoubleString() const { return CleanDoubleString(*this); }

void LCString::CleanDoubleString()
{
    std::size_t const point = movText.find('.');
    if (point == std::string::npos) return;
    movText.resize(std::max(text::TrimRight(movText, '0').size(), point + 1));
    TrimRight();
    if (!movText.empty() && movText.back() == '.') {
        movText.pop_back();
        TrimRight();
    }
}

double LCString::IgnoreCharactersToDouble()
{
    try {
        LCString copy(*this);
        for (char & c : copy.movText) {
            if (std::string_view(",-.0123456789").find(c) == std::string_view::npos) c = ' ';
        }
        return copy.AsDouble(0.0);
    } catch (...) {
        return 0.0;
    }
}

bool LCString::LoadFromFile(LCString const & path)
{
    std::string own;
    bool const fromItself = &path == this;
    if (fromItself) own.swap(movText);
    movText.clear();
    try {
        bool const read = qrtcl::platform::ReadFile(fromItself ? own : path.movText, movText);
        TrimLeftOf('\n');
        if (!movText.empty() && movText.back() == '\n') movText.pop_back();
        return read;
    } catch (...) {
        return false;
    }
}

bool LCString::SaveToFile(LCString const & path) const
{
    try {
        return qrtcl::platform::WriteFile(path.movText, movText);
    } catch (...) {
        return false;
    }
}

LCUInt64 LCString::FindCI(LCString const & s, LCUInt64 pos) const noexcept
{
    return text::FindCI(movText, s.movText, pos);
}

void LCString::ReplaceInString(LCString const & from, LCString const & to)
{
    text::Replace(movText, from.movText, to.movText, false, movText);
}

void LCString::ReplaceInStringCI(LCString const & from, LCString const & to)
{
    text::Replace(movText, from.movText, to.movText, true, movText);
}

LCString LCString::Replace(LCString const & from, LCString const & to) const
{
    LCString result;
    if (!text::Replace(movText, from.movText, to.movText, false, result.movText)) return *this;
    return result;
}

LCString LCString::ReplaceCI(LCString const & from, LCString const & to) const
{
    LCString result;
    if (!text::Replace(movText, from.movText, to.movText, true, result.movText)) return *this;
    return result;
}

LCString LCString::QuotedStr(LCString const & s) { return LCString("'" + s.movText + "'"); }

int LCString::CompareWildCards(LCString const & pattern)
{
    return text::MatchWildcards(movText, pattern.movText, false) ? 1 : 0;
}

int LCString::CompareWildCardsCI(LCString const & pattern)
{
    return text::MatchWildcards(movText, pattern.movText, true) ? 1 : 0;
}
