# Cross-compiles for 64-bit Windows; tests run in a 64-bit Wine prefix.
set(CMAKE_SYSTEM_PROCESSOR AMD64)
set(QVI_TRIPLE x86_64-w64-mingw32)
set(QVI_MANIFEST_ARCHITECTURE amd64)
set(QVI_WINEARCH win64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw_w64.cmake)
