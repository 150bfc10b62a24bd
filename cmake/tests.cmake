# GoogleTest from the system's sources, built with each target's own compiler, and the one way to add a test.
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)

# qvi_add_test(NAME SOURCES file... [LIBS target...] [INSIDE command...]): one program per folder of tests, one CTest entry per program.
# INSIDE is a command that is given the command that runs the program, and runs it among what its tests need.
function(qvi_add_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBS;INSIDE" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LIBS} qvi_fakes qvi_core qvi_flags GTest::gmock_main GTest::gmock)
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    if(ARG_INSIDE)
        add_test(NAME ${name} COMMAND ${ARG_INSIDE} ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:${name}>)
    else()
        add_test(NAME ${name} COMMAND ${name})
    endif()
    set_tests_properties(${name} PROPERTIES TIMEOUT 120)
endfunction()
