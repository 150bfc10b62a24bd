// Link documents: loading, writing and searching, each beside the same work without our layer.
// "link_documents_bench" prints medians; "link_documents_bench hold LINKS" loads and indexes that many links and ends,
// so that its peak memory can be read from outside.
#include "baselines/bare_libxml2.h"
#include "fakes/fake_code_page.h"
#include "fakes/one_file.h"
#include "images/link_document.h"
#ifdef _WIN32
#include "baselines/platform_dom.h"
#endif

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr int kRounds = 9;
constexpr std::size_t kMany = 200000;

std::string numbered(const char* format, std::size_t number) {
    char text[64];
    std::snprintf(text, sizeof text, format, static_cast<unsigned>(number));
    return text;
}

std::string codeOf(std::size_t i) {
    return numbered("CODE%06u", i);
}

std::string fileOf(std::size_t i) {
    return numbered("CODE%06u.JPG", i);
}

std::string document(std::size_t links) {
    std::string text = "<images>";
    for (std::size_t i = 0; i < links; ++i) {
        text += "<p f1=\"" + codeOf(i) + "\" f2=\"" + fileOf(i) + "\" f3=\"created\"/>";
    }
    return text + "</images>";
}

// Processor time where it is fine enough to measure with, so that other programs disturb less; wall time in Windows.
double now() {
#ifdef _WIN32
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
#else
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
#endif
}

double secondsOf(const std::function<void()>& work) {
    const double start = now();
    work();
    return now() - start;
}

double median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + kRounds / 2, values.end());
    return values[kRounds / 2];
}

// Ours and a baseline in turn; prints both medians in milliseconds and the median of the rounds' ratios. What `before`
// does ahead of each is not counted.
void compare(
    const char* what, const char* baseline, const std::function<void()>& ours, const std::function<void()>& theirs,
    const std::function<void()>& before = [] {}) {
    std::vector<double> our;
    std::vector<double> their;
    std::vector<double> ratio;
    for (int round = 0; round < kRounds; ++round) {
        before();
        our.push_back(secondsOf(ours));
        before();
        their.push_back(secondsOf(theirs));
        ratio.push_back(our.back() / their.back());
    }
    std::printf("%-34s %9.2f ms   %s %9.2f ms   ratio %.3f\n", what, median(our) * 1e3, baseline, median(their) * 1e3,
                median(ratio));
}

void require(bool condition) {
    if (!condition) {
        std::puts("a result is wrong");
        std::exit(1);
    }
}

void loadAndText() {
    const std::string bytes = document(kMany);
    std::unique_ptr<xml::XmlDocument> ours;
    std::unique_ptr<baselines::BareDocument> bare;
    const auto loadOurs = [&] {
        ours = std::make_unique<xml::XmlDocument>();
        require(ours->load(bytes));
    };
    const auto loadBare = [&] { bare = std::make_unique<baselines::BareDocument>(bytes); };
    const auto unload = [&] {
        ours.reset();
        bare.reset();
    };
    const auto writeOurs = [&] { require(ours->xml().size() == bytes.size()); };
    compare("load, 200,000 links", "bare library", loadOurs, loadBare, unload);
    loadOurs();
    compare("text, 200,000 links", "bare library", writeOurs, [&] { require(bare->text().size() >= bytes.size()); });
#ifdef _WIN32
    const std::wstring wide(bytes.begin(), bytes.end());
    std::unique_ptr<baselines::PlatformDom> dom;
    const auto loadDom = [&] {
        dom = std::make_unique<baselines::PlatformDom>();
        dom->load(wide);
    };
    compare("load, 200,000 links", "platform DOM", loadOurs, loadDom, [&] {
        unload();
        dom.reset();
    });
    loadOurs();
    compare("text, 200,000 links", "platform DOM", writeOurs, [&] { require(dom->textLength() >= bytes.size()); });
    compare(
        "one search by expression", "platform DOM",
        [&] { require(static_cast<bool>(ours->selectSingleNode("//p[@f1='CODE199999' and @f2='CODE199999.JPG']"))); },
        [&] { require(dom->finds(L"//p[@f1='CODE199999' and @f2='CODE199999.JPG']")); });
#endif
}

void indexBuild() {
    xml::XmlDocument ours;
    require(ours.load(document(kMany)));
    std::vector<double> times;
    std::size_t memory = 0;
    for (int round = 0; round < kRounds; ++round) {
        images::LinkIndex index;
        times.push_back(secondsOf([&] { index.build(ours.rootView()); }));
        memory = index.memory();
    }
    std::printf("%-34s %9.2f ms   memory %.2f MB\n", "index build, 200,000 links", median(times) * 1e3,
                static_cast<double>(memory) / 1e6);
}

void lookUps() {
    constexpr std::size_t kLookUps = 100000;
    fakes::NoClock clock;
    fakes::FakeCodePage ansi;
    for (const std::size_t links : {1000U, 10000U, 50000U, 200000U}) {
        const std::string bytes = document(links);
        fakes::OneFile file(bytes);
        images::LinkDocument document(images::LinkKind::Images, file, clock, ansi);
        document.open("");
        std::vector<std::pair<std::string, std::string>> questions; // every fourth has no answer
        for (std::size_t i = 0; i < kLookUps; ++i) {
            const std::size_t link = i * 7919 % links;
            questions.emplace_back(codeOf(link), i % 4 == 3 ? "none" : fileOf(link));
        }
        require(static_cast<bool>(document.findLinkAnywhere(codeOf(0), fileOf(0))));
        std::vector<double> times;
        for (int round = 0; round < kRounds; ++round) {
            std::size_t found = 0;
            times.push_back(secondsOf([&] {
                for (const auto& [code, name] : questions) {
                    found += document.findLinkAnywhere(code, name) ? 1U : 0U;
                }
            }));
            require(found == kLookUps / 4 * 3);
        }
        const baselines::BareDocument bare(bytes);
        std::vector<double> scans;
        for (int round = 0; round < kRounds; ++round) {
            const std::string expression = "//p[@f1='" + codeOf(links / 2) + "' and @f2='" + fileOf(links / 2) + "']";
            scans.push_back(secondsOf([&] { require(bare.count(expression) == 1); }));
        }
        const double lookUp = median(times) / static_cast<double>(kLookUps);
        std::printf("look-up among %7u links        %9.3f us   XPath %9.1f us   %.0f times as fast\n",
                    static_cast<unsigned>(links), lookUp * 1e6, median(scans) * 1e6, median(scans) / lookUp);
    }
}

void hold(std::size_t links) {
    fakes::OneFile file(document(links));
    fakes::NoClock clock;
    fakes::FakeCodePage ansi;
    images::LinkDocument document(images::LinkKind::Images, file, clock, ansi);
    document.open("");
    require(document.linkedFiles(codeOf(0)).size() == (links > 0 ? 1U : 0U));
}

} // namespace

int main(int count, char** arguments) {
    if (count == 3 && std::string_view(arguments[1]) == "hold") {
        hold(std::strtoul(arguments[2], nullptr, 10));
        return 0;
    }
    // First, for a host's heap is not yet shuffled either when it opens its documents.
    indexBuild();
    lookUps();
    loadAndText();
    return 0;
}
