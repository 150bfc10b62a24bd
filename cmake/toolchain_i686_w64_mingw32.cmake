# Cross-compiles for 32-bit Windows; tests run in a 32-bit Wine prefix.
set(CMAKE_SYSTEM_PROCESSOR x86)
set(QVI_TRIPLE i686-w64-mingw32)
set(QVI_MANIFEST_ARCHITECTURE x86)
set(QVI_WINEARCH win32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw_w64.cmake)
