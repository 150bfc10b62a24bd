#include "exchange/failure.h"

#include "base/text.h"
#include "connection/https_control.h"

namespace exchange {

Failure describeFailure(std::int32_t number, std::string_view description, std::string_view url,
                        std::string_view answer, bool proxy) {
    // Without an answer the transport's own words say what happened.
    const auto says = [tested = answer.empty() ? description : answer](std::string_view part) {
        return base::containsIgnoringCase(tested, part);
    };
    Failure failure{Failure::Kind::Supplier, number, std::string(description), std::string(url), {}};
    if (number != connection::https_error::kNoConnection) {
        failure.kind = Failure::Kind::NotConnected;
    } else if (says("TIMED OUT") || description == connection::kTimedOut) {
        failure.kind = Failure::Kind::TimedOut;
    } else if (proxy && (says("AUTHE") || says("AUTHOR"))) {
        failure.kind = Failure::Kind::Authorisation;
    } else if (says("404")) {
        failure.kind = Failure::Kind::NotFound;
    }
    return failure;
}

bool Failure::settingsMayHelp() const noexcept {
    return kind == Kind::Authorisation || kind == Kind::NotFound || kind == Kind::NotConnected;
}

// The texts are known to users and to support as they are, "to short" included.
std::string Failure::text() const {
    const std::string reason = "\r\n\r\n(" + description + ")";
    switch (kind) {
    case Kind::TimedOut:
        return "The server timed out due to either:\r\n\r\n"
               "1. Server is busy on the supplier side, \r\n"
               "   please try again in a few minutes.\r\n\r\n"
               "2. Your proxy server timeout is to short,\r\n"
               "   contact your administrator." +
               reason;
    case Kind::Authorisation:
        return "Authorisation error returned. This is most likely from your proxy server. Press 'Settings' to "
               "configure proxy settings now." +
               reason;
    case Kind::NotFound: return "Error while connecting to [" + url + "]. Please contact your supplier." + reason;
    case Kind::NotConnected:
        return "Could not connect to your supplier, please dial up to the internet manually, then try "
               "send/receive again" +
               reason;
    case Kind::Supplier: break;
    }
    return "System error on suppliers side, please contact and give them this filename:  " + answerFile;
}

} // namespace exchange
