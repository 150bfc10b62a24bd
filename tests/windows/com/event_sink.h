// A host's sink of events, as a compiled host without the type library has it: a plain IDispatch.
#pragma once

#include "windows/com/adopt.h"
#include "windows/com/com_object.h"

#include <gtest/gtest.h>
#include <ocidl.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace com_test {

using Words = std::vector<std::string>;

// Writes down what it hears, its own name and the number of the event, and does what a test wants meanwhile.
class EventSink final : public windows::com::ComObject<IDispatch> {
public:
    // The arguments are in the order of automation: the last one first.
    using Handler = std::function<HRESULT(DISPID event, DISPPARAMS& arguments, EXCEPINFO& exception)>;

    EventSink(std::string name, Words& heard, Handler handler)
        : m_name(std::move(name)), m_heard(heard), m_handler(std::move(handler)) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID event, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT*,
                                     EXCEPINFO* exception, UINT*) override {
        EXPECT_EQ(flags, DISPATCH_METHOD);
        m_heard.push_back(m_name + std::to_string(event));
        return m_handler(event, *arguments, *exception);
    }

private:
    std::string m_name;
    Words& m_heard;
    Handler m_handler;
};

// A handler that only listens.
inline HRESULT listen(DISPID, DISPPARAMS&, EXCEPINFO&) {
    return S_OK;
}

// The cookie of a new sink.
inline DWORD connect(IConnectionPoint& point, std::string name, Words& heard, EventSink::Handler handler = listen) {
    const auto sink = windows::com::adopt(new EventSink(std::move(name), heard, std::move(handler)));
    DWORD cookie = 0;
    EXPECT_EQ(point.Advise(sink.Get(), &cookie), S_OK);
    return cookie;
}

} // namespace com_test
