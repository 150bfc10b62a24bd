// What the tests of whole runs have: a shop with links to send, a person who uploads them, and the supplier's side of
// it. The service is examples/supplier, what goes wrong are the peers; both are started around this program.
#pragma once

#include "windows/end_to_end/shop.h"
#include "windows/end_to_end/surroundings.h"

#include <string>

namespace end_to_end {

// What a person is told of a server's fault, before the name of the error file, and of a connection that does not come
// about or breaks, before the reason in parentheses.
inline const std::string kSupplierFault =
    "System error on suppliers side, please contact and give them this filename:  ";
inline const std::string kNoConnection = "Could not connect to your supplier, please dial up to the internet manually, "
                                         "then try send/receive again\r\n\r\n";

class Upload : public Shop {
protected:
    // The service is the supplier, has no links yet, and answers as it should. The person dials by hand.
    Upload();
    ~Upload() override;

    // Links a picture of that name in the image manager, which is open.
    void link(const std::string& picture);
    // From the image manager, or from the window when that is open: presses OK and logs in. The run is on its way then.
    void send(const std::string& password = "secret");
    void sendAgain();
    // All of it from a new host, with the picture a.jpg.
    void upload(const std::string& password = "secret");
    // Ends the host at the image manager.
    void leave();

    // A run that fails shows a message box, or the form with buttons of its own, which offers the settings or does not
    // and is left by Cancel. It says the text, and then the name of the file in which the server's answer was kept, if
    // it was: what that file holds is returned, "" without one. The row of the command shows the failure afterwards,
    // and the window can be used again.
    [[nodiscard]] std::string expectBox(const std::string& text);
    [[nodiscard]] std::string expectMessage(const std::string& text, bool offersSettings);
    void expectFailureShown();
    // The run goes through and closes the window.
    void expectCompleted();

    // The picture's link is the supplier's too, and nothing here is marked any more.
    void expectSent(const std::string& picture = "a.jpg") const;
    // It is marked, and so is the document.
    void expectStillToBeSent(const std::string& picture = "a.jpg") const;

    // A file of the supplier's data folder; "" when there is none.
    [[nodiscard]] static std::string supplierHas(const std::string& name = "images-1001.xml");

private:
    struct ErrorFile {
        std::string path;
        std::string bytes;
    };
    // The one file of the folder "errors", which is deleted.
    [[nodiscard]] ErrorFile takeErrorFile();
};

} // namespace end_to_end
