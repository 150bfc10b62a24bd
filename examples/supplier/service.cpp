#include "service.h"

#include "accounts.h"
#include "request_log.h"
#include "uploads.h"

#include "base/relative_name.h"

#include <optional>

namespace supplier {
namespace {

using Handler = std::optional<std::string> (*)(const Request&, const DataFolder&, Results&);

// A handler adds to the results and returns nothing, or returns why the command cannot be executed.
std::optional<std::string> getAccount(const Request& request, const DataFolder& /*folder*/, Results& results) {
    results.add("account").setAttribute("profile", request.profile());
    return std::nullopt;
}

std::optional<std::string> receiveLinks(const Request& request, const DataFolder& folder, Results& results,
                                        LinkCounts (Uploads::*receive)(std::string_view, const xml::XmlNode&) const) {
    const xml::XmlNode images = request.payload("images");
    if (!images) {
        return "The command brings no images element.";
    }
    const LinkCounts counts = (Uploads(folder).*receive)(request.profile(), images);
    xml::XmlNode accepted = results.add("accepted");
    accepted.setAttribute("created", std::to_string(counts.created));
    accepted.setAttribute("deleted", std::to_string(counts.deleted));
    accepted.setAttribute("stored", std::to_string(counts.stored));
    return std::nullopt;
}

std::optional<std::string> sendImageLinks(const Request& request, const DataFolder& folder, Results& results) {
    return receiveLinks(request, folder, results, &Uploads::mergeLinks);
}

std::optional<std::string> sendImageLinksAll(const Request& request, const DataFolder& folder, Results& results) {
    return receiveLinks(request, folder, results, &Uploads::replaceLinks);
}

std::optional<std::string> sendProductGroups(const Request& request, const DataFolder& folder, Results& results) {
    const xml::XmlNode groups = request.payload("productgroups");
    if (!groups) {
        return "The command brings no productgroups element.";
    }
    const std::size_t count = Uploads(folder).storeProductGroups(request.profile(), groups);
    results.add("accepted").setAttribute("stored", std::to_string(count));
    return std::nullopt;
}

constexpr std::pair<std::string_view, Handler> kCommands[] = {
    {"getaccount130", getAccount},
    {"getaccount400", getAccount},
    {"sendimagelinks210", sendImageLinks},
    {"SendImageLinksAll210", sendImageLinksAll},
    {"sendproductgroups210", sendProductGroups},
};

Handler handlerOf(std::string_view command) {
    for (const auto& [name, handler] : kCommands) {
        if (name == command) {
            return handler;
        }
    }
    return nullptr;
}

} // namespace

Answer Service::execute(std::string_view body) {
    const std::scoped_lock lock(m_mutex);
    const Behaviour behaviour(m_folder);
    if (behaviour.isOff()) {
        return {503, systemDown(behaviour.offMessage()), " off"};
    }
    const Request request(body);
    if (!request.wrong().empty()) {
        return {400, refusal(request.wrong()), " wrong"};
    }
    Answer answer;
    answer.note = " command=" + asWord(request.command()) + " profile=" + asWord(request.profile()) +
                  " lastdate=" + asWord(request.lastDate());
    answer.body = perform(request, behaviour, answer.note);
    return answer;
}

bool Service::letIn(const Request& request, std::string& note) const {
    const Accounts accounts(m_folder);
    xml::XmlNode account = accounts.find(request.profile(), request.password());
    const std::string newPassword = request.newPassword();
    if (!account && !newPassword.empty()) {
        // The second command of the run in which the password was changed still names the old one.
        account = accounts.find(request.profile(), newPassword);
    }
    // An account's number becomes part of file names.
    if (!account || !base::namesAFileInside(request.profile())) {
        note += " refused";
        return false;
    }
    if (!newPassword.empty()) {
        accounts.changePassword(account, newPassword);
        note += " newpassword";
    }
    return true;
}

std::string Service::perform(const Request& request, const Behaviour& behaviour, std::string& note) {
    if (!letIn(request, note)) {
        return refusal("The profile or the password is not correct.");
    }
    const auto failed = [&note](std::string_view text) {
        note += " error=" + asWord(text);
        return commandError(text);
    };
    if (const std::string error = behaviour.errorFor(request.command()); !error.empty()) {
        return failed(error);
    }
    const xml::XmlNode addition = behaviour.additionTo(request.command());
    const Handler handler = handlerOf(request.command());
    if (!handler && !addition) {
        return failed("This service does not know the command '" + request.command() + "'.");
    }
    Results results(request.command());
    if (handler) {
        if (const auto error = handler(request, m_folder, results)) {
            return failed(*error);
        }
    }
    results.addContentOf(addition);
    if (wantsRepetition(request, behaviour)) {
        results.askToRepeat();
        note += " redo";
    }
    return results.xml();
}

bool Service::wantsRepetition(const Request& request, const Behaviour& behaviour) {
    int& asked = m_repetitions[{request.profile(), request.command()}];
    if (asked < behaviour.repetitionsOf(request.command())) {
        ++asked;
        return true;
    }
    asked = 0;
    return false;
}

} // namespace supplier
