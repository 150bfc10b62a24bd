# qvi_add_fuzz_target(NAME SOURCES file... [LIBS target...]): one libFuzzer program, build/fuzz/bin/NAME; its seeds are in fuzz/corpus/NAME.
# ./test runs every program of that folder for a few seconds.
function(qvi_add_fuzz_target name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LIBS} qvi_core qvi_flags)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
endfunction()
