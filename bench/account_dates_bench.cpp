// Last dates for a list of commands from a settings document of 10,000 accounts, beside one search of the document for
// each row. Prints medians; both answer the same, or the program fails.
#include "exchange/account_dates.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_host_document.h"
#include "fakes/fake_late_bound.h"
#include "fakes/one_file.h"
#include "fakes/scripted_watcher.h"
#include "measure.h"

#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int kAccounts = 10000;
constexpr int kRounds = 5;
const std::string kAccount = "B" + std::to_string(kAccounts / 2);

std::string commandName(int row) {
    return "command" + std::to_string(row);
}

std::string settingsText() {
    std::string text = "<settings><accountdates>";
    for (int i = 0; i < kAccounts; ++i) {
        text += "<accountdate number=\"B" + std::to_string(i) + "\" command0=\"20261115\" command1=\"20261114\"/>";
    }
    return text + "</accountdates></settings>";
}

double medianSeconds(const std::function<void()>& work) {
    std::vector<double> times;
    for (int round = 0; round < kRounds; ++round) {
        times.push_back(bench::seconds(work));
    }
    return bench::median(std::move(times));
}

} // namespace

int main() {
    const std::string text = settingsText();
    fakes::OneFile file(text);
    fakes::ScriptedWatcher watcher;
    fakes::FakeClock clock;
    const auto globals = std::make_shared<fakes::FakeLateBound>();
    globals->addProperty("account", kAccount);
    globals->addProperty("gdomquorvantis", base::ObjectRef(std::make_shared<fakes::FakeHostDocument>(file, text)));
    exchange::Session session;
    session.Globals = globals;
    const exchange::AccountDates dates(watcher, watcher, clock, session);
    xml::XmlDocument searched;
    if (!searched.loadXml(text)) {
        return 1;
    }
    const xml::XmlNode root = searched.documentElement();

    for (const int rows : {1, 14, 200}) {
        std::string answered;
        const double reading = medianSeconds([&] {
            answered.clear();
            exchange::LastDates last = dates.read();
            for (int row = 0; row < rows; ++row) {
                answered += last.GetLastDate(commandName(row), "yes");
            }
        });
        std::string found;
        const double searching = medianSeconds([&] {
            found.clear();
            for (int row = 0; row < rows; ++row) {
                const xml::XmlNode own = root.selectSingleNode("accountdates/accountdate[@number='" + kAccount + "']");
                const std::string date = own.getAttribute(commandName(row));
                found += date.empty() ? " " : date;
            }
        });
        if (answered != found) {
            std::printf("the answers differ\n");
            return 1;
        }
        std::printf(
            "%5d rows: one reading %8.2f ms (%8.4f a row)   a search for each %9.2f ms (%7.3f a row)   %.1f times\n",
            rows, reading * 1e3, reading * 1e3 / rows, searching * 1e3, searching * 1e3 / rows, searching / reading);
    }
    return 0;
}
