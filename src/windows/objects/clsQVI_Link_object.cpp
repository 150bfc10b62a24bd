#include "windows/objects/clsQVI_Link_object.h"

#include "windows/app.h"

namespace windows::com {

LinkObject::LinkObject() : m_link(App::instance().environment()) {}

HRESULT LinkObject::ShowForm() noexcept {
    return run([this] {
        const WindowsDesktop::Ownerless form(App::instance().desktop());
        m_link.ShowForm();
    });
}

HRESULT LinkObject::ShowFormSendReceive() noexcept {
    return run([this] {
        const WindowsDesktop::Ownerless form(App::instance().desktop());
        m_link.ShowFormSendReceive();
    });
}

} // namespace windows::com
