#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "foundation/LCString.h"
#include "foundation/detail/Text.h"
#include "platform/Files.h"

// What the string collections do with lines of text, over any of the three containers.
namespace qrtcl::lines {

/// Hands each line of `text` to `add`, as a view. A byte equal to `first` or `second` ends a line; what
/// stands behind the last of them is a line only if it is not empty.
template <typename Add> void Split(std::string_view text, char first, char second, bool keepEmpty, Add add)
{
    constexpr std::size_t npos = std::string_view::npos;
    std::size_t begin = 0;
    std::size_t nextFirst = text.find(first);
    std::size_t nextSecond = second == first ? npos : text.find(second);
    for (std::size_t end; (end = std::min(nextFirst, nextSecond)) != npos; begin = end + 1) {
        if (keepEmpty || end > begin) add(text.substr(begin, end - begin));
        if (end == nextFirst) {
            nextFirst = text.find(first, end + 1);
        } else {
            nextSecond = text.find(second, end + 1);
        }
    }
    if (begin < text.size()) add(text.substr(begin));
}

/// How many bytes equal `first` or `second`.
inline std::size_t CountEnds(std::string_view text, char first, char second) noexcept
{
    std::size_t count = 0;
    while (!text.empty()) {
        unsigned char inBlock = 0;  // of the width of the bytes, so that many are counted at once
        for (char const c : text.substr(0, 255)) {
            if (c == first || c == second) ++inBlock;
        }
        count += inBlock;
        text.remove_prefix(std::min<std::size_t>(text.size(), 255));
    }
    return count;
}

/// Appends the lines of `text` to a list or a vector, or inserts them into a set.
template <typename Collection>
void Divide(Collection & elements, std::string_view text, char first, char second, bool keepEmpty)
{
    Split(text, first, second, keepEmpty, [&elements](std::string_view line) {
        if constexpr (requires { elements.emplace_back(); }) {
            elements.emplace_back(line);
        } else {
            elements.emplace_hint(elements.end(), line);  // the files of sets are in order
        }
    });
}

/// As `Divide` into an emptied collection, but an empty text gives one empty element. The text may be an
/// element.
template <typename Collection>
void Redivide(Collection & elements, LCString const & text, char first, char second, bool keepEmpty)
{
    Collection lines;
    if (text.empty()) {
        lines.emplace_back();
    } else {
        if constexpr (requires { lines.reserve(1); }) {
            lines.reserve(CountEnds(text.str(), first, second) + 1);
        }
        Divide(lines, text.str(), first, second, keepEmpty);
    }
    elements.swap(lines);
}

/// All elements in order, with `separator` between each two; a zero byte joins without anything in between.
template <typename Collection> LCString Join(Collection const & elements, char separator)
{
    std::size_t const gap = separator == '\0' ? 0 : 1;
    std::size_t size = 0;
    for (LCString const & element : elements) size += element.size() + gap;

    std::string joined;
    joined.reserve(size);
    for (LCString const & element : elements) joined.append(element.str()).append(gap, separator);
    if (!joined.empty()) joined.resize(joined.size() - gap);
    return LCString(std::move(joined));
}

/// Equal to a text but for the case of ASCII letters, for scans: nearly all elements are refused by their
/// length or their last byte.
class EqualsCI {
public:
    explicit EqualsCI(std::string_view text) : movText(text) {}
    bool operator()(LCString const & element) const noexcept
    {
        std::string_view const other = element.str();
        if (other.size() != movText.size()) return false;
        return other.empty() || (text::ToLower(other.back()) == text::ToLower(movText.back()) &&
                                 text::EqualCI(other, movText));
    }

private:
    std::string_view movText;
};

template <typename Collection> auto FindCI(Collection & elements, LCString const & sought) noexcept
{
    return std::find_if(elements.begin(), elements.end(), EqualsCI(sought.str()));
}

template <typename Collection> bool ContainsCI(Collection const & elements, LCString const & sought) noexcept
{
    return FindCI(elements, sought) != elements.end();
}

template <typename Collection, typename Other>
bool ContainsAll(Collection const & elements, Other const & other) noexcept
{
    return std::all_of(other.begin(), other.end(),
                       [&](LCString const & text) { return elements.Contains(text); });
}

template <typename Collection, typename Other>
bool ContainsAllCI(Collection const & elements, Other const & other) noexcept
{
    return std::all_of(other.begin(), other.end(),
                       [&](LCString const & text) { return ContainsCI(elements, text); });
}

/// Moves on and reads then; stays at the end.
template <typename Collection> LCString GetNext(Collection & elements, typename Collection::iterator & p)
{
    if (p == elements.end() || ++p == elements.end()) return LCString();
    return *p;
}

/// Moves back and reads then; goes from the first element to the end, and on from there.
template <typename Collection> LCString GetPrev(Collection & elements, typename Collection::iterator & p)
{
    if (p == elements.begin()) {
        p = elements.end();
        return LCString();
    }
    return *--p;
}

/// What stands behind the first "=" of the first line whose part before it equals `key` but for case.
template <typename Collection> LCString GetValue(Collection const & elements, LCString const & key)
{
    for (LCString const & element : elements) {
        std::string_view const line = element.str();
        std::size_t const equals = line.find('=');
        if (equals != std::string_view::npos && text::EqualCI(line.substr(0, equals), key.str())) {
            return LCString(line.substr(equals + 1));
        }
    }
    return LCString();
}

/// Makes room in a vector for the lines of a piece of a file, and for those of the `left` bytes behind it as
/// if they went on like this, but for no more than four times as many as there are.
template <typename Collection> void MakeRoom(Collection & elements, std::string_view piece, std::size_t left)
{
    if constexpr (requires { elements.reserve(1); }) {
        std::size_t const lines = CountEnds(piece, '\n', '\n');
        std::size_t const needed = elements.size() + lines + 1;
        if (needed <= elements.capacity()) return;
        std::size_t const expected = needed + lines * left / piece.size();
        elements.reserve(std::min(4 * needed, expected + expected / 16));
    }
}

/// Loads the lines of a file into the emptied collection. Whatever goes wrong, what was read until then
/// stays.
template <typename Collection> bool Load(Collection & elements, LCString const & path) noexcept
{
    try {
        Collection former;  // the path may be an element
        former.swap(elements);
        std::string open;  // the line whose end is still to come, and what is whole behind it
        bool const read = platform::ReadPieces(path.str(), [&](std::string_view piece, std::size_t left) {
            MakeRoom(elements, piece, left);
            std::size_t const whole = piece.rfind('\n') + 1;
            open.append(piece, 0, whole > 0 ? whole : piece.size());
            if (whole == 0) return;
            Divide(elements, open, '\n', '\n', true);
            open.assign(piece, whole);
        });
        Divide(elements, open, '\n', '\n', true);
        return read;
    } catch (...) {
        return false;
    }
}

/// Writes each element and a line end.
template <typename Collection> bool Save(Collection const & elements, LCString const & path) noexcept
{
    constexpr std::size_t pieceSize = 1 << 17;
    try {
        auto element = elements.begin();
        return platform::WritePieces(path.str(), [&](std::string & piece) {
            while (element != elements.end() && piece.size() < pieceSize)
                piece.append((element++)->str()) += '\n';
        });
    } catch (...) {
        return false;
    }
}

}  // namespace qrtcl::lines
