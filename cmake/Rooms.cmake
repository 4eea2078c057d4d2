# hullrider_room(NAME [SOURCES FILE...] [USES ROOM...] [LIBRARIES TARGET...])
#
# A room is a folder under src/ and a static library, room::NAME; one without sources is headers only. Other rooms include its headers as "NAME/file.h", and
# can do so only when they say that they use it: each room's headers are reached through an include folder of its own
# that holds nothing but a link to the room. So a room that includes from one it does not use does not compile.
function(hullrider_room name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES;LIBRARIES" ${ARGN})
    set(target hullrider_${name})
    if(ARG_SOURCES)
        add_library(${target} STATIC ${ARG_SOURCES})
        set(visibility PUBLIC)
    else()
        add_library(${target} INTERFACE)
        set(visibility INTERFACE)
    endif()
    add_library(room::${name} ALIAS ${target})

    set(includes ${CMAKE_BINARY_DIR}/rooms/${name})
    file(MAKE_DIRECTORY ${includes})
    if(CMAKE_HOST_WIN32)
        # Links to folders need a privilege there: every room is visible, and the layering is checked elsewhere.
        set(includes ${PROJECT_SOURCE_DIR}/src)
    else()
        file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${includes}/${name} SYMBOLIC)
    endif()
    target_include_directories(${target} ${visibility} ${includes})
    if(ARG_SOURCES)
        # Private, so that a room does not see what the rooms that it uses see.
        list(TRANSFORM ARG_USES PREPEND room:: OUTPUT_VARIABLE uses)
        target_link_libraries(${target} PRIVATE ${uses} ${ARG_LIBRARIES} hullrider_options)
    endif()
endfunction()
