# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT

# velto_add_room(<name>
#     [SOURCES file...]        sources and headers, relative to the room's folder
#     [USES room...]           rooms that this one may include, as the architecture test knows them
#     [LINK target...]         libraries whose types appear in the room's headers
#     [LINK_PRIVATE target...] libraries that only the room's sources use
#     [QML_URI uri] [QML_FILES file...])
#
# One folder is one target (velto_<name>, alias velto::<name>) and one namespace (velto::<name>).
# A room with a QML_URI is also a static QML module; programs link velto::<name>_plugin as well.
function(velto_add_room name)
    cmake_parse_arguments(ROOM "" "QML_URI" "SOURCES;USES;LINK;LINK_PRIVATE;QML_FILES" ${ARGN})
    set(target velto_${name})
    if(ROOM_SOURCES OR ROOM_QML_URI)
        set(scope PUBLIC)
        add_library(${target} STATIC ${ROOM_SOURCES})
        velto_own_code(${target})
    else()
        set(scope INTERFACE)
        add_library(${target} INTERFACE)
    endif()
    add_library(velto::${name} ALIAS ${target})
    target_include_directories(${target} ${scope} ${VELTO_SOURCE_DIR}/src)
    list(TRANSFORM ROOM_USES PREPEND velto::)
    target_link_libraries(${target} ${scope} ${ROOM_USES} ${ROOM_LINK})
    if(ROOM_LINK_PRIVATE)
        target_link_libraries(${target} PRIVATE ${ROOM_LINK_PRIVATE})
    endif()
    if(ROOM_QML_URI)
        list(TRANSFORM ROOM_IMPORTS PREPEND Velto.)
        qt_add_qml_module(${target}
            URI ${ROOM_QML_URI}
            VERSION 1.0
            RESOURCE_PREFIX /qt/qml
            NO_PLUGIN_OPTIONAL
            QML_FILES ${ROOM_QML_FILES}
            RESOURCES ${ROOM_RESOURCES}
            IMPORTS ${ROOM_IMPORTS}
            DEPENDENCIES QtQuick)
        # The generated registration includes the room's headers by their bare names.
        target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
        target_link_libraries(${target}plugin PUBLIC ${target})
        add_library(velto::${name}_plugin ALIAS ${target}plugin)
    endif()
endfunction()

# What holds for every target whose code is ours, programs and tests included.
function(velto_own_code target)
    set_target_properties(${target} PROPERTIES AUTOMOC ON)
    target_compile_features(${target} PUBLIC cxx_std_20)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Werror)
    target_compile_definitions(${target} PRIVATE
        QT_NO_CAST_FROM_ASCII
        QT_NO_CAST_TO_ASCII
        QT_NO_URL_CAST_FROM_STRING
        QT_NO_CONTEXTLESS_CONNECT
        QT_NO_FOREACH)
    if(VELTO_SANITIZE)
        target_compile_options(${target} PUBLIC -fsanitize=address,undefined -fno-omit-frame-pointer
            -fno-sanitize-recover=undefined)
        target_link_options(${target} PUBLIC -fsanitize=address,undefined)
    endif()
endfunction()
