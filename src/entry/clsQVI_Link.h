// The class that hosts create: carries the host's values in, opens the image manager or the send/receive window.
#pragma once

#include <string>

namespace images {
class frmQVI_Images;
}

namespace entry {

struct Environment;

class clsQVI_Link {
public:
    // `environment` outlives the object.
    explicit clsQVI_Link(Environment& environment) : m_environment(environment) {}

    std::string ProductCode; // the product selected in the host
    std::string ImagesFile;  // the picture that the host links to it at present
    // Results of ShowForm. The image manager never fills them (it records changes in the link documents), so the host
    // reads false and "" after every call; they stay because hosts read them.
    bool DeleteLink = false;
    std::string NewImageFile;
    std::string gQuorVantisPath; // data folder with its final backslash; a missing one is not added
    std::string gWebAddress;
    std::string gProfileNumber;
    std::string gSettingString;

    // Shows the image manager modally and returns when it closes. Every call starts with a fresh form. What a handler
    // of the form raises comes out here, with the results left as they were. Raises 400, before copying anything,
    // while a form of the component is on screen, on any thread.
    void ShowForm();

    // Shows the send/receive window modally. gSettingString is not handed on along this path: what is
    // changed in the connection settings then is not kept, and the form says so. Raises as
    // ShowForm does.
    void ShowFormSendReceive();

private:
    images::frmQVI_Images& fillImageManager();

    Environment& m_environment;
};

} // namespace entry
