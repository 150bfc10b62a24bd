# Libraries that ./setup has built or installed: the same sources with the same options on both targets.
find_package(LibXml2 REQUIRED)
# Another libxml2 on this machine has other options: encodings and the size limits would differ between the two targets.
if(NOT WIN32 AND NOT LIBXML2_LIBRARY MATCHES "/build/deps/")
    message(FATAL_ERROR "build/deps/native is missing: run ./setup (found ${LIBXML2_LIBRARY} instead)")
endif()

add_library(qvi_libxml2 INTERFACE)
target_link_libraries(qvi_libxml2 INTERFACE LibXml2::LibXml2)
target_compile_definitions(qvi_libxml2 INTERFACE LIBXML_STATIC)
if(WIN32)
    target_link_libraries(qvi_libxml2 INTERFACE ws2_32)
else()
    find_package(Threads REQUIRED)
    target_link_libraries(qvi_libxml2 INTERFACE Threads::Threads m)
endif()

# The cabinet decoder of the native build; on Windows the system's own library does its work.
if(NOT WIN32)
    find_path(QVI_LIBMSPACK_INCLUDE mspack.h REQUIRED)
    find_library(QVI_LIBMSPACK mspack REQUIRED)
    add_library(qvi_libmspack INTERFACE)
    target_include_directories(qvi_libmspack SYSTEM INTERFACE ${QVI_LIBMSPACK_INCLUDE})
    target_link_libraries(qvi_libmspack INTERFACE ${QVI_LIBMSPACK})
endif()
