// Matching product codes with picture names: our index beside an Aho-Corasick scan, `grep -F` as a whole process (where
// there is one) and the double loop. auto_link_bench [rounds]. All find the same pairs in the same order, or it fails.
#include "baselines/aho_corasick.h"
#include "baselines/double_loop.h"
#include "images/name_index.h"
#include "measure.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace {

using bench::median;
using bench::seconds;

using Pairs = std::vector<std::pair<std::uint32_t, std::uint32_t>>;
using Texts = std::vector<std::string>;

struct Shop {
    Texts codes;
    Texts names;
};

// Codes of 5 to 10 characters; half of the names carry one of them, as a shop's pictures do.
Shop makeShop(std::size_t codes, std::size_t names) {
    std::mt19937 random(1);
    const auto text = [&](std::size_t length) {
        static constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_";
        std::string out;
        while (out.size() < length) {
            out += kLetters[random() % kLetters.size()];
        }
        return out;
    };
    Shop shop;
    for (std::size_t i = 0; i < codes; ++i) {
        shop.codes.push_back(text(5 + random() % 6));
    }
    for (std::size_t i = 0; i < names; ++i) {
        shop.names.push_back((i % 2 == 0 ? shop.codes[random() % codes] : text(8)) + "_" + text(2) + ".JPG");
    }
    return shop;
}

Pairs byIndex(const Shop& shop) {
    const images::NameIndex index(shop.names);
    Pairs pairs;
    std::vector<std::uint32_t> found;
    for (std::uint32_t code = 0; code < shop.codes.size(); ++code) {
        index.find(shop.codes[code], found);
        for (const std::uint32_t name : found) {
            pairs.emplace_back(code, name);
        }
    }
    return pairs;
}

void require(bool same, const char* what) {
    if (!same) {
        std::printf("%s found other pairs\n", what);
        std::exit(1);
    }
}

#ifndef _WIN32
void writeLines(const char* path, const Texts& lines) {
    std::ofstream out(path);
    for (const std::string& line : lines) {
        out << line << '\n';
    }
}
#endif

void compare(std::size_t codes, std::size_t names, int rounds) {
    const Shop shop = makeShop(codes, names);
    std::vector<double> ours;
    std::vector<double> scan;
    std::vector<double> grep;
    Pairs expected;
#ifndef _WIN32
    writeLines("auto_link_bench.codes", shop.codes);
    writeLines("auto_link_bench.names", shop.names);
#endif
    for (int round = 0; round < rounds; ++round) {
        Pairs found;
        scan.push_back(seconds([&] { expected = baselines::ahoCorasick(shop.codes, shop.names); }));
        ours.push_back(seconds([&] { found = byIndex(shop); }));
        require(found == expected, "the index");
#ifndef _WIN32
        grep.push_back(seconds([] {
            require(std::system("LC_ALL=C grep -F -o -f auto_link_bench.codes auto_link_bench.names >/dev/null") == 0,
                    "grep");
        }));
#endif
    }
    // The double loop takes half a minute for the largest case, so a part of the codes stands for all.
    const Texts some(shop.codes.begin(), shop.codes.begin() + 200);
    Pairs looped;
    const double loop = seconds([&] { looped = baselines::doubleLoop(some, shop.names); }) *
                        static_cast<double>(codes) / static_cast<double>(some.size());
    expected.erase(
        std::find_if(expected.begin(), expected.end(), [&](const auto& p) { return p.first >= some.size(); }),
        expected.end());
    require(looped == expected, "the double loop");
    std::printf("%zu codes x %zu names: index %.4f s, Aho-Corasick %.4f s (ratio %.2f)", codes, names, median(ours),
                median(scan), median(ours) / median(scan));
    if (!grep.empty()) {
        std::printf(", grep %.4f s (ratio %.2f)", median(grep), median(ours) / median(grep));
    }
    std::printf(", double loop %.1f s from %zu codes (%.0f times)\n", loop, some.size(), loop / median(ours));
#ifndef _WIN32
    std::remove("auto_link_bench.codes");
    std::remove("auto_link_bench.names");
#endif
}

} // namespace

int main(int argc, char** argv) {
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 15;
    compare(20'000, 20'000, rounds);
    compare(50'000, 100'000, rounds);
}
