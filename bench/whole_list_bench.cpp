// The tools for the whole list from open to save, on a made-up shop: whole_list_bench FOLDER [rounds]. FOLDER must
// exist and be empty. Baselines: the bare library's load and save plus an Aho-Corasick scan for auto-link; for the
// report the time that opening, indexing, listing and writing alone take.
#include "adapters/posix/posix_file_system.h"
#include "adapters/posix/system_clock.h"
#include "baselines/aho_corasick.h"
#include "baselines/bare_libxml2.h"
#include "fakes/fake_code_page.h"
#include "fakes/silent_run.h"
#include "images/auto_link.h"
#include "images/link_report.h"
#include "measure.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

using bench::median;
using bench::seconds;

std::string number(std::size_t n) {
    const std::string digits = std::to_string(n);
    return std::string(6 - std::min<std::size_t>(6, digits.size()), '0') + digits;
}

// `links` links of "P<number>" codes, each to a picture of its own; every tenth twice more, every twentieth needless.
std::string linkDocument(std::size_t links) {
    std::string text = "<images>";
    for (std::size_t i = 0; i < links; ++i) {
        const std::size_t product = i % 10 < 3 ? i / 10 * 10 : i;
        const std::string code = "P" + number(product);
        const std::string file = i % 20 == 19 ? code + ".jpg" : code + "_1.JPG";
        text += "<p f1=\"" + code + "\" f2=\"" + file + "\" f3=\"created\"/>";
    }
    return text + "</images>";
}

class Bench {
public:
    Bench(std::string folder, int rounds) : m_folder(std::move(folder)), m_rounds(rounds), m_files(m_folder) {
        m_files.createFolder("C:\\images");
        for (std::size_t i = 0; i < kPictures; ++i) {
            std::ofstream(m_folder + "/images/" +
                          (i < kCodes ? "C" + number(i) + "-X.JPG" : "other" + number(i) + ".jpg"));
        }
        for (std::size_t i = 0; i < kCodes; ++i) {
            m_codes.push_back("C" + number(i));
            m_lines.push_back("P" + number(i) + ",description of product " + number(i));
        }
    }

    void autoLink() {
        const std::string text = linkDocument(kLinks);
        std::vector<double> ours;
        std::vector<double> bare;
        int written = 0;
        std::vector<std::string> names;
        for (int round = 0; round < m_rounds; ++round) {
            m_files.replaceFile("C:\\images.xml", text);
            ours.push_back(seconds([&] {
                images::LinkDocument document(images::LinkKind::Images, m_files, m_clock, m_ansi);
                document.open("C:\\");
                images::FolderFiles files(m_files, "C:\\images");
                static_cast<void>(files.list(m_run));
                written =
                    images::autoLink(m_codes, files, images::AutoLinkMode::NameContainsCode, document, m_run).written;
                document.saveText();
                names = files.upperNames();
            }));
            bare.push_back(seconds([&] {
                baselines::BareDocument document(text);
                std::ofstream(m_folder + "/bare.xml") << document.text();
                static_cast<void>(baselines::ahoCorasick(m_codes, names));
            }));
        }
        std::printf("auto-link, %zu links, %zu codes x %zu names, %d new links: %.3f s; library load + save + "
                    "Aho-Corasick %.3f s, ratio %.2f\n",
                    kLinks, kCodes, kPictures, written, median(ours), median(bare), median(ours) / median(bare));
    }

    void cleanUp() {
        const double small = cleanUpOf(kLinks / 10);
        const double large = cleanUpOf(kLinks);
        std::printf("clean-up: %zu links %.3f s, %zu links %.3f s, growth %.1f\n", kLinks / 10, small, kLinks, large,
                    large / small);
    }

    void report() {
        m_files.replaceFile("C:\\images.xml", linkDocument(kLinks));
        std::vector<double> ours;
        std::vector<double> parts;
        std::string text;
        for (int round = 0; round < m_rounds; ++round) {
            ours.push_back(seconds([&] {
                images::LinkDocument document(images::LinkKind::Images, m_files, m_clock, m_ansi);
                document.open("C:\\");
                images::FolderFiles files(m_files, "C:\\images");
                static_cast<void>(files.list(m_run));
                text = images::makeReport(m_lines, {.withDescriptions = true}, document, files, m_run);
                m_files.replaceFile("C:\\report.csv", text);
            }));
            parts.push_back(seconds([&] {
                images::LinkDocument document(images::LinkKind::Images, m_files, m_clock, m_ansi);
                document.open("C:\\");
                static_cast<void>(document.findLinkAnywhere("x", "y")); // builds the index
                images::FolderFiles files(m_files, "C:\\images");
                static_cast<void>(files.list(m_run));
                m_files.replaceFile("C:\\report.csv", text);
            }));
        }
        std::printf("report, %zu codes x %zu links x %zu files: %.3f s; open + index + listing + writing %.3f s, "
                    "ratio %.2f\n",
                    m_lines.size(), kLinks, kPictures, median(ours), median(parts), median(ours) / median(parts));
    }

private:
    static constexpr std::size_t kLinks = 200'000;
    static constexpr std::size_t kCodes = 50'000;
    static constexpr std::size_t kPictures = 100'000;

    double cleanUpOf(std::size_t links) {
        m_files.replaceFile("C:\\images.xml", linkDocument(links));
        std::vector<double> times;
        for (int round = 0; round < m_rounds; ++round) {
            images::LinkDocument document(images::LinkKind::Images, m_files, m_clock, m_ansi);
            document.open("C:\\");
            times.push_back(seconds([&] { document.cleanUp([] { return true; }); }));
        }
        return median(times);
    }

    std::string m_folder;
    int m_rounds;
    adapters::PosixFileSystem m_files;
    adapters::SystemClock m_clock;
    fakes::FakeCodePage m_ansi;
    fakes::SilentRun m_run;
    std::vector<std::string> m_codes;
    std::vector<std::string> m_lines;
};

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::printf("whole_list_bench FOLDER [rounds]\n");
        return 2;
    }
    Bench bench(argv[1], argc > 2 ? std::atoi(argv[2]) : 7);
    bench.autoLink();
    bench.cleanUp();
    bench.report();
}
