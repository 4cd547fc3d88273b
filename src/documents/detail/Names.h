#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "documents/detail/HashTable.h"

namespace qrtcl::documents {

struct Store;

/// A name that paragraphs and attributes of one tree share, with its text behind it in the same block.
struct Name {
    std::string_view Text() const { return {reinterpret_cast<char const *>(this + 1), size}; }

    Store * owner;
    std::uint64_t hash;
    std::size_t uses;
    std::size_t size;
    bool plain;  ///< the file holds it as it is
};

/// The names in use in one tree, each once, so that equal names are equal pointers.
class Names {
public:
    explicit Names(Store & owner);
    Names(Names const &) = delete;
    Names & operator=(Names const &) = delete;
    /// Leaves the names alone: they go with their last use.
    ~Names() = default;

    /// The hash of a text in this tree. A name keeps it too; who has the text and asks a second table by its
    /// own hash need not wait for the name to come from memory.
    std::uint64_t Hash(std::string_view text) const noexcept;
    /// The name, or null if nothing in the tree is called so.
    Name * Find(std::string_view text, std::uint64_t hash) const noexcept;
    /// The name, with one more use. Throws what the allocation throws.
    Name & Use(std::string_view text);
    static Name & Use(Name & name) noexcept
    {
        ++name.uses;
        return name;
    }
    void Release(Name & name) noexcept
    {
        if (--name.uses == 0) Forget(name);
    }

    /// The tree ends: from now on names are only released, each last use frees one, and none is looked up.
    void Close() noexcept { mbvClosed = true; }

private:
    void Forget(Name & name) noexcept;

    HashTable<Name> movTable;
    Store & moOwner;
    std::uint64_t mivSeed;
    bool mbvClosed = false;
};

}  // namespace qrtcl::documents
