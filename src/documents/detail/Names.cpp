#include "documents/detail/Names.h"

#include <bit>
#include <chrono>
#include <cstring>
#include <new>

#include "documents/detail/FileForm.h"

namespace qrtcl::documents {

namespace {

__extension__ typedef unsigned __int128 UInt128;

std::uint64_t Mix(std::uint64_t value)
{
    UInt128 const product = static_cast<UInt128>(value) * 0x9E3779B97F4A7C15u;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

std::uint64_t Load(char const * bytes, std::size_t count)
{
    std::uint64_t value = 0;
    std::memcpy(&value, bytes, count);
    return value;
}

/// a == b without a call: names are short.
bool IsEqual(std::string_view a, std::string_view b)
{
    std::size_t const size = a.size();
    if (size != b.size()) return false;
    char const * const x = a.data();
    char const * const y = b.data();
    auto const same = [&](std::size_t at, std::size_t count) {
        return Load(x + at, count) == Load(y + at, count);
    };
    if (size < 4) return (size == 0 || x[0] == y[0]) && (size < 2 || same(size - 2, 2));
    if (size < 8) return same(0, 4) && same(size - 4, 4);
    for (std::size_t at = 0; at + 8 < size; at += 8) {
        if (!same(at, 8)) return false;
    }
    return same(size - 8, 8);
}

}  // namespace

// A file can't be written whose names all fall on one slot: the seed differs from tree to tree.
Names::Names(Store & owner)
    : moOwner(owner),
      mivSeed(Mix(std::bit_cast<std::uintptr_t>(this)) ^
              static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()))
{}

std::uint64_t Names::Hash(std::string_view text) const noexcept
{
    char const * const at = text.data();
    std::size_t const size = text.size();
    std::uint64_t hash = mivSeed + size;
    if (size < 4) {
        for (char const c : text) hash = hash << 8 ^ static_cast<unsigned char>(c);
        return Mix(hash);
    }
    if (size < 8) return Mix(hash ^ (Load(at, 4) | Load(at + size - 4, 4) << 32));
    for (std::size_t word = 0; word + 8 < size; word += 8) hash = Mix(hash ^ Load(at + word, 8));
    return Mix(hash ^ Load(at + size - 8, 8));
}

Name * Names::Find(std::string_view text, std::uint64_t hash) const noexcept
{
    return movTable.Find(hash, [&](Name const & name) { return IsEqual(name.Text(), text); });
}

Name & Names::Use(std::string_view text)
{
    std::uint64_t const hash = Hash(text);
    if (Name * const name = Find(text, hash)) return Use(*name);

    bool const plain = IsPlainName(text);
    void * const block = ::operator new(sizeof(Name) + text.size());
    Name * const name = ::new (block) Name{&moOwner, hash, 1, text.size(), plain};
    text.copy(reinterpret_cast<char *>(name + 1), text.size());
    try {
        movTable.Insert(hash, *name);
    } catch (...) {
        ::operator delete(block);
        throw;
    }
    return *name;
}

void Names::Forget(Name & name) noexcept
{
    if (!mbvClosed) movTable.Erase(name.hash, name);
    ::operator delete(&name);
}

}  // namespace qrtcl::documents
