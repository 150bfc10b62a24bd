// HTTPS1: the control through which the exchange and the connection test talk to a server. Properties say what is asked
// and how the server is reached; an action performs it; handlers watch.
//
// It gives a transport's outcome the number that the dialogues go by, collects the answer, and puts a fetched file in
// its place.
#pragma once

#include "connection/download_file.h"
#include "ports/file_system.h"
#include "ports/network.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace connection {

// How a request ended, in the numbers that logs and support know. 0: an answer is there, whole.
struct HttpsResult {
    std::int32_t number = 0;
    std::string description;
};

namespace https_error {
// No connection, a time-out, or an answer that is an HTTP error.
inline constexpr std::int32_t kNoConnection = 20152;
// Every other failure: this plus the transport's own number ...
inline constexpr std::int32_t kTransport = 20000;
// ... among them a file of which not all came, one that could not be written, and what cancel() ended.
inline constexpr std::int32_t kIncomplete = kTransport + 18;
inline constexpr std::int32_t kNotWritten = kTransport + 23;
inline constexpr std::int32_t kCancelled = kTransport + 42;
} // namespace https_error

// In the answer of a service that is switched off, in any letter case; it comes with whatever status.
inline constexpr std::string_view kSystemDown = "<SYSDOWN>";

// The description of a time-out, whatever timed out.
inline constexpr std::string_view kTimedOut = "The operation timed out.";

class HttpsControl : private ports::HttpEvents {
public:
    enum class Action : std::uint8_t { Get = 1, Post = 2 };

    // Of an answer that goes to a file this much is kept in memory too; bytes.
    static constexpr std::size_t kKeptOfAFile = 1024 * 1024;

    // Not owned; outlive the control.
    HttpsControl(ports::Network& network, ports::FileSystem& fileSystem);

    // For the next request.
    std::string URL; // http or https, without blanks
    std::string PostData;
    std::string LocalFile; // not "": a file's whole path, which then gets the body
    // A file that breaks off leaves its beginning beside LocalFile, and the next request for it asks for the rest.
    bool Resume = false;
    bool UseWinInet = false;
    ports::HttpSettings settings;
    std::chrono::milliseconds TimeOut{600'000};
    // How much of a body is kept for response(); the handlers see all of it. Bytes.
    std::size_t responseLimit = std::string::npos;

    // Told while a request runs; what they raise ends the request and comes out of perform().
    std::function<void()> onTransferStart;
    std::function<void(std::int64_t bytesSoFar, std::string_view bytes)> onTransferProgress;
    std::function<void(std::string_view field, std::string_view value)> onHeader;
    std::function<void()> onIdle; // at least every 50 ms: handle the waiting messages
    // The connection broke after the server had begun to answer, or the file could not be written.
    std::function<void(std::int32_t code, const std::string& description)> onError;
    std::function<void(bool complete)> onTransferEnd;
    // After every request for which there was a connection. 0 and "" when nothing went wrong.
    std::function<void(std::int32_t statusCode, const std::string& description)> onDisconnected;

    // Returns when the transfer is over. Raises 5 while another one runs. A file is put in its place only after an
    // answer that is no error and not that of a service that is switched off; an empty body replaces nothing.
    [[nodiscard]] HttpsResult perform(Action action);
    // Ends a running request at once: it results in kCancelled. Without one it does nothing.
    void cancel() noexcept;
    [[nodiscard]] bool busy() const noexcept { return m_busy; }

    // As if nothing had been asked yet.
    void forgetAnswer() noexcept;
    // The body of the last answer as bytes, also of an error page; "" after a failure without one.
    [[nodiscard]] const std::string& response() const noexcept { return m_response; }
    // The value of its Content-Type; "" without one.
    [[nodiscard]] const std::string& contentType() const noexcept { return m_contentType; }
    // How long the file of the last answer is by what the server says; nothing when it does not say.
    [[nodiscard]] std::optional<std::int64_t> announcedFileLength() const { return m_answer.fileLength(); }

private:
    class Running;

    void transferStarted() override;
    void answered(std::int32_t status) override;
    void header(std::string_view field, std::string_view value) override;
    void received(std::string_view bytes) override;
    void idle() override;

    struct Performed {
        ports::HttpOutcome outcome;
        HttpsResult result;
    };
    [[nodiscard]] Performed performOnce(Action action);
    void putFileInPlace();
    [[nodiscard]] ports::HttpRequest request(Action action) const;
    [[nodiscard]] HttpsResult judge(const ports::HttpOutcome& outcome, Action action) const;
    [[nodiscard]] bool systemIsDown() const;
    void receiveFile(std::string_view bytes);
    void writeToFile(const std::function<void()>& step);
    void tell(const ports::HttpOutcome& outcome, const HttpsResult& result) const;

    ports::FileSystem& m_fileSystem;
    std::unique_ptr<ports::Https> m_transport;
    std::string m_response;
    std::string m_contentType;
    FileAnswer m_answer;
    std::int64_t m_bytesSoFar = 0;
    std::unique_ptr<DownloadFile> m_file; // of the running request
    bool m_fileBegun = false;
    std::optional<HttpsResult> m_notWritten;
    bool m_busy = false;
    bool m_cancelled = false;
};

} // namespace connection
