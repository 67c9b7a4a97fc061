# One CMake target per folder. cmake/layers.txt lists what each folder may include: other folders or
# single headers of them.

file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/layers.txt VSQ_LAYER_ROWS REGEX "->")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/layers.txt)

# With SHARED layers, a change of one source file needs only one short link. `scripts/mutants` builds so.
set(VSQ_LAYER_KIND STATIC CACHE STRING "Kind of library for each layer: STATIC or SHARED")

# Sets `result` to the folders and headers in the row of `folder`, or to nothing if there is no such
# row.
function(vsq_visible_paths folder result)
    set(found "")
    foreach(row IN LISTS VSQ_LAYER_ROWS)
        if(row MATCHES "^([^ #]+) *->(.*)$" AND CMAKE_MATCH_1 STREQUAL folder)
            string(STRIP "${CMAKE_MATCH_2}" found)
            string(REGEX REPLACE " +" ";" found "${found}")
        endif()
    endforeach()
    set(${result} "${found}" PARENT_SCOPE)
endfunction()

# vsq_header_target(<header> <target>)
# makes every layer whose row names <header> link to <target> instead of the current folder's target.
function(vsq_header_target header target)
    file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
    set_property(GLOBAL PROPERTY VSQ_TARGET_OF_${folder}/${header} ${target})
endfunction()

# vsq_add_layer(<target> [SHARED|EXECUTABLE|INTERFACE] SOURCES <file>...)
# creates the target of the current folder and links it to the targets of everything it may include.
# A header-only folder is an INTERFACE and has no sources.
function(vsq_add_layer target)
    cmake_parse_arguments(LAYER "SHARED;EXECUTABLE;INTERFACE" "" "SOURCES" ${ARGN})
    file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})

    set(public PUBLIC)
    if(LAYER_EXECUTABLE)
        add_executable(${target} ${LAYER_SOURCES})
    elseif(LAYER_SHARED)
        add_library(${target} SHARED ${LAYER_SOURCES})
    elseif(LAYER_INTERFACE)
        add_library(${target} INTERFACE)
        set(public INTERFACE)
    else()
        add_library(${target} ${VSQ_LAYER_KIND} ${LAYER_SOURCES})
    endif()
    if(NOT LAYER_EXECUTABLE)
        set_property(GLOBAL PROPERTY VSQ_TARGET_OF_${folder} ${target})
    endif()

    target_include_directories(${target} ${public} ${PROJECT_SOURCE_DIR})
    if(NOT LAYER_INTERFACE)
        target_link_libraries(${target} PRIVATE vsq_warnings)
    endif()
    vsq_visible_paths(${folder} visible)
    foreach(other IN LISTS visible)
        get_property(other_target GLOBAL PROPERTY VSQ_TARGET_OF_${other})
        if(other_target)
            target_link_libraries(${target} ${public} ${other_target})
        endif()
    endforeach()
endfunction()
