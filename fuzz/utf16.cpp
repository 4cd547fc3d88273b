// Texts as UTF-16, against a plain decoder of UTF-8 in which a broken byte stands for itself.
#include "Fuzz.h"
#include "platform/CharacterSet.h"

/// The length of the well-formed sequence at the front, and its character. If there is none, 1, and `character` stays.
static std::size_t Decode(std::string_view text, unsigned & character)
{
    unsigned const lead = static_cast<unsigned char>(text[0]);
    std::size_t const size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC0 || lead > 0xF4 || size > text.size()) return 1;
    unsigned value = lead & (0x7Fu >> size);
    for (char const c : text.substr(1, size - 1)) {
        if ((c & 0xC0) != 0x80) return 1;
        value = value << 6 | (c & 0x3F);
    }
    unsigned const least[] = {0, 0, 0x80, 0x800, 0x10000};
    if (value < least[size] || value > 0x10FFFF || (value >= 0xD800 && value < 0xE000)) return 1;
    character = value;
    return size;
}

void Fuzz(Input input)
{
    std::string const text = input.Rest();
    std::string units;
    auto const add = [&units](unsigned unit) { units += {static_cast<char>(unit), static_cast<char>(unit >> 8)}; };
    for (std::size_t i = 0; i < text.size();) {
        unsigned character = static_cast<unsigned char>(text[i]);
        i += Decode(std::string_view(text).substr(i), character);
        if (character > 0xFFFF) add(0xD800 + ((character - 0x10000) >> 10));
        add(character > 0xFFFF ? 0xDC00 + (character & 0x3FF) : character);
    }
    RequireEqual("UTF-8", qrtcl::platform::ToUtf16(text, "UTF-8"), units);
}
