// The send/receive control: a list of commands, the person's OK and Cancel, and how the exchange gets on. A facade: its
// parts (command list, account dates, HTTP settings, trace) are files of their own.
//
// It is the same object on the component's own form, in a host's window, and without any window.
#pragma once

#include "base/picture.h"
#include "base/variant.h"
#include "connection/frmDial.h"
#include "connection/https_control.h"
#include "exchange/account_dates.h"
#include "exchange/services.h"
#include "host/host_globals.h"
#include "sendreceive/events.h"
#include "sendreceive/host_command_document.h"
#include "ui/controls.h"
#include "ui/list_view.h"
#include "ui/user_control.h"
#include "xml/xml_document.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace exchange {
struct ExchangeRequest;
}

namespace sendreceive {

class ucSendReceive : public ui::UserControl, public std::enable_shared_from_this<ucSendReceive> {
public:
    // Shared, because a run holds the control: a handler may close its window and let go of it meanwhile.
    [[nodiscard]] static std::shared_ptr<ucSendReceive> create(const exchange::Services& services);

    // The widest and highest picture worth keeping; pixels.
    static constexpr int kPictureExtent = 512;

    // What a host sets before LoadCommands.
    base::ObjectRef Globals; // null: none given
    base::ObjectRef Account; // null: the globals object is asked for branch and account
    std::string sWebAddress;
    bool bLoginNotRequired = false;
    bool gUsingAlternate = false;
    // Cancel was pressed since the run, or the exchange outside of one, began.
    bool gCancelled = false;
    // A set-up program was fetched and is to run when the run has ended; its path, which outlives that.
    bool bMustRunSetup = false;
    std::string MustRunSetupName;

    // Null: none given.
    [[nodiscard]] const std::shared_ptr<xml::XmlDocument>& domCommands() const noexcept { return m_commands; }
    // `original`: a host's own document of which `document` is a copy; null when there is none.
    void setDomCommands(std::shared_ptr<xml::XmlDocument> document, std::unique_ptr<HostCommandDocument> original = {});

    // The public methods. Each shows what goes wrong in it in a box, "Error in <name>:" and the description, except
    // DownloadUpgrade and RunSetup, which raise it.
    void SetDownloadVisible(bool visible);
    // Shows the connection settings: the dial-up page when something is to be dialled. True unless the user cancels.
    [[nodiscard]] bool LoadfrmDial(bool dialMode);
    // Asks the server for nothing, and so always reports an empty answer; hosts rely on its being True. Use
    // SendReceive with "GET" to fetch a file.
    [[nodiscard]] bool DownloadFile(const std::string& url, const std::string& localFile);
    // One exchange, with all the dialogues that a failure leads to. `method` is "POST" or "GET"; `url` may change to
    // the alternate address, `results` receives the answer; `request` may be null. True when it succeeded.
    // While another one is on its way it only leaves a trace.
    [[nodiscard]] bool SendReceive(std::string& url, const std::string& method,
                                   const std::shared_ptr<xml::XmlDocument>& results,
                                   const std::shared_ptr<xml::XmlDocument>& request, const std::string& localFile,
                                   bool dontLoadResults, bool forceDownload);
    // Fills the list from domCommands. During a run it only leaves a trace.
    void LoadCommands();
    // The status line; also traced. Handles waiting messages, as the three below do.
    void SetMessage(const std::string& text);
    // The bar to value / announced content length.
    void SetProgressBar(std::int32_t value);
    void SetProgressBarMax();
    void SetProgressBarMinimum();
    // Fetches all files of an answer with an upgrade command into the folder rootPath & folderName & "\", which is made
    // when it is not there; its own folder is (see upgrade.h). True when the last of them was fetched. While an
    // exchange is on its way it only leaves a trace.
    [[nodiscard]] bool DownloadUpgrade(const std::shared_ptr<xml::XmlDocument>& results, const std::string& folderName,
                                       const std::string& rootPath);
    // Hangs up what was dialled here, and closes the connection settings.
    void DisconnectFromInternet();
    // The progress frame and the buttons in the colours that the host names.
    void Setcolors();
    // Null clears the picture, as does a file that is no picture.
    void UserControl_SetImage(std::shared_ptr<const base::Picture> picture);
    void UserControl_SetImage(const std::string& file);
    // Fetches the files that an answer names and puts them where they belong (see file_downloads.h); an upgrade's go
    // through DownloadUpgrade. `dataFolder` with its final backslash; `forceDownload`: also those that are here
    // already. True unless one that is needed could not be had. While an exchange is on its way it only leaves a trace.
    [[nodiscard]] bool CheckForFileDownloads(const std::shared_ptr<xml::XmlDocument>& results, bool doDownloads,
                                             const std::string& dataFolder, bool forceDownload);
    // Tells the user of the upgrade and starts the set-up program that was fetched, else the one in the current folder,
    // with the host's gBusyWithUpgrade set. Raises 70 for a program that is not signed as the host requires, and 438
    // for a host without that property; nothing is started then.
    void RunSetup();
    // Works out the transport's settings from the user's; logs what is chosen.
    void SetHTTPSettings();
    [[nodiscard]] const ports::HttpSettings& httpSettings() { return https().settings; }
    // One line into the trace file of the data folder; `restart` begins the file anew. Without that folder nothing
    // happens.
    void WriteSingleLog(const std::string& text, bool restart);

    // Listeners are told in the order in which they joined. Not owned: one leaves before it goes.
    void advise(Events& listener);
    void unadvise(Events& listener);

    // What Cancel, the cancel key and a window's close box do.
    void cmdCancel_Click();

    // What the parts of the control ask of it.
    [[nodiscard]] std::string GetLastDate(const std::string& name, const std::string& accountSpecific);
    void beginTransfer();
    void announceLength(std::string_view bytes); // a header's value
    void showTransfer(std::int64_t bytesSoFar);
    void askForOptions(const std::string& url);
    void askToRegister(const std::string& file);
    void askToUnregister(const std::string& file);
    // As CheckForFileDownloads, inside of an exchange.
    bool checkFiles(const std::shared_ptr<xml::XmlDocument>& results, bool doDownloads, const std::string& dataFolder,
                    bool forceDownload);
    struct FetchedFile {
        bool complete = false;
        std::optional<std::int64_t> announcedLength; // bytes, by what the server said
    };
    // An exchange of its own for a file that the service names; the folders of `target` are made.
    [[nodiscard]] FetchedFile fetchFile(const std::string& webname, const std::string& target);
    void setUpLater(const std::string& program);

    [[nodiscard]] ui::Button* defaultButton() noexcept override { return &cmdOK; }
    void stop() noexcept override;

    ui::ListView lvCommands;
    ui::CheckBox cAlternate{*this, "cAlternate"};
    ui::CheckBox cDownloadFiles{*this, "cDownloadFiles"};
    ui::Label lProgress{*this, "lProgress"};
    ui::FramedBar barProgress{*this, "barProgress"};
    ui::PictureBox picImage{*this, "picImage"};
    ui::Button cmdOK{*this, "cmdOK"};
    ui::Button cmdCancel{*this, "cmdCancel"};

protected:
    void UserControl_KeyPress(char16_t& key) override;

private:
    explicit ucSendReceive(const exchange::Services& services);

    void cmdOK_Click();
    void lvCommands_ItemCheck(std::size_t row);

    // ucSendReceive_run.cpp: from the press of OK to the end of the run.
    enum class RunEnd : std::uint8_t { Complete, Closed, Failed, Stopped }; // Closed: by an upload, complete as well
    struct Command;
    void run();
    [[nodiscard]] bool logIn(); // false: the person gave up
    void writePassword(const std::string& password, const std::string& newPassword);
    void setRootAttribute(std::string_view name, const std::string& value);
    [[nodiscard]] RunEnd sendCommands();
    [[nodiscard]] bool wanted(const Command& command) const;
    [[nodiscard]] RunEnd sendCommand(Command& command);
    void startCommand(Command& command);
    [[nodiscard]] bool sendAndReceive(Command& command);
    [[nodiscard]] bool takeRedo(Command& command);
    void completeCommand(Command& command);
    void setCommandAttribute(Command& command, std::string_view name, const std::string& value);
    void setStatus(const Command& command, std::string_view status);
    void offerToHangUp();
    void setBusy(bool busy);

    // SendReceive, which shows what goes wrong.
    [[nodiscard]] bool exchange(const exchange::ExchangeRequest& request);
    void fire(const std::function<void(Events&)>& event);
    // Runs the body unless an exchange is on its way: then it leaves a trace.
    void exclusively(std::string_view routine, const std::function<void()>& body);
    bool downloadUpgrade(const xml::XmlDocument& results, const std::string& workingFolder);
    void runSetupIfDue();
    // The public methods' error handler.
    bool reportErrors(std::string_view routine, const std::function<void()>& body);
    [[nodiscard]] host::HostGlobals globals() const;
    [[nodiscard]] connection::HttpsControl& https();
    [[nodiscard]] ports::Dialer& dialer();
    [[nodiscard]] exchange::AccountDates accountDates(const host::HostGlobals& host);

    exchange::Services m_services;
    std::shared_ptr<xml::XmlDocument> m_commands;
    std::unique_ptr<HostCommandDocument> m_hostCommands;
    std::vector<Events*> m_listeners;
    std::unique_ptr<connection::HttpsControl> m_https; // made when it is needed
    std::unique_ptr<ports::Dialer> m_dialer;           // likewise; it outlives the form that dials
    connection::frmDial* m_dialForm = nullptr;         // while it is shown
    std::shared_ptr<xml::XmlDocument> m_sendCommands;  // one command at a time
    bool m_forceDownload = false;
    std::int64_t m_announcedLength = 0; // 0: none
    bool m_busy = false;                // a run is on its way
    bool m_exchanging = false;          // an exchange is, with all that belongs to it
};

} // namespace sendreceive
