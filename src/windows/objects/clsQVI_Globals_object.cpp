#include "windows/objects/clsQVI_Globals_object.h"

#include "base/resume_next.h"
#include "windows/com/variant_conversion.h"

namespace windows::com {

HRESULT GlobalsObject::GetValue(VARIANT* i, VARIANT* value) noexcept {
    return run([&] {
        VARIANT& result = target(value);
        if (i == nullptr) {
            failNullPointer();
        }
        // A name that the core has no type for is a name like any other that finds nothing.
        const base::Variant name = base::resumeNext([&] { return fromVariant(*i); }).value_or(base::Empty{});
        ScopedVariant found;
        toVariant(m_globals.GetValue(name), found);
        result = found.release();
    });
}

} // namespace windows::com
