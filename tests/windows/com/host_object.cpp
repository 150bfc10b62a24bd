#include "windows/com/host_object.h"

#include "base/runtime_error.h"
#include "windows/com/adopt.h"
#include "windows/com/automation_text.h"
#include "windows/com/variant_conversion.h"

#include <activscp.h>

#include <algorithm>
#include <atomic>

namespace com_test {
namespace {

using Microsoft::WRL::ComPtr;
namespace com = windows::com;

HRESULT STDAPICALLTYPE fillIn(EXCEPINFO* exception) {
    exception->bstrSource = com::newBstr("Host");
    exception->bstrDescription = com::newBstr("Host says no");
    exception->pfnDeferredFillIn = nullptr;
    return S_OK;
}

class HostObject final : public IDispatch {
public:
    HostObject(std::shared_ptr<fakes::FakeLateBound> fake, std::vector<std::wstring> members, Reporting reporting)
        : m_fake(std::move(fake)), m_members(std::move(members)), m_reporting(reporting) {}
    virtual ~HostObject() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        const bool known = iid == IID_IUnknown || iid == IID_IDispatch;
        *object = known ? static_cast<IDispatch*>(this) : nullptr;
        if (known) {
            AddRef();
        }
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_references;
        if (left == 0) {
            delete this;
        }
        return left;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        const auto found =
            std::ranges::find_if(m_members, [&](const std::wstring& m) { return lstrcmpiW(m.c_str(), names[0]) == 0; });
        ids[0] = found == m_members.end() ? DISPID_UNKNOWN : static_cast<DISPID>(found - m_members.begin());
        return found == m_members.end() ? DISP_E_UNKNOWNNAME : S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                     EXCEPINFO* exception, UINT*) override {
        const std::string name = com::Bstr(toUtf8(m_members[static_cast<std::size_t>(id)])).text();
        try {
            std::vector<base::Variant> arguments;
            for (UINT i = parameters->cArgs; i > 0; --i) {
                arguments.push_back(com::fromVariant(parameters->rgvarg[i - 1]));
            }
            if ((flags & DISPATCH_PROPERTYPUTREF) != 0) {
                return DISP_E_MEMBERNOTFOUND; // as an object does that takes values only
            }
            com::ScopedVariant value;
            if ((flags & DISPATCH_PROPERTYPUT) != 0) {
                m_fake->put(name, arguments.at(0));
            } else {
                const bool isMethod = (flags & DISPATCH_METHOD) != 0;
                com::toVariant(isMethod ? m_fake->call(name, arguments) : m_fake->get(name), value);
                *result = value.release();
            }
            return S_OK;
        } catch (const base::RuntimeError& error) {
            if (error.number() == base::error::kNoSuchMember) {
                return DISP_E_MEMBERNOTFOUND;
            }
            exception->wCode = static_cast<WORD>(error.number());
            if (m_reporting == Reporting::Deferred) {
                exception->pfnDeferredFillIn = fillIn;
            } else {
                fillIn(exception);
            }
            return DISP_E_EXCEPTION;
        }
    }

private:
    static std::string toUtf8(const std::wstring& text) { return {text.begin(), text.end()}; } // ASCII names

    std::atomic<ULONG> m_references = 1;
    std::shared_ptr<fakes::FakeLateBound> m_fake;
    std::vector<std::wstring> m_members;
    Reporting m_reporting;
};

constexpr CLSID kJScript = {0xf414c260, 0x6ac0, 0x11cf, {0xb6, 0xd1, 0x00, 0xaa, 0x00, 0xbb, 0xbb, 0x58}};

class Site final : public IActiveScriptSite {
public:
    explicit Site(IDispatch* host) : m_host(host) {}
    virtual ~Site() = default;

    // Lives on the stack of a test's engine: not counted.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        const bool known = iid == IID_IUnknown || iid == IID_IActiveScriptSite;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetLCID(LCID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR, DWORD mask, IUnknown** item, ITypeInfo**) override {
        if ((mask & SCRIPTINFO_IUNKNOWN) == 0 || !m_host) {
            return TYPE_E_ELEMENTNOTFOUND;
        }
        *item = m_host.Get();
        (*item)->AddRef();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }

private:
    ComPtr<IDispatch> m_host;
};

} // namespace

ComPtr<IDispatch> makeHostObject(std::shared_ptr<fakes::FakeLateBound> fake, std::vector<std::wstring> members,
                                 Reporting reporting) {
    return com::adopt<IDispatch>(new HostObject(std::move(fake), std::move(members), reporting));
}

struct JScript::Engine {
    explicit Engine(IDispatch* host) : site(host) {}
    Site site;
    ComPtr<IActiveScript> script;
    ComPtr<IActiveScriptParse> parser;
};

JScript::JScript(IDispatch* host) : m_engine(std::make_unique<Engine>(host)) {
    CoCreateInstance(kJScript, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&m_engine->script));
    m_engine->script.As(&m_engine->parser);
    m_engine->parser->InitNew();
    m_engine->script->SetScriptSite(&m_engine->site);
    m_engine->script->AddNamedItem(L"host", SCRIPTITEM_ISVISIBLE);
    m_engine->script->SetScriptState(SCRIPTSTATE_STARTED);
}

JScript::~JScript() {
    m_engine->script->Close();
    m_engine->parser.Reset();
    m_engine->script.Reset();
}

VARIANT JScript::evaluate(const std::wstring& expression) {
    VARIANT value;
    VariantInit(&value);
    const HRESULT result = m_engine->parser->ParseScriptText(expression.c_str(), nullptr, nullptr, nullptr, 0, 0,
                                                             SCRIPTTEXT_ISEXPRESSION, &value, nullptr);
    if (FAILED(result)) {
        VariantClear(&value);
        V_VT(&value) = VT_ERROR;
        V_ERROR(&value) = result;
    }
    return value;
}

ComPtr<IDispatch> JScript::object(const std::wstring& expression) {
    VARIANT value = evaluate(expression);
    ComPtr<IDispatch> result = V_VT(&value) == VT_DISPATCH ? V_DISPATCH(&value) : nullptr;
    VariantClear(&value);
    return result;
}

} // namespace com_test
