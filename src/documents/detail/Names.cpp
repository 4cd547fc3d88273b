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
    std::size_t left = a.size();
    if (left != b.size()) return false;
    char const * x = a.data();
    char const * y = b.data();
    for (; left >= 8; x += 8, y += 8, left -= 8) {
        if (Load(x, 8) != Load(y, 8)) return false;
    }
    for (; left != 0; ++x, ++y, --left) {
        if (*x != *y) return false;
    }
    return true;
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
    char const * at = text.data();
    std::size_t left = text.size();
    std::uint64_t hash = mivSeed ^ Mix(left);
    for (; left >= 8; at += 8, left -= 8) hash = Mix(hash ^ Load(at, 8));
    if (left >= 4) return Mix(hash ^ Load(at, 4) ^ Load(at + left - 4, 4) << 32);
    for (; left != 0; ++at, --left) hash = hash << 8 ^ static_cast<unsigned char>(*at);
    return Mix(hash);
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
