#include "documents/detail/FileForm.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace qrtcl::documents {

namespace {

constexpr unsigned char Byte(char c) { return static_cast<unsigned char>(c); }

/// What a byte needs that stands in a text.
enum class Need : unsigned char { Nothing, Entity, OnlyInAttribute, Escape, Underscore, Sequence };

consteval std::array<Need, 256> TextNeeds()
{
    std::array<Need, 256> needs{};
    for (unsigned c = 0; c < 0x20; ++c) needs[c] = Need::Escape;
    for (unsigned c = 0x80; c < 0x100; ++c) needs[c] = Need::Sequence;
    for (char c : {'&', '<', '>', '\r'}) needs[Byte(c)] = Need::Entity;
    for (char c : {'"', '\t', '\n'}) needs[Byte(c)] = Need::OnlyInAttribute;
    needs['_'] = Need::Underscore;
    return needs;
}
constexpr std::array<Need, 256> textNeeds = TextNeeds();

consteval std::array<bool, 256> NameBytes()
{
    std::array<bool, 256> plain{};
    for (char c = 'a'; c <= 'z'; ++c) plain[Byte(c)] = plain[Byte(c) - 0x20u] = true;
    for (char c = '0'; c <= '9'; ++c) plain[Byte(c)] = true;
    for (char c : {'-', '.', '_'}) plain[Byte(c)] = true;
    return plain;
}
constexpr std::array<bool, 256> nameBytes = NameBytes();

std::string_view Entity(char c)
{
    switch (c) {
    case '&': return "&amp;";
    case '<': return "&lt;";
    case '>': return "&gt;";
    case '"': return "&quot;";
    case '\t': return "&#9;";
    case '\n': return "&#10;";
    default: return "&#13;";
    }
}

/// The value of a hexadecimal digit, or -1.
constexpr int Digit(char c)
{
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

void AppendEscape(std::string & out, char c)
{
    constexpr char digits[] = "0123456789ABCDEF";
    out += {'_', 'x', '0', '0', digits[Byte(c) >> 4], digits[Byte(c) & 15], '_'};
}

/// Whether the text goes on like an escape, up to where its last underscore would stand.
bool LooksEscaped(std::string_view text)
{
    return text.size() >= 6 && text[0] == '_' && text[1] == 'x' &&
           std::all_of(text.begin() + 2, text.begin() + 6, [](char c) { return Digit(c) >= 0; });
}

/// The length of the UTF-8 character that `text` begins with, if it is one that XML can hold, else 0. The
/// first byte is above 127.
std::size_t CharacterLength(std::string_view text)
{
    unsigned const first = Byte(text[0]);
    std::size_t const length = first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 0;
    if (length > text.size()) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((Byte(text[i]) & 0xC0) != 0x80) return 0;
    }
    if (length < 3) return length;
    unsigned const second = Byte(text[1]);
    if (first == 0xE0 && second < 0xA0) return 0;                            // longer than needed
    if (first == 0xED && second >= 0xA0) return 0;                           // half of a surrogate pair
    if (first == 0xF0 && second < 0x90) return 0;                            // longer than needed
    if (first == 0xF4 && second >= 0x90) return 0;                           // beyond the last character
    if (text.substr(0, 2) == "\xEF\xBF" && Byte(text[2]) >= 0xBE) return 0;  // U+FFFE, U+FFFF
    return length;
}

bool BeginsWithXml(std::string_view name)
{
    return name.size() >= 3 && (name[0] | 0x20) == 'x' && (name[1] | 0x20) == 'm' && (name[2] | 0x20) == 'l';
}

}  // namespace

bool IsPlainName(std::string_view name)
{
    std::string stored;
    AppendName(stored, name);
    return stored == name;
}

void AppendName(std::string & out, std::string_view name)
{
    if (name.empty()) out += "_x_";
    for (std::size_t i = 0; i < name.size(); ++i) {
        char const c = name[i];
        bool plain = nameBytes[Byte(c)];
        if (c == '_') plain = !LooksEscaped(name.substr(i));
        if (i == 0) plain = plain && (c | 0x20) >= 'a' && !BeginsWithXml(name) && name != "_x_";
        if (plain) {
            out += c;
        } else {
            AppendEscape(out, c);
        }
    }
}

void AppendText(std::string & out, std::string_view text, bool inAttribute)
{
    for (std::size_t i = 0;;) {
        std::size_t const begin = i;
        while (i < text.size() && textNeeds[Byte(text[i])] == Need::Nothing) ++i;
        out.append(text, begin, i - begin);
        if (i == text.size()) return;

        char const c = text[i];
        Need const need = textNeeds[Byte(c)];
        std::size_t const length = need == Need::Sequence ? CharacterLength(text.substr(i)) : 1;
        if (need == Need::Entity || (need == Need::OnlyInAttribute && inAttribute)) {
            out += Entity(c);
        } else if (need == Need::Escape || length == 0 || LooksEscaped(text.substr(i))) {
            AppendEscape(out, c);
        } else {
            out.append(text, i, length);
        }
        i += length == 0 ? 1 : length;
    }
}

std::string_view Unescaped(std::string_view stored, std::string & room)
{
    std::size_t at = stored.find("_x");
    if (at == stored.npos) return stored;

    room.clear();
    std::size_t begin = 0;
    for (; at != stored.npos; at = stored.find("_x", at)) {
        std::string_view const rest = stored.substr(at);
        if (!LooksEscaped(rest) || rest.size() < 7 || rest[6] != '_' || Digit(rest[2]) + Digit(rest[3]) > 0) {
            ++at;
            continue;
        }
        room.append(stored, begin, at - begin);
        room += static_cast<char>(Digit(rest[4]) * 16 + Digit(rest[5]));
        begin = at += 7;
    }
    return room.append(stored, begin, stored.npos);
}

std::string_view UnescapedName(std::string_view stored, std::string & room)
{
    return stored == "_x_" ? std::string_view() : Unescaped(stored, room);
}

bool IsWhiteSpace(std::string_view text) { return text.find_first_not_of(" \t\r\n") == text.npos; }

}  // namespace qrtcl::documents
