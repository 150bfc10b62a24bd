// The error boundary: what an exception in the core looks like to a host.
#include "base/runtime_error.h"
#include "windows/com/automation_text.h"
#include "windows/com/error_boundary.h"

#include <gtest/gtest.h>
#include <wrl/client.h>

#include <new>
#include <stdexcept>
#include <string>

namespace com_test {
namespace {

using windows::com::Bstr;
using windows::com::guarded;

struct Report {
    HRESULT result = S_OK;
    std::string source;
    std::string description;
};

template <typename Body>
Report reportOf(Body&& body) {
    SetErrorInfo(0, nullptr);
    Report report;
    report.result = guarded(IID_IDispatch, body);
    Microsoft::WRL::ComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, &info) == S_OK) {
        Bstr source;
        Bstr description;
        GUID iid{};
        info->GetSource(source.out());
        info->GetDescription(description.out());
        info->GetGUID(&iid);
        EXPECT_EQ(iid, IID_IDispatch);
        report.source = source.text();
        report.description = description.text();
    }
    return report;
}

TEST(ErrorBoundary, EveryExceptionLeavesAsANumberWithItsWords) {
    using base::RuntimeError;
    struct Row {
        const char* name;
        void (*body)();
        HRESULT result;
        const char* source;
        const char* description;
    };
    const Row rows[] = {
        {"no error", [] {}, S_OK, "", ""},
        {"standard", [] { throw RuntimeError(75); }, static_cast<HRESULT>(0x800A004B), "QuorvantisImage",
         "Path/File access error"},
        {"largest", [] { throw RuntimeError(65535, "top"); }, static_cast<HRESULT>(0x800AFFFF), "QuorvantisImage",
         "top"},
        {"own words", [] { throw RuntimeError(35602, "clsX", "caf\xC3\xA9"); }, static_cast<HRESULT>(0x800A8B12),
         "clsX", "caf\xC3\xA9"},
        {"a result already", [] { throw RuntimeError(-2147219548, "HTTPS", "refused"); }, -2147219548, "HTTPS",
         "refused"},
        {"too large", [] { throw RuntimeError(65536, "odd"); }, static_cast<HRESULT>(0x800A0033), "QuorvantisImage",
         "odd"},
        {"zero", [] { throw RuntimeError(0, "odd"); }, static_cast<HRESULT>(0x800A0033), "QuorvantisImage", "odd"},
        {"memory", [] { throw std::bad_alloc(); }, static_cast<HRESULT>(0x800A0007), "QuorvantisImage",
         "Out of memory"},
        {"other", [] { throw std::out_of_range("bug"); }, static_cast<HRESULT>(0x800A0033), "QuorvantisImage",
         "Internal error"},
        {"not even an exception", [] { throw 42; }, static_cast<HRESULT>(0x800A0033), "QuorvantisImage",
         "Internal error"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Report report = reportOf(row.body);
        EXPECT_EQ(report.result, row.result);
        EXPECT_EQ(report.source, row.source);
        EXPECT_EQ(report.description, row.description);
    }
}

} // namespace
} // namespace com_test
