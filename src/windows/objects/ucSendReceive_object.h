// sendreceive::ucSendReceive as hosts see it.
#pragma once

#include "sendreceive/ucSendReceive.h"
#include "windows/app.h"
#include "windows/com/event_source_object.h"
#include "windows/com/quorvantisimage.h"
#include "windows/embedding/control_embedding.h"
#include "windows/objects/ucSendReceive_events.h"

#include <memory>

namespace windows::com {

class SendReceiveObject final : public EventSourceObject<::_ucSendReceive, ::ucSendReceive, ::__ucSendReceive> {
public:
    SendReceiveObject();
    // `desktop` is for the control's windows: that of the services, unless those are for tests without any.
    explicit SendReceiveObject(const sendreceive::Services& services,
                               WindowsDesktop& desktop = App::instance().desktop());

    HRESULT STDMETHODCALLTYPE get_domCommands(IDispatch** value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_domCommands(IDispatch* value) noexcept override;
    HRESULT STDMETHODCALLTYPE putref_domCommands(IDispatch* value) noexcept override { return put_domCommands(value); }
    HRESULT STDMETHODCALLTYPE get_Globals(IDispatch** value) noexcept override {
        return getObject(m_control->session.Globals, value);
    }
    HRESULT STDMETHODCALLTYPE put_Globals(IDispatch* value) noexcept override {
        return putObject(m_control->session.Globals, value);
    }
    HRESULT STDMETHODCALLTYPE putref_Globals(IDispatch* value) noexcept override { return put_Globals(value); }
    HRESULT STDMETHODCALLTYPE get_sWebAddress(BSTR* value) noexcept override {
        return get(m_control->session.sWebAddress, value);
    }
    HRESULT STDMETHODCALLTYPE put_sWebAddress(BSTR value) noexcept override {
        return put(m_control->session.sWebAddress, value);
    }
    HRESULT STDMETHODCALLTYPE get_bLoginNotRequired(VARIANT_BOOL* value) noexcept override {
        return get(m_control->session.bLoginNotRequired, value);
    }
    HRESULT STDMETHODCALLTYPE put_bLoginNotRequired(VARIANT_BOOL value) noexcept override {
        return put(m_control->session.bLoginNotRequired, value);
    }
    HRESULT STDMETHODCALLTYPE get_gUsingAlternate(VARIANT_BOOL* value) noexcept override {
        return get(m_control->session.gUsingAlternate, value);
    }
    HRESULT STDMETHODCALLTYPE put_gUsingAlternate(VARIANT_BOOL value) noexcept override {
        return put(m_control->session.gUsingAlternate, value);
    }
    HRESULT STDMETHODCALLTYPE get_Account(IDispatch** value) noexcept override {
        return getObject(m_control->session.Account, value);
    }
    HRESULT STDMETHODCALLTYPE put_Account(IDispatch* value) noexcept override {
        return putObject(m_control->session.Account, value);
    }
    HRESULT STDMETHODCALLTYPE putref_Account(IDispatch* value) noexcept override { return put_Account(value); }

    HRESULT STDMETHODCALLTYPE SetDownloadVisible(VARIANT_BOOL visible) noexcept override;
    HRESULT STDMETHODCALLTYPE LoadfrmDial(VARIANT_BOOL dialMode, VARIANT_BOOL* value) noexcept override;
    HRESULT STDMETHODCALLTYPE DownloadFile(BSTR url, BSTR localFile, VARIANT_BOOL* value) noexcept override;
    HRESULT STDMETHODCALLTYPE SendReceive(BSTR* url, BSTR method, IDispatch** results, IDispatch* request,
                                          IDispatch* node, BSTR localFile, VARIANT_BOOL dontLoadResults,
                                          VARIANT_BOOL forceDownload, VARIANT_BOOL* value) noexcept override;
    HRESULT STDMETHODCALLTYPE LoadCommands() noexcept override;
    HRESULT STDMETHODCALLTYPE SetMessage(BSTR text) noexcept override;
    HRESULT STDMETHODCALLTYPE SetProgressBar(LONG value) noexcept override;
    HRESULT STDMETHODCALLTYPE SetProgressBarMax() noexcept override;
    HRESULT STDMETHODCALLTYPE SetProgressBarMinimum() noexcept override;
    HRESULT STDMETHODCALLTYPE DownloadUpgrade(IDispatch** doc, BSTR folderName, BSTR rootPath,
                                              VARIANT_BOOL* value) noexcept override;
    HRESULT STDMETHODCALLTYPE DisconnectFromInternet() noexcept override;
    HRESULT STDMETHODCALLTYPE Setcolors() noexcept override;
    HRESULT STDMETHODCALLTYPE UserControl_SetImage(VARIANT picture) noexcept override;
    HRESULT STDMETHODCALLTYPE CheckForFileDownloads(IDispatch* results, VARIANT_BOOL doDownloads, BSTR dataFolder,
                                                    VARIANT_BOOL forceDownload, VARIANT_BOOL* value) noexcept override;
    HRESULT STDMETHODCALLTYPE RunSetup(VARIANT argument) noexcept override;
    HRESULT STDMETHODCALLTYPE SetHTTPSettings() noexcept override;
    HRESULT STDMETHODCALLTYPE WriteSingleLog(BSTR text, VARIANT_BOOL restart) noexcept override;

    // For a window that shows the control, and for tests.
    [[nodiscard]] sendreceive::ucSendReceive& control() const noexcept { return *m_control; }

protected:
    [[nodiscard]] void* find(REFIID iid) noexcept override;
    [[nodiscard]] std::shared_ptr<void> heldByCalls() override { return m_embedding.use(); }

private:
    ~SendReceiveObject() override;

    HRESULT getObject(const base::ObjectRef& property, IDispatch** value) noexcept;
    HRESULT putObject(base::ObjectRef& property, IDispatch* value) noexcept;

    ports::FileSystem& m_fileSystem;
    std::shared_ptr<sendreceive::ucSendReceive> m_control;
    Microsoft::WRL::ComPtr<IDispatch> m_domCommands; // the very object that the host gave
    SendReceiveEvents m_events;
    ControlEmbedding m_embedding;
};

} // namespace windows::com
