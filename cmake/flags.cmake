# One INTERFACE target carries the language level, the warnings and the platform defines; every target links it.
add_library(qvi_flags INTERFACE)
target_compile_features(qvi_flags INTERFACE cxx_std_20)
target_compile_options(qvi_flags INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
target_include_directories(qvi_flags INTERFACE ${CMAKE_SOURCE_DIR}/src)

if(WIN32)
    # Windows 7 is the oldest system the DLL runs on.
    target_compile_definitions(qvi_flags INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN WINVER=0x0601
                                                   _WIN32_WINNT=0x0601)
    target_compile_options(qvi_flags INTERFACE -ffunction-sections -fdata-sections)
    # No mingw DLL may be needed beside ours; --no-insert-timestamp keeps two builds of one source identical.
    target_link_options(qvi_flags INTERFACE -static -Wl,--gc-sections -Wl,--no-insert-timestamp
                                            $<$<CONFIG:MinSizeRel>:-s>)
endif()

if(QVI_SANITIZE)
    target_compile_options(qvi_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                               -fno-omit-frame-pointer)
    target_link_options(qvi_flags INTERFACE -fsanitize=address,undefined)
endif()

if(QVI_BUILD_FUZZ)
    # Coverage feedback for the library under test; only the fuzz targets themselves bring in libFuzzer's main().
    target_compile_options(qvi_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
