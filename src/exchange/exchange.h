// One exchange with the supplier's web service: the request, the questions that a failure leads to, and what the answer
// says.
#pragma once

#include "exchange/context.h"
#include "host/host_globals.h"
#include "xml/xml_document.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace exchange {

struct ExchangeRequest {
    std::string url;
    std::string method;                                  // "POST" or "GET"; anything else asks for nothing
    std::shared_ptr<xml::XmlDocument> results = nullptr; // receives the answer
    std::shared_ptr<xml::XmlDocument> command = nullptr; // what is posted; null: nothing is
    std::string localFile{};                             // not "": the body goes to this file
    bool dontLoadResults = false;                        // the answer is no document
    bool resume = false;                                 // a file that broke off goes on where it ended
};

struct ExchangeResult {
    bool succeeded = false; // what went wrong has been told
    std::string url;        // as it was asked in the end: with its blanks encoded, or the alternate address
    std::string posted{};   // what was posted, once there was an answer
};

class Exchange {
public:
    // `context.https` is free; the watchers that it has are replaced.
    Exchange(const Context& context, ExchangeRequest request);
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;
    ~Exchange();

    [[nodiscard]] ExchangeResult run();

    // Works out the way to the server from the user's settings, and traces what is chosen. What goes wrong is reported.
    static void SetHTTPSettings(const Context& context);

private:
    using Next = Dialogues::Next;
    using HttpsResult = connection::HttpsResult;

    void prepare();
    void stampLastDate();
    void useWhatWasAskedFor();
    [[nodiscard]] bool perform(); // the request loop: true with an answer
    [[nodiscard]] HttpsResult attempt();

    // exchange_failures.cpp: what follows when it failed.
    [[nodiscard]] Next afterNoConnection(const HttpsResult& result);
    [[nodiscard]] Next afterOtherFailure(const HttpsResult& result);
    [[nodiscard]] Next dialByHand(const HttpsResult& result);
    [[nodiscard]] Next dial(const HttpsResult& result);
    [[nodiscard]] Failure describe(const HttpsResult& result) const;
    [[nodiscard]] bool alternateAccepted();
    void switchToAlternate();
    void makeErrorFolder();

    [[nodiscard]] bool check(); // the answer: true when it is a good one
    [[nodiscard]] bool load();
    [[nodiscard]] std::string keepAnswer();
    [[nodiscard]] std::string answer() const;

    void watch();
    void tell(const Transfer& transfer);

    [[nodiscard]] std::string setting(std::string_view section, std::string_view key) const;
    void log(const std::string& text) { m_context.observer.trace(text); }

    Context m_context;
    ExchangeRequest m_request;
    host::HostGlobals m_host;
    std::string m_service;   // the service's address when that is what is asked, else ""
    std::string m_alternate; // the alternate address; "" where there is none for this request
    Transfer m_transfer;
};

} // namespace exchange
