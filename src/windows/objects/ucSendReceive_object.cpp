#include "windows/objects/ucSendReceive_object.h"

#include "base/resume_next.h"
#include "entry/QVI_global.h"
#include "exchange/answer.h"
#include "windows/app.h"
#include "windows/com/dispatch_object.h"
#include "windows/embedding/picture_object.h"
#include "windows/objects/foreign_document.h"
#include "windows/objects/xml_document_object.h"

#include <utility>

namespace windows::com {
namespace {

using Microsoft::WRL::ComPtr;

bool toBool(VARIANT_BOOL flag) noexcept {
    return flag != VARIANT_FALSE;
}

// What an argument by reference stands for; Nothing where the caller gave no place.
IDispatch* valueOf(IDispatch* const* argument) noexcept {
    return argument == nullptr ? nullptr : *argument;
}

// The exchange has stamped the command; a host's own document gets the same stamp. What goes wrong with that is no
// failure of the exchange, as with the stamp itself: a document that only gives its text can be sent too.
void giveLastDate(const HostDocument& sent) {
    if (!sent.original) {
        return;
    }
    const xml::XmlNode command = exchange::firstElement(sent.document->documentElement());
    if (command.hasAttribute("lastdate")) {
        base::resumeNext(
            [&] { sent.original->setFirstElementAttribute("lastdate", command.getAttribute("lastdate")); });
    }
}

// For a window of the control, in which a routine may run on when the automation object has gone.
std::shared_ptr<ui::UserControl> keepingTheModule(std::shared_ptr<sendreceive::ucSendReceive> control) {
    struct Kept {
        ModuleUse module;
        std::shared_ptr<sendreceive::ucSendReceive> control;
    };
    ui::UserControl* const shown = control.get();
    const auto kept = std::make_shared<Kept>();
    kept->control = std::move(control);
    return {kept, shown};
}

void replace(BSTR& text, const std::string& utf8) {
    BSTR const fresh = newBstr(utf8);
    SysFreeString(std::exchange(text, fresh));
}

} // namespace

SendReceiveObject::SendReceiveObject()
    : SendReceiveObject(entry::sendReceiveServices(App::instance().environment()), App::instance().desktop()) {}

SendReceiveObject::SendReceiveObject(const sendreceive::Services& services, WindowsDesktop& desktop)
    : m_fileSystem(services.engine.fileSystem),
      m_control(sendreceive::ucSendReceive::create(services)),
      m_events(eventSource(), m_fileSystem),
      m_embedding(static_cast<::_ucSendReceive&>(*this), __uuidof(::ucSendReceive), keepingTheModule(m_control),
                  connectionPoint(), desktop) {
    // A host without an XML library of its own fills this one.
    const auto empty = std::make_shared<xml::XmlDocument>();
    m_domCommands = makeXmlDocument(empty, m_fileSystem);
    m_control->setDomCommands(empty);
    m_control->advise(m_events);
}

SendReceiveObject::~SendReceiveObject() {
    m_embedding.end();
    m_control->unadvise(m_events);
    closeConnections();
}

HRESULT SendReceiveObject::get_domCommands(IDispatch** value) noexcept {
    return give(value, [&] { return ComPtr<IDispatch>(m_domCommands); });
}

HRESULT SendReceiveObject::put_domCommands(IDispatch* value) noexcept {
    return run([&] {
        HostDocument given = fromHost(value);
        m_control->setDomCommands(std::move(given.document), std::move(given.original));
        m_domCommands = value;
    });
}

HRESULT SendReceiveObject::getObject(const base::ObjectRef& property, IDispatch** value) noexcept {
    return give(value, [&] { return toDispatch(property); });
}

HRESULT SendReceiveObject::putObject(base::ObjectRef& property, IDispatch* value) noexcept {
    return run([&] { property = toObjectRef(value); });
}

HRESULT SendReceiveObject::SetDownloadVisible(VARIANT_BOOL visible) noexcept {
    return run([&] { m_control->SetDownloadVisible(toBool(visible)); });
}

HRESULT SendReceiveObject::LoadfrmDial(VARIANT_BOOL dialMode, VARIANT_BOOL* value) noexcept {
    return give(value, [&] { return m_control->LoadfrmDial(toBool(dialMode)); });
}

HRESULT SendReceiveObject::DownloadFile(BSTR url, BSTR localFile, VARIANT_BOOL* value) noexcept {
    return give(value, [&] { return m_control->DownloadFile(fromBstr(url), fromBstr(localFile)); });
}

HRESULT SendReceiveObject::SendReceive(BSTR* url, BSTR method, IDispatch** results, IDispatch* request, IDispatch*,
                                       BSTR localFile, VARIANT_BOOL dontLoadResults, VARIANT_BOOL forceDownload,
                                       VARIANT_BOOL* value) noexcept {
    return give(value, [&] {
        if (url == nullptr || results == nullptr) {
            failNullPointer();
        }
        HostDocument answer = fromHost(*results);
        if (!answer.document) {
            answer.document = std::make_shared<xml::XmlDocument>();
        }
        const HostDocument sent = fromHost(request);
        std::string address = fromBstr(*url);
        const bool succeeded =
            m_control->SendReceive(address, fromBstr(method), answer.document, sent.document, fromBstr(localFile),
                                   toBool(dontLoadResults), toBool(forceDownload));
        giveLastDate(sent);
        replace(*url, address);
        if (answer.original) {
            answer.original->write(*answer.document);
        } else if (*results == nullptr) {
            *results = makeXmlDocument(answer.document, m_fileSystem).Detach();
        }
        return succeeded;
    });
}

HRESULT SendReceiveObject::LoadCommands() noexcept {
    return run([&] { m_control->LoadCommands(); });
}

HRESULT SendReceiveObject::SetMessage(BSTR text) noexcept {
    return run([&] { m_control->SetMessage(fromBstr(text)); });
}

HRESULT SendReceiveObject::SetProgressBar(LONG value) noexcept {
    return run([&] { m_control->SetProgressBar(value); });
}

HRESULT SendReceiveObject::SetProgressBarMax() noexcept {
    return run([&] { m_control->SetProgressBarMax(); });
}

HRESULT SendReceiveObject::SetProgressBarMinimum() noexcept {
    return run([&] { m_control->SetProgressBarMinimum(); });
}

HRESULT SendReceiveObject::DownloadUpgrade(IDispatch** doc, BSTR folderName, BSTR rootPath,
                                           VARIANT_BOOL* value) noexcept {
    return give(value, [&] {
        return m_control->DownloadUpgrade(fromHost(valueOf(doc)).document, fromBstr(folderName), fromBstr(rootPath));
    });
}

HRESULT SendReceiveObject::DisconnectFromInternet() noexcept {
    return run([&] { m_control->DisconnectFromInternet(); });
}

HRESULT SendReceiveObject::Setcolors() noexcept {
    return run([&] { m_control->Setcolors(); });
}

HRESULT SendReceiveObject::UserControl_SetImage(VARIANT picture) noexcept {
    return run([&] {
        ScopedVariant value;
        static_cast<void>(VariantCopyInd(&value.get(), &picture)); // what cannot be copied is no picture
        switch (V_VT(&value.get())) {
        case VT_BSTR: m_control->UserControl_SetImage(fromBstr(V_BSTR(&value.get()))); break;
        case VT_DISPATCH:
        case VT_UNKNOWN:
            m_control->UserControl_SetImage(
                pixelsOf(V_UNKNOWN(&value.get()), sendreceive::ucSendReceive::kPictureExtent));
            break;
        default: m_control->UserControl_SetImage(std::shared_ptr<const base::Picture>());
        }
    });
}

HRESULT SendReceiveObject::CheckForFileDownloads(IDispatch* results, VARIANT_BOOL doDownloads, BSTR dataFolder,
                                                 VARIANT_BOOL forceDownload, VARIANT_BOOL* value) noexcept {
    return give(value, [&] {
        return m_control->CheckForFileDownloads(fromHost(results).document, toBool(doDownloads), fromBstr(dataFolder),
                                                toBool(forceDownload));
    });
}

HRESULT SendReceiveObject::RunSetup(VARIANT) noexcept {
    return run([&] { m_control->RunSetup(); });
}

HRESULT SendReceiveObject::SetHTTPSettings() noexcept {
    return run([&] { m_control->SetHTTPSettings(); });
}

HRESULT SendReceiveObject::WriteSingleLog(BSTR text, VARIANT_BOOL restart) noexcept {
    return run([&] { m_control->WriteSingleLog(fromBstr(text), toBool(restart)); });
}

void* SendReceiveObject::find(REFIID iid) noexcept {
    void* const found = EventSourceObject::find(iid);
    return found != nullptr ? found : m_embedding.find(iid);
}

} // namespace windows::com
