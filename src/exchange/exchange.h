// One exchange with the supplier's web service: the request, the dialogues that a failure leads the user through, and
// what the answer says. The control decides what is exchanged, and when.
#pragma once

#include "connection/https_control.h"
#include "exchange/services.h"
#include "host/host_globals.h"
#include "xml/xml_document.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace sendreceive {
class ucSendReceive;
}

namespace exchange {


struct ExchangeRequest {
    std::string& url;                                 // leaves with its blanks encoded, or as the alternate address
    const std::string& method;                        // "POST" or "GET"; anything else asks for nothing
    const std::shared_ptr<xml::XmlDocument>& results; // receives the answer
    const std::shared_ptr<xml::XmlDocument>& command; // what is posted; null: nothing is
    const std::string& localFile;                     // not "": the body goes to this file
    bool dontLoadResults;                             // the answer is no document
    bool forceDownload;                               // for the files that the answer names
    bool resume;                                      // a file that broke off goes on where it ended
    std::string* posted = nullptr;                    // receives what was posted, once there is an answer
};

class Exchange {
public:
    // All of it outlives the exchange. `https` is free.
    Exchange(sendreceive::ucSendReceive& control, const Services& services, connection::HttpsControl& https,
             const ExchangeRequest& request);
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;
    ~Exchange();

    // True when it succeeded. What went wrong has been shown.
    [[nodiscard]] bool run();

private:
    using Result = connection::HttpsResult;
    enum class Next : std::uint8_t { Repeat, GiveUp };

    void prepare();
    void useWhatWasAskedFor();
    void stampLastDate();
    [[nodiscard]] bool perform(); // the request loop: true with an answer
    [[nodiscard]] Result attempt();

    // exchange_dialogues.cpp: what the user is asked when it failed.
    [[nodiscard]] Next afterNoConnection(const Result& failure);
    [[nodiscard]] Next afterOtherFailure(const Result& failure);
    [[nodiscard]] Next askForManualDial(const Result& failure);
    [[nodiscard]] Next dial(const Result& failure);
    [[nodiscard]] bool alternateAccepted();
    void switchToAlternate();
    [[nodiscard]] Next askWithButtons(const std::string& text, bool settingsHelp);
    void makeErrorFolder();
    [[nodiscard]] static std::string numbered(const Result& result);

    [[nodiscard]] bool check(); // the answer: true when it is a good one
    void tell(const struct SystemDown& down);
    [[nodiscard]] bool load();
    [[nodiscard]] std::string writeErrorFile();

    void watch();

    [[nodiscard]] std::string setting(std::string_view section, std::string_view key) const;
    void log(const std::string& text);
    void box(const std::string& text);

    sendreceive::ucSendReceive& m_control;
    const Services& m_services;
    connection::HttpsControl& m_https;
    ExchangeRequest m_request;
    host::HostGlobals m_host;
    std::string m_alternate; // the alternate address; "" where there is none for this request
};

} // namespace exchange
