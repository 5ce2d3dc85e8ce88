# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT

# velto_add_room(<name>
#     [SOURCES file...]        sources and headers, relative to the room's folder
#     [USES room...]           rooms that this one may include, as the architecture test knows them
#     [LINK target...]         libraries whose types appear in the room's headers
#     [LINK_PRIVATE target...] libraries that only the room's sources use
#     [QML_URI uri] [QML_FILES file...] [QML_DEPENDENCIES uri...] [RESOURCES file...]
#     [HOT])                   works on every byte of an answer: fast rather than small
#
# One folder is one target (velto_<name>, alias velto::<name>) and one namespace (velto::<name>).
# A room with a QML_URI is also a static QML module; programs link velto::<name>_plugin as well and
# say Q_IMPORT_QML_PLUGIN(Velto_<Name>Plugin).
set(VELTO_QML_DIR ${CMAKE_CURRENT_BINARY_DIR}/qml)

function(velto_add_room name)
    cmake_parse_arguments(ROOM "HOT" "QML_URI"
        "SOURCES;USES;LINK;LINK_PRIVATE;QML_FILES;QML_DEPENDENCIES;RESOURCES" ${ARGN})
    set(target velto_${name})
    if(ROOM_SOURCES OR ROOM_QML_URI)
        set(scope PUBLIC)
        add_library(${target} STATIC ${ROOM_SOURCES})
        velto_own_code(${target})
        if(ROOM_HOT)
            velto_optimise(${target} SPEED)
            velto_use_precompiled(${target} hot)
        else()
            velto_optimise(${target} SIZE)
            if(ROOM_QML_URI)
                velto_use_precompiled(${target} quick)
            else()
                velto_use_precompiled(${target} core)
            endif()
        endif()
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
        string(REPLACE "." "/" folder ${ROOM_QML_URI})
        # All modules below one folder, so that tools find one from the other.
        set(QT_QML_OUTPUT_DIRECTORY ${VELTO_QML_DIR})
        qt_add_qml_module(${target}
            URI ${ROOM_QML_URI}
            VERSION 1.0
            RESOURCE_PREFIX /qt/qml
            OUTPUT_DIRECTORY ${VELTO_QML_DIR}/${folder}
            IMPORT_PATH ${VELTO_QML_DIR}
            DEPENDENCIES QtQuick ${ROOM_QML_DEPENDENCIES}
            QML_FILES ${ROOM_QML_FILES}
            RESOURCES ${ROOM_RESOURCES})
        # The generated registration includes the room's headers by their bare names.
        target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
        target_link_libraries(${target} PUBLIC Qt6::Quick)
        target_link_libraries(${target}plugin PUBLIC ${target})
        add_library(velto::${name}_plugin ALIAS ${target}plugin)
    endif()
endfunction()

# velto_optimise(<target> <SIZE|SPEED>), in release builds. Most code of a client runs once in a
# while, and what it costs then is the memory that it is read into: for size, the program is two
# fifths smaller.
function(velto_optimise target goal)
    if(goal STREQUAL SPEED)
        target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O2>)
    else()
        target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-Os>)
        # With that, GCC 12 misses that the state of a std::stop_token is initialised.
        target_compile_options(${target} PRIVATE
            $<$<AND:$<CONFIG:Release>,$<CXX_COMPILER_ID:GNU>>:-Wno-maybe-uninitialized>)
    endif()
    # So that the linker can leave out of a program what nobody calls.
    target_compile_options(${target} PRIVATE
        $<$<CONFIG:Release>:-ffunction-sections> $<$<CONFIG:Release>:-fdata-sections>)
    target_link_options(${target} PRIVATE $<$<CONFIG:Release>:LINKER:--gc-sections>)
endfunction()

# What holds for every target whose code is ours, programs and tests included.
function(velto_own_code target)
    set_target_properties(${target} PROPERTIES AUTOMOC ON)
    target_compile_features(${target} PUBLIC cxx_std_20)
    target_compile_options(${target} PRIVATE -Wall -Wextra
        $<$<BOOL:${VELTO_WARNINGS_AS_ERRORS}>:-Werror>)
    # What some of our libraries ask of whoever uses them, for all: a precompiled header is only of
    # use to those who agree on it.
    target_compile_options(${target} PRIVATE -pthread)
    # GCC 12 and 13 see an overlap in every inlined `const char * + std::string &&`.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
    target_compile_definitions(${target} PRIVATE
        QT_NO_CAST_FROM_ASCII
        QT_NO_CAST_TO_ASCII
        QT_NO_URL_CAST_FROM_STRING
        QT_NO_CONTEXTLESS_CONNECT
        QT_NO_FOREACH)
    if(VELTO_SANITIZE)
        target_compile_options(${target} PUBLIC -fsanitize=address,undefined -fno-omit-frame-pointer
            -fno-sanitize-recover=undefined)
        # What AddressSanitizer reports as well, at a third of the compile time.
        target_compile_options(${target} PUBLIC -fno-sanitize=vptr,null,object-size)
        # The instrumented code hides from GCC that a std::variant has been initialised.
        target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
        target_link_options(${target} PUBLIC -fsanitize=address,undefined)
    endif()
endfunction()
