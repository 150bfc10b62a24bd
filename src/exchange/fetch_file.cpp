#include "exchange/fetch_file.h"

#include "base/split_path.h"
#include "connection/web_address.h"
#include "exchange/exchange.h"
#include "ports/ensure_folder.h"

namespace exchange {

FetchedFile fetchFile(const Context& context, const std::string& webname, const std::string& target) {
    const std::string address = connection::fileAddress(context.session.sWebAddress, webname);
    if (context.session.gCancelled || address.empty() ||
        !ports::ensureFolder(context.services.fileSystem, base::splitPath(target).folder)) {
        context.observer.trace("Sub SendReceive: not fetched " + webname);
        return {};
    }
    Exchange fetching(context,
                      {.url = address, .method = "GET", .localFile = target, .dontLoadResults = true, .resume = true});
    const bool succeeded = fetching.run().succeeded;
    return {succeeded && context.services.fileSystem.fileExists(target), context.https.announcedFileLength()};
}

} // namespace exchange
