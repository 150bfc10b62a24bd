// The send/receive control: a list of commands, the person's OK and Cancel, and how the exchange gets on. The work
// itself is the engine's (exchange/); the control shows it, and answers its questions with dialogs.
//
// It is the same object on the component's own form, in a host's window, and without any window.
#pragma once

#include "base/picture.h"
#include "connection/frmDial.h"
#include "exchange/engine.h"
#include "sendreceive/events.h"
#include "sendreceive/services.h"
#include "ui/controls.h"
#include "ui/list_view.h"
#include "ui/user_control.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace sendreceive {

class ucSendReceive : public ui::UserControl,
                      public std::enable_shared_from_this<ucSendReceive>,
                      private exchange::Dialogues,
                      private exchange::RunObserver {
public:
    // Shared, because a run holds the control: a handler may close its window and let go of it meanwhile.
    [[nodiscard]] static std::shared_ptr<ucSendReceive> create(const Services& services);

    // The widest and highest picture worth keeping; pixels.
    static constexpr int kPictureExtent = 512;

    // What a host sets before LoadCommands, and reads.
    exchange::Session session;

    // Null: none given.
    [[nodiscard]] std::shared_ptr<xml::XmlDocument> domCommands() const noexcept;
    // `original`: a host's own document of which `document` is a copy; null when there is none.
    void setDomCommands(std::shared_ptr<xml::XmlDocument> document,
                        std::unique_ptr<exchange::HostCommandDocument> original = {});

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
    // Into the folder rootPath & folderName & "\"; see exchange::Engine, as for the three below.
    [[nodiscard]] bool DownloadUpgrade(const std::shared_ptr<xml::XmlDocument>& results, const std::string& folderName,
                                       const std::string& rootPath);
    [[nodiscard]] bool CheckForFileDownloads(const std::shared_ptr<xml::XmlDocument>& results, bool doDownloads,
                                             const std::string& dataFolder, bool forceDownload);
    void RunSetup();
    void SetHTTPSettings() { m_engine.SetHTTPSettings(); }
    [[nodiscard]] const ports::HttpSettings& httpSettings() { return m_engine.httpSettings(); }
    // Hangs up what was dialled here, and closes the connection settings.
    void DisconnectFromInternet();
    // The progress frame and the buttons in the colours that the host names.
    void Setcolors();
    // Null clears the picture, as does a file that is no picture.
    void UserControl_SetImage(std::shared_ptr<const base::Picture> picture);
    void UserControl_SetImage(const std::string& file);
    // One line into the trace file of the data folder; `restart` begins the file anew. Without that folder nothing
    // happens.
    void WriteSingleLog(const std::string& text, bool restart);

    // Listeners are told in the order in which they joined. Not owned: one leaves before it goes.
    void advise(Events& listener);
    void unadvise(Events& listener);

    // What Cancel, the cancel key and a window's close box do.
    void cmdCancel_Click();
    void stop() noexcept override { m_engine.cancel(); }
    [[nodiscard]] ui::Button* defaultButton() noexcept override { return &cmdOK; }

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
    explicit ucSendReceive(const Services& services);

    void cmdOK_Click();
    void cAlternate_Click() { session.bAlternate = cAlternate.checked(); }
    void cDownloadFiles_Click() { session.bDownloadFiles = !cDownloadFiles.checked(); }
    void lvCommands_ItemCheck(std::size_t row);

    // ucSendReceive_dialogues.cpp: the engine's questions, put to the person.
    using Next = exchange::Dialogues::Next;
    void tell(const std::string& text) override;
    void report(std::string_view routine, const base::RuntimeError& error) override;
    [[nodiscard]] std::optional<exchange::Login> logIn() override;
    [[nodiscard]] bool useAlternateAddress() override;
    [[nodiscard]] Next afterFailure(const exchange::Failure& failure) override;
    [[nodiscard]] bool dial() override { return LoadfrmDial(true); }
    void disconnect() override { DisconnectFromInternet(); }
    void offerToDisconnect() override;
    void announceSetUp() override;
    void setUpStarts() override { closeConnectionSettings(); }
    void closeConnectionSettings();

    // ucSendReceive_appearance.cpp: how the engine gets on, shown and told to the listeners.
    void trace(const std::string& line) override { WriteSingleLog(line, false); }
    void beginTrace(const std::string& line) override { WriteSingleLog(line, true); }
    void status(const std::string& text) override { SetMessage(text); }
    void transfer(const exchange::Transfer& now) override;
    void idle() override { m_services.desktop.doEvents(); }
    void replacingLibrary(const std::string& path) override;
    void libraryPlaced(const std::string& path) override;
    void commandStarts(const std::string& name, std::shared_ptr<xml::XmlDocument>& request) override;
    void commandAnswered(const std::string& name, const xml::XmlNode& command,
                         const std::shared_ptr<xml::XmlDocument>& results) override;
    void runCompleted() override;
    void runStateChanged(const exchange::RunState& state) override;
    void setBusy(bool busy);

    void fire(const std::function<void(Events&)>& event);
    bool reportErrors(std::string_view routine, const std::function<void()>& body);
    [[nodiscard]] ports::Dialer& dialer();

    Services m_services;
    std::shared_ptr<exchange::Commands> m_commands;
    std::vector<Events*> m_listeners;
    std::unique_ptr<ports::Dialer> m_dialer;   // made when it is needed; it outlives the form that dials
    connection::frmDial* m_dialForm = nullptr; // while it is shown
    std::int64_t m_announcedLength = 0;        // bytes; 0: none
    exchange::Engine m_engine{m_services.engine, session, *this, *this};
};

} // namespace sendreceive
