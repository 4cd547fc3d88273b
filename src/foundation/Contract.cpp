#include "foundation/Contract.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <mutex>

#include "platform/Protection.h"

namespace qrtcl {

namespace {

constinit std::mutex covLock;

/// Never destroyed: objects of the application that go down last may still hold handlers.
std::map<void const *, std::vector<void const *>> & Delegates()
{
    static auto & delegates = *new std::map<void const *, std::vector<void const *>>;
    return delegates;
}

}  // namespace

void ReportMisuse(char const * operation, void const * object, char const * misuse) noexcept
{
    (void)std::fprintf(stderr, "QRTCL_DataTypes: %s of %p: %s\n", operation, object, misuse);
    std::abort();
}

void NoteDelegates(void const * event, std::vector<void const *> delegates)
{
    platform::Uninterrupted const uninterrupted;
    std::lock_guard const guard(covLock);
    if (delegates.empty()) {
        Delegates().erase(event);
    } else {
        Delegates()[event] = std::move(delegates);
    }
}

void const * FindEventOf(void const * delegate)
{
    platform::Uninterrupted const uninterrupted;
    std::lock_guard const guard(covLock);
    for (auto const & [event, delegates] : Delegates()) {
        if (std::find(delegates.begin(), delegates.end(), delegate) != delegates.end()) return event;
    }
    return nullptr;
}

}  // namespace qrtcl
