#include "exchange/failure_text.h"

#include "base/text.h"
#include "connection/https_control.h"

namespace exchange {

// The texts are known to users and to support as they are, "to short" included.
Failure describeFailure(std::string_view answer, std::string_view description, std::string_view url, bool proxy) {
    // Without an answer the transport's own words say what happened.
    const auto says = [tested = answer.empty() ? description : answer](std::string_view part) {
        return base::containsIgnoringCase(tested, part);
    };
    const std::string reason = "(" + std::string(description) + ")";
    if (says("TIMED OUT") || description == connection::kTimedOut) {
        return {"The server timed out due to either:\r\n\r\n"
                "1. Server is busy on the supplier side, \r\n"
                "   please try again in a few minutes.\r\n\r\n"
                "2. Your proxy server timeout is to short,\r\n"
                "   contact your administrator.\r\n\r\n" +
                    reason,
                false, false};
    }
    if (proxy && (says("AUTHE") || says("AUTHOR"))) {
        return {"Authorisation error returned. This is most likely from your proxy server. Press 'Settings' to "
                "configure proxy settings now.\r\n\r\n" +
                    reason,
                true, false};
    }
    if (says("404")) {
        return {"Error while connecting to [" + std::string(url) + "]. Please contact your supplier.\r\n\r\n" + reason,
                true, false};
    }
    return {"System error on suppliers side, please contact and give them this filename:  ", false, true};
}

} // namespace exchange
