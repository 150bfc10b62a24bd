// The composition root: makes the services of this machine and hands them to the entry objects.
#pragma once

#include "entry/environment.h"
#include "windows/adapters/ansi_code_page.h"
#include "windows/adapters/local_clock.h"
#include "windows/adapters/memory_status.h"
#include "windows/adapters/registry_settings.h"
#include "windows/adapters/setup_cabinet_api.h"
#include "windows/adapters/user_data_protection.h"
#include "windows/adapters/user_locale.h"
#include "windows/adapters/wic_picture_decoder.h"
#include "windows/adapters/windows_file_system.h"
#include "windows/adapters/windows_programs.h"
#include "windows/base/module.h"
#include "windows/forms/windows_desktop.h"
#include "windows/network/windows_network.h"

namespace windows {

// One per process, made when the first automation object needs it and destroyed when the DLL is unloaded. Nothing in it
// may hold a COM object or a window then: at that time COM may be gone.
class App {
public:
    App(const App&) = delete;
    App& operator=(const App&) = delete;

    [[nodiscard]] static App& instance();

    [[nodiscard]] entry::Environment& environment() noexcept { return m_environment; }
    [[nodiscard]] WindowsDesktop& desktop() noexcept { return m_desktop; }

private:
    App() = default;
    ~App() = default;

    WindowsDesktop m_desktop{moduleHandle()};
    WindowsFileSystem m_fileSystem;
    RegistrySettings m_settings;
    LocalClock m_clock;
    WicPictureDecoder m_pictures;
    AnsiCodePage m_ansi;
    UserLocale m_locale;
    UserDataProtection m_protection;
    WindowsNetwork m_network;
    WindowsPrograms m_programs;
    SetupCabinetApi m_cabinetApi;
    MemoryStatus m_memory;
    entry::Environment m_environment{m_desktop,    m_fileSystem, m_settings,    m_clock,   m_pictures,
                                     m_ansi,       m_locale,     m_protection,  m_network, m_programs,
                                     m_cabinetApi, m_memory,     moduleFolder()};
};

} // namespace windows
