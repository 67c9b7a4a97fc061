# Header-only libraries of the build machine, for a cross build. Their headers are copied to the
# build tree, because the machine's whole include folder would bring its C library along.
#
# vsq_header_library(<target> <header to find> <folder or header>...)
# creates an interface target for the library. A cross build copies each `<folder or header>`, which
# is relative to the include root. Several folders may call this for the same target.
function(vsq_header_library target probe)
    if(TARGET ${target})
        return()
    endif()
    if(NOT CMAKE_CROSSCOMPILING)
        find_path(${target}_ROOT ${probe} REQUIRED)
        add_library(${target} INTERFACE)
        target_include_directories(${target} SYSTEM INTERFACE ${${target}_ROOT})
        return()
    endif()
    find_path(${target}_ROOT ${probe} PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    set(copies ${PROJECT_BINARY_DIR}/header_copies/${target})
    foreach(part IN LISTS ARGN)
        file(COPY ${${target}_ROOT}/${part} DESTINATION ${copies})
    endforeach()
    add_library(${target} INTERFACE)
    target_include_directories(${target} SYSTEM INTERFACE ${copies})
endfunction()
