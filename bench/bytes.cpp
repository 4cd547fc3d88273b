// Base64, and large contents of streams.

#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <memory>
#include <sstream>

#include "Bench.h"
#include "streams/LCBase64.h"
#include "streams/LHCMemoryStream.h"
#include "streams/LHCOutputFileStream.h"

#ifdef PEER_ABSL
#include <absl/strings/escaping.h>
#endif
#ifdef PEER_GLIB
#include <glib.h>
#endif
#ifdef PEER_OPENSSL
#include <openssl/evp.h>
#endif
#ifdef PEER_QT
#include <QBuffer>
#include <QByteArray>
#endif

namespace {

constexpr std::size_t megabyte = 1 << 20;

std::string RandomBytes(std::size_t size)
{
    auto random = bench::Random();
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i + 8 <= size; i += 8) {
        auto const word = random();
        std::memcpy(&bytes[i], &word, 8);
    }
    return bytes;
}

std::string const & Plain()
{
    static std::string const bytes = RandomBytes(16 * megabyte);
    return bytes;
}
std::string const & Encoded()
{
    static std::string const text = LCBase64::Encode(LCString(Plain())).str();
    return text;
}

unsigned char const * Bytes(std::string const & text)
{
    return reinterpret_cast<unsigned char const *>(text.data());
}

/// `encode` and `decode` go from one std::string to something like a text.
void Base64(std::string const & implementation, auto encode, auto decode)
{
    bench::Require(std::string_view(encode(Plain())) == Encoded(), implementation.c_str());
    bench::Require(std::string_view(decode(Encoded())) == Plain(), implementation.c_str());
    bench::Register("W16.base64-encode-16MB", implementation, 1,
                    [encode] { benchmark::DoNotOptimize(encode(Plain())); });
    bench::Register("W16.base64-decode-16MB", implementation, 1,
                    [decode] { benchmark::DoNotOptimize(decode(Encoded())); });
}

struct Free {
    void operator()(void * block) const { std::free(block); }
};

/// A block and its size, as most of the implementations give it.
template <typename Release> struct Block {
    std::unique_ptr<char, Release> bytes;
    std::size_t size;
    operator std::string_view() const { return {bytes.get(), size}; }
};
using OwnBlock = Block<Free>;
struct OwnText : LCString {
    operator std::string_view() const { return str(); }
};

void Base64()
{
    Base64(
        "ours",
        [](std::string const & bytes) {
            OwnText text;
            LCBase64::Encode(Bytes(bytes), bytes.size(), text);
            return text;
        },
        [](std::string const & text) {
            LCUInt64 size = 0;
            unsigned char * const bytes = LCBase64::Decode(text.data(), text.size(), size);
            return OwnBlock{std::unique_ptr<char, Free>(reinterpret_cast<char *>(bytes)), size};
        });
#ifdef PEER_ABSL
    Base64(
        "absl", [](std::string const & bytes) { return absl::Base64Escape(bytes); },
        [](std::string const & text) {
            std::string bytes;
            absl::Base64Unescape(text, &bytes);
            return bytes;
        });
#endif
#ifdef PEER_OPENSSL
    Base64(
        "openssl",
        [](std::string const & bytes) {
            std::unique_ptr<char, Free> text(static_cast<char *>(std::malloc(bytes.size() / 3 * 4 + 5)));
            int const size = EVP_EncodeBlock(reinterpret_cast<unsigned char *>(text.get()), Bytes(bytes),
                                             static_cast<int>(bytes.size()));
            return OwnBlock{std::move(text), static_cast<std::size_t>(size)};
        },
        [](std::string const & text) {
            std::unique_ptr<char, Free> bytes(static_cast<char *>(std::malloc(text.size() / 4 * 3)));
            int const size = EVP_DecodeBlock(reinterpret_cast<unsigned char *>(bytes.get()), Bytes(text),
                                             static_cast<int>(text.size()));
            std::size_t const padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
            return OwnBlock{std::move(bytes), static_cast<std::size_t>(size) - padding};
        });
#endif
#ifdef PEER_GLIB
    struct GFree {
        void operator()(void * block) const { g_free(block); }
    };
    Base64(
        "glib",
        [](std::string const & bytes) {
            char * const text = g_base64_encode(Bytes(bytes), bytes.size());
            return Block<GFree>{std::unique_ptr<char, GFree>(text), std::strlen(text)};
        },
        [](std::string const & text) {
            gsize size = 0;
            guchar * const bytes = g_base64_decode(text.c_str(), &size);
            return Block<GFree>{std::unique_ptr<char, GFree>(reinterpret_cast<char *>(bytes)), size};
        });
#endif
#ifdef PEER_QT
    struct Array : QByteArray {
        operator std::string_view() const { return {constData(), static_cast<std::size_t>(size())}; }
    };
    auto const wrapped = [](std::string const & text) {
        return QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size()));
    };
    Base64(
        "qt", [wrapped](std::string const & bytes) { return Array{wrapped(bytes).toBase64()}; },
        [wrapped](std::string const & text) { return Array{QByteArray::fromBase64(wrapped(text))}; });
#endif
    for (std::size_t const size : {1u, 2u, 4u, 8u}) {
        bench::RegisterPrepared("growth.base64-encode", std::to_string(size) + "MB", size * megabyte, [size] {
            return [bytes = LCString(RandomBytes(size * megabyte))] {
                benchmark::DoNotOptimize(LCBase64::Encode(bytes));
            };
        });
    }
}

constexpr std::size_t pieces = 512;  // of a megabyte each

std::string const & Piece()
{
    static std::string const piece = RandomBytes(megabyte);
    return piece;
}

void FillOurs(LCStream & stream)
{
    for (std::size_t i = 0; i < pieces; ++i)
        stream.Write(const_cast<char *>(Piece().data()), static_cast<LCLong>(megabyte));
}

void FillMemory()
{
    std::string const workload = "W17.fill-memory-512MB";
    bench::Register(workload, "ours", 1, [] {
        LHCMemoryStream stream;
        FillOurs(stream);
        bench::Require(stream.GetSize() == static_cast<LCLong>(pieces * megabyte), "filling");
    });
    bench::Register(workload, "std::stringstream", 1, [] {
        std::stringstream stream(std::ios::in | std::ios::out | std::ios::binary);
        for (std::size_t i = 0; i < pieces; ++i) stream.write(Piece().data(), megabyte);
        bench::Require(stream.tellp() == static_cast<std::streamoff>(pieces * megabyte), "filling");
    });
#ifdef PEER_QT
    bench::Register(workload, "qt", 1, [] {
        QBuffer buffer;
        buffer.open(QIODevice::ReadWrite);
        for (std::size_t i = 0; i < pieces; ++i) buffer.write(Piece().data(), megabyte);
        bench::Require(buffer.size() == static_cast<qint64>(pieces * megabyte), "filling");
    });
#endif
}

/// Registers what `prepare` gives, once it has been seen to write all pieces to the file.
void RegisterWriting(std::string const & workload, std::string const & implementation,
                     bench::TemporaryFile const & file, auto prepare)
{
    bench::RegisterPrepared(
        workload, implementation, 1, [&file, prepare, row = workload + "/" + implementation] {
            auto pass = prepare();
            pass();
            std::ifstream written(file.Name(), std::ios::binary);
            std::string piece(megabyte, '\0');
            for (std::size_t i = 0; i < pieces; ++i) {
                written.read(piece.data(), megabyte);
                bench::Require(written.good() && piece == Piece(), row.c_str());
            }
            bench::Require(written.peek() == std::ifstream::traits_type::eof(), row.c_str());
            return pass;
        });
}

void MemoryToFile()
{
    static bench::TemporaryFile const file;
    std::string const workload = "W17.memory-512MB-to-file";
    RegisterWriting(workload, "ours", file, [] {
        auto const stream = std::make_shared<LHCMemoryStream>();
        FillOurs(*stream);
        return [stream] {
            LHCOutputFileStream output(file.Name());
            output.LoadFromStream(*stream, true);
        };
    });
    auto const bytes = [] {
        auto all = std::make_shared<std::string>();
        all->reserve(pieces * megabyte);
        for (std::size_t i = 0; i < pieces; ++i) *all += Piece();
        return all;
    };
    RegisterWriting(bench::Bound(workload), "write(2) of a copy", file, [bytes] {
        return [all = bytes()] {
            std::string const block(*all);
            int const to = ::open(file.Name(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
            ssize_t const written = ::write(to, block.data(), block.size());
            bench::Require(written == static_cast<ssize_t>(block.size()), "writing");
            ::close(to);
        };
    });
    RegisterWriting(workload, "write(2)", file, [bytes] {
        return [all = bytes()] {
            int const to = ::open(file.Name(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
            ssize_t const written = ::write(to, all->data(), all->size());
            bench::Require(written == static_cast<ssize_t>(all->size()), "writing");
            ::close(to);
        };
    });
    RegisterWriting(workload, "std::ofstream", file, [bytes] {
        return [all = bytes()] {
            std::ofstream output(file.Name(), std::ios::binary | std::ios::trunc);
            output.write(all->data(), static_cast<std::streamsize>(all->size()));
        };
    });
}

}  // namespace

int main(int count, char * arguments[])
{
    Base64();
    FillMemory();
    MemoryToFile();
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
