# Adds a library of the system in two forms of the same objects: NAME, static, and NAME_shared, whose
# file exports the names in the linker's version script NAME.map and nothing else. Both carry the
# folder include/, which is installed as it stands.
#   mediacheckd_library(NAME SOURCES file... [PUBLIC target...] [PRIVATE target...]
#                       [SHARED_ONLY target...] [DESCRIPTION text])
# SHARED_ONLY: what the shared form links besides; who links the static one chooses it. With a
# description, the library has a pkg-config file, mediacheckd-NAME.pc.
# A program in a build tree or of an installed package links mediacheckd::NAME, the shared form, or
# mediacheckd::NAME_static.
function(mediacheckd_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "DESCRIPTION" "SOURCES;PUBLIC;PRIVATE;SHARED_ONLY")
    set(include "")
    if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/include)
        set(include $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/include>)
        install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
    endif()

    # Public headers show time_t and timespec: 64 bits wide everywhere.
    set(wide _FILE_OFFSET_BITS=64 _TIME_BITS=64)

    set(objects ${name}_objects)
    add_library(${objects} OBJECT ${arg_SOURCES})
    set_target_properties(${objects} PROPERTIES POSITION_INDEPENDENT_CODE ON)
    # A component that defines one of these names again takes nothing over inside the library.
    target_compile_options(${objects} PRIVATE -fno-semantic-interposition)
    target_compile_definitions(${objects} PUBLIC ${wide})
    target_include_directories(${objects} PUBLIC ${include})
    target_link_libraries(${objects} PUBLIC ${arg_PUBLIC} PRIVATE ${arg_PRIVATE})

    add_library(${name} STATIC $<TARGET_OBJECTS:${objects}>)
    set_target_properties(${name} PROPERTIES EXPORT_NAME ${name}_static)
    # A program in C that links the archive links the C++ library without knowing of it; one in C++
    # chooses the form.
    target_link_libraries(${name} PUBLIC ${arg_PUBLIC}
        PRIVATE ${arg_PRIVATE} $<$<NOT:$<LINK_LANGUAGE:CXX>>:stdc++> m)
    add_library(mediacheckd::${name}_static ALIAS ${name})

    set(shared ${name}_shared)
    add_library(${shared} SHARED $<TARGET_OBJECTS:${objects}>)
    set(script ${CMAKE_CURRENT_SOURCE_DIR}/${name}.map)
    set_target_properties(${shared} PROPERTIES
        EXPORT_NAME ${name}
        INSTALL_RPATH $ORIGIN
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        LINK_DEPENDS ${script})
    target_link_options(${shared} PRIVATE
        -Wl,--version-script=${script} -Wl,--no-undefined-version)
    foreach(library ${arg_PUBLIC} ${arg_PRIVATE} ${arg_SHARED_ONLY})
        set(kind PRIVATE)
        if(library IN_LIST arg_PUBLIC)
            set(kind PUBLIC)
        endif()
        if(TARGET ${library}_shared)
            set(library ${library}_shared)
        endif()
        target_link_libraries(${shared} ${kind} ${library})
    endforeach()
    add_library(mediacheckd::${name} ALIAS ${shared})

    foreach(target ${name} ${shared})
        set_target_properties(${target} PROPERTIES
            LINKER_LANGUAGE CXX
            OUTPUT_NAME ${name})
        target_compile_definitions(${target} PUBLIC ${wide})
        target_include_directories(${target} PUBLIC ${include})
    endforeach()
    install(TARGETS ${name} ${shared} EXPORT mediacheckd
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
    if(arg_DESCRIPTION)
        mediacheckd_pkg_config(${name} "${arg_DESCRIPTION}" "${arg_PUBLIC};${arg_PRIVATE}"
                               "${arg_SHARED_ONLY}")
    endif()
endfunction()

# Installs mediacheckd-NAME.pc. Libraries of the project among those linked are required by their own
# files, others are linked by name, and who links the archives links the C++ library as well.
# static_only: what only who links the archive has to name besides.
function(mediacheckd_pkg_config name description libraries static_only)
    set(requires "")
    set(requires_private "")
    set(libs_private -lstdc++ -lm)
    foreach(library ${static_only})
        if(TARGET ${library}_shared)
            list(APPEND requires_private mediacheckd-${library})
        endif()
    endforeach()
    foreach(library ${libraries})
        if(TARGET ${library}_shared)
            list(APPEND requires mediacheckd-${library})
        elseif(library STREQUAL Threads::Threads)
            list(APPEND libs_private -pthread)
        elseif(NOT TARGET ${library})
            list(APPEND libs_private -l${library})
        endif()
    endforeach()
    list(JOIN requires ", " requires)
    list(JOIN requires_private ", " requires_private)
    list(JOIN libs_private " " libs_private)
    # The installed tree may be moved as a whole.
    file(RELATIVE_PATH to_prefix /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
    string(REGEX REPLACE "/$" "" to_prefix ${to_prefix})
    set(file ${CMAKE_CURRENT_BINARY_DIR}/mediacheckd-${name}.pc)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/mediacheckd.pc.in ${file} @ONLY)
    install(FILES ${file} DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()
