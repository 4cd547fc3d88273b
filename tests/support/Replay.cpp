// Runs a fuzz target without a fuzzer: on its seeds, and on what chance makes of them. QRTCL_TEST_LOCALE is that of the
// tests.
#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <locale>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size);

static std::string input;

int main(int, char ** arguments)
{
    std::signal(SIGABRT, [](int) { std::fwrite(input.data(), 1, input.size(), stderr); });
    if (char const * const name = std::getenv("QRTCL_TEST_LOCALE")) std::locale::global(std::locale(name));
    std::vector<std::string> seeds;
    for (auto const & file : std::filesystem::directory_iterator(arguments[1])) {
        std::ifstream in(file.path(), std::ios::binary);
        seeds.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    std::sort(seeds.begin(), seeds.end());
    std::mt19937 random(1);
    for (std::size_t round = 0; round < 50000; ++round) {
        input = seeds.at(round % seeds.size());
        // A few bytes, and now and then many, give way to others: of the input, of a seed, or any.
        for (auto edits = round < seeds.size() ? 0 : 1 + random() % 8; edits > 0; --edits) {
            std::string const others[] = {input, seeds[random() % seeds.size()], {static_cast<char>(random())}};
            std::string const & other = others[random() % 3];
            auto const some = [&] { return random() % (random() % 8 == 0 ? 64 : 4); };
            input.replace(random() % (input.size() + 1), some(), other, random() % (other.size() + 1), some());
        }
        LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const *>(input.data()), input.size());
    }
}
