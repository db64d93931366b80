# Fails where a source file includes what its layer may not know.
# Run as: cmake -DSOURCE_DIR=<src> -P CheckLayers.cmake
cmake_minimum_required(VERSION 3.25)

# For each folder: the project folders it may include, and whether libraries beside the C++
# standard library are allowed ("std" or "any"). First match from the top wins.
set(layers
    "platform/x11          any  platform geometry"
    "platform/freedesktop  any  platform geometry"
    "platform              any  geometry"
    "geometry              std  platform"
    "accessibility         std  platform geometry"
    "actions               std  platform geometry accessibility settings"
    "settings              std  platform geometry input"
    "input                 std  platform geometry accessibility actions settings"
    "ui/gestures           any  platform geometry input ui"
    "ui                    any  platform geometry accessibility actions settings input ui/gestures"
    "app                   any  platform geometry accessibility actions settings input ui")

file(GLOB_RECURSE files RELATIVE ${SOURCE_DIR} ${SOURCE_DIR}/*.h ${SOURCE_DIR}/*.cpp)
set(faults "")
foreach(file IN LISTS files)
    get_filename_component(folder ${file} DIRECTORY)
    set(rule "")
    foreach(layer IN LISTS layers)
        string(REGEX MATCH "^[^ ]+" name "${layer}")
        if(rule STREQUAL "" AND folder STREQUAL name)
            string(REGEX REPLACE " +" ";" rule "${layer}")
        endif()
    endforeach()
    if(rule STREQUAL "")
        if(NOT file STREQUAL "main.cpp")
            list(APPEND faults "src/${file}: its folder is no layer")
        endif()
        continue()
    endif()
    list(POP_FRONT rule own libraries)

    file(STRINGS ${SOURCE_DIR}/${file} includes REGEX "^ *# *include ")
    foreach(include IN LISTS includes)
        if(include MATCHES "\"([^\"]+)\"")
            set(header ${CMAKE_MATCH_1})
            get_filename_component(target ${header} DIRECTORY)
            if(NOT target STREQUAL own AND NOT target IN_LIST rule)
                list(APPEND faults "src/${file} (layer ${own}) may not include \"${header}\"")
            endif()
        elseif(libraries STREQUAL "std" AND NOT include MATCHES "<[a-z_]+>")
            list(APPEND faults
                 "src/${file} (layer ${own}) knows the standard library only: ${include}")
        endif()
    endforeach()
endforeach()

if(faults)
    list(JOIN faults "\n  " text)
    message(FATAL_ERROR "Includes that cross the layers:\n  ${text}")
endif()
