// New GUIDs as text, sets of them, and ordered sets of keys.

#include <cstdint>
#include <memory>
#include <set>
#include <string_view>
#include <sys/random.h>

#include "Bench.h"
#include "identity/LCGUID.h"
#include "identity/LCKey.h"

#ifdef PEER_ABSL_BTREE
#include <absl/container/btree_set.h>
#endif
#ifdef PEER_BOOST
#include <boost/uuid/uuid_generators.hpp>
#include <boost/uuid/uuid_io.hpp>
#endif
#ifdef PEER_GLIB
#include <glib.h>
#endif
#ifdef PEER_POCO
#include <Poco/UUID.h>
#include <Poco/UUIDGenerator.h>
#endif
#ifdef PEER_QT
#include <QUuid>
#endif
#ifdef PEER_UUID
#include <uuid/uuid.h>
#endif

namespace {

std::string BySystemCall()
{
    unsigned char bytes[16];
    if (::getrandom(bytes, sizeof bytes, 0) != sizeof bytes) return {};
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);
    std::string text(36, '-');
    char * out = text.data();
    for (int i = 0; i < 16; ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) ++out;
        *out++ = "0123456789ABCDEF"[bytes[i] >> 4];
        *out++ = "0123456789ABCDEF"[bytes[i] & 15];
    }
    return text;
}

constexpr std::size_t newTexts = 10'000;

/// `make` gives the text of a new GUID.
template <typename Make> void NewText(std::string const & implementation, Make make)
{
    auto const text = make();
    bench::Require(std::string_view(text).size() == 36 && make() != text, implementation.c_str());
    bench::Register("W10.guid-new-text", implementation, newTexts, [make] {
        for (std::size_t i = 0; i < newTexts; ++i) {
            auto made = make();
            benchmark::DoNotOptimize(made);
        }
    });
}

void NewTexts()
{
    NewText("ours", [] { return LCGUID().AsStr(false).str(); });
    NewText("getrandom+table", BySystemCall);
    bench::RegisterBound(
        "W10.guid-new-text", "its random bytes, 256 at once, and the block of its text", newTexts, [] {
            unsigned char bytes[4096];
            for (std::size_t i = 0; i < newTexts; ++i) {
                if (i % 256 == 0)
                    bench::Require(::getrandom(bytes, sizeof bytes, 0) == sizeof bytes, "getrandom");
                benchmark::DoNotOptimize(std::string(36, static_cast<char>(bytes[i % 256])));
            }
        });
#ifdef PEER_BOOST
    NewText("boost", [] {
        static boost::uuids::random_generator generator;
        return to_string(generator());
    });
#endif
#ifdef PEER_GLIB
    NewText("glib", [] {
        std::unique_ptr<char, decltype(&g_free)> const text(g_uuid_string_random(), g_free);
        return std::string(text.get());
    });
#endif
#ifdef PEER_POCO
    NewText("poco", [] { return Poco::UUIDGenerator::defaultGenerator().createRandom().toString(); });
#endif
#ifdef PEER_QT
    NewText("qt", [] { return QUuid::createUuid().toByteArray(QUuid::WithoutBraces).toStdString(); });
#endif
#ifdef PEER_UUID
    NewText("libuuid", [] {
        uuid_t bytes;
        uuid_generate_random(bytes);
        char text[37];
        uuid_unparse_upper(bytes, text);
        return std::string(text);
    });
#endif
}

std::vector<std::string> const & Texts()
{
    static std::vector<std::string> const texts = [] {
        auto random = bench::Random();
        std::vector<std::string> made;
        for (int i = 0; i < 1'000'000; ++i) {
            std::uint64_t const words[] = {random(), random()};
            char text[40];
            std::snprintf(
                text, sizeof text, "%08X-%04X-4%03X-8%03X-%012llX",
                static_cast<unsigned>(words[0] & 0xFFFFFFFF), static_cast<unsigned>(words[0] >> 32 & 0xFFFF),
                static_cast<unsigned>(words[0] >> 48 & 0xFFF), static_cast<unsigned>(words[1] >> 48 & 0xFFF),
                static_cast<unsigned long long>(words[1] & 0xFFFF'FFFF'FFFF));
            made.emplace_back(text);
        }
        return made;
    }();
    return texts;
}

/// Inserts the first `count` texts, turned into elements, and finds each of them.
template <typename Set>
void Sets(std::string const & workload, std::string const & implementation, std::size_t count, auto element)
{
    using Element = typename Set::value_type;
    auto const prepare = [count, element] {
        std::vector<Element> elements;
        elements.reserve(count);
        for (std::size_t i = 0; i < count; ++i) elements.push_back(element(Texts()[i]));
        return [elements = std::make_shared<std::vector<Element>>(std::move(elements))] {
            Set set;
            std::size_t found = 0;
            for (Element const & one : *elements) set.insert(one);
            for (Element const & one : *elements) found += set.find(one) != set.end() ? 1 : 0;
            bench::Require(set.size() == elements->size() && found == set.size(), "sets");
        };
    };
    bench::RegisterPrepared(workload, implementation, 2 * count, prepare);
}

LCKeyIDRev Key(std::string const & text) { return {LCString(text.substr(24)), 1, text[0] % 4}; }

struct PlainKey {
    std::string id;
    int majorRev, minorRev;
    friend auto operator<=>(PlainKey const &, PlainKey const &) = default;
};
PlainKey AsPlainKey(std::string const & text) { return {text.substr(24), 1, text[0] % 4}; }

}  // namespace

int main(int count, char * arguments[])
{
    auto const same = [](std::string const & text) { return text; };
    auto const guid = [](std::string const & text) { return LCGUID(LCString(text)); };
    std::string const guids = "W10.guid-set-1e6-insert-find";
    std::string const keys = "W10.key-set-1e5-insert-find";
    NewTexts();
    Sets<std::set<LCGUID>>(guids, "ours", 1'000'000, guid);
    Sets<std::set<std::string>>(guids, "std::set", 1'000'000, same);
    Sets<std::set<LCKeyIDRev>>(keys, "ours", 100'000, Key);
    Sets<std::set<PlainKey>>(keys, "std::set", 100'000, AsPlainKey);
#ifdef PEER_ABSL_BTREE
    Sets<absl::btree_set<std::string>>(guids, "absl::btree_set", 1'000'000, same);
    Sets<absl::btree_set<PlainKey>>(keys, "absl::btree_set", 100'000, AsPlainKey);
#endif
    for (std::size_t const size : {1'000u, 10'000u, 100'000u})
        Sets<std::set<LCGUID>>("growth.guid-set", std::to_string(size), size, guid);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
