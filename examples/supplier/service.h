// The service itself, without a network: a request's body in, an answer out. One request at a time.
#pragma once

#include "behaviour.h"
#include "data_folder.h"
#include "protocol.h"

#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>

namespace supplier {

struct Answer {
    int status = 200;
    std::string body; // XML
    std::string note; // for the log: " command=... profile=..."
};

class Service {
public:
    // `folder` outlives the service.
    explicit Service(const DataFolder& folder) : m_folder(folder) {}

    // Executes the one command of the body. Every fault of the client's is an answer; raises base::RuntimeError when
    // the data folder fails.
    [[nodiscard]] Answer execute(std::string_view body);

private:
    // Each adds to the note what the log should know. letIn() keeps a new password.
    [[nodiscard]] bool letIn(const Request& request, std::string& note) const;
    [[nodiscard]] std::string perform(const Request& request, const Behaviour& behaviour, std::string& note);
    [[nodiscard]] bool wantsRepetition(const Request& request, const Behaviour& behaviour);

    const DataFolder& m_folder;
    std::mutex m_mutex;
    std::map<std::pair<std::string, std::string>, int> m_repetitions; // by profile and command
};

} // namespace supplier
