# Hardens what release builds make: buffers that watch their bounds, a stack that ends in a guard,
# tables that are read-only once a program has started, code at random addresses. Debug builds and
# the sanitizers have checks of their own.
include(CheckCXXCompilerFlag)

set(flags "${CMAKE_C_FLAGS} ${CMAKE_CXX_FLAGS}")
if(NOT flags MATCHES "-fsanitize")
    set(release $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
    add_compile_options($<${release}:-fstack-protector-strong>)
    # A distribution's own choice stays. Tests stand in for functions of the C library by their names,
    # which these checks replace.
    if(NOT flags MATCHES "_FORTIFY_SOURCE" AND NOT MEDIACHECKD_TESTS)
        add_compile_options($<${release}:-U_FORTIFY_SOURCE> $<${release}:-D_FORTIFY_SOURCE=3>)
    endif()
    # Not every processor and compiler has these.
    foreach(option -fcf-protection -fstack-clash-protection)
        string(MAKE_C_IDENTIFIER "HAVE${option}" have)
        check_cxx_compiler_flag("-Werror ${option}" ${have})
        if(${have})
            add_compile_options($<${release}:${option}>)
        endif()
    endforeach()
    add_link_options($<${release}:-Wl,-z,relro,-z,now>)
endif()
