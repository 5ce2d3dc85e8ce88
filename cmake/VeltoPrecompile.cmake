# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT

# Reading Qt's headers takes longer than compiling most of our files. They are read once for each of
# the sets below, which all targets of a kind share; includes stay complete without them, as the
# linter sees, which reads every file plainly.
option(VELTO_PRECOMPILE "Precompile the headers of Qt and of other libraries" ON)

# velto_add_precompiled(<set> <STATIC|EXECUTABLE> [OPTIMISE goal] LINK target... HEADERS header...)
function(velto_add_precompiled set type)
    cmake_parse_arguments(SET "" "OPTIMISE" "LINK;HEADERS" ${ARGN})
    set(target velto_precompiled_${set})
    if(NOT VELTO_PRECOMPILE OR TARGET ${target})
        return()
    endif()
    set(source ${VELTO_SOURCE_DIR}/cmake/precompiled.cpp)
    if(type STREQUAL EXECUTABLE)
        add_executable(${target} EXCLUDE_FROM_ALL ${source})
    else()
        add_library(${target} ${type} EXCLUDE_FROM_ALL ${source})
    endif()
    velto_own_code(${target})
    if(SET_OPTIMISE)
        velto_optimise(${target} ${SET_OPTIMISE})
    endif()
    set_target_properties(${target} PROPERTIES AUTOMOC OFF)
    target_link_libraries(${target} PRIVATE ${SET_LINK})
    target_precompile_headers(${target} PRIVATE ${SET_HEADERS})
endfunction()

# velto_use_precompiled(<target> <set>): a set that nobody has added is no error.
function(velto_use_precompiled target set)
    if(TARGET velto_precompiled_${set})
        target_precompile_headers(${target} REUSE_FROM velto_precompiled_${set})
    endif()
endfunction()

set(VELTO_COMMON_HEADERS
    <QByteArray> <QDateTime> <QHash> <QJsonArray> <QJsonDocument> <QJsonObject> <QList> <QMap>
    <QObject> <QPointer> <QString> <QStringList> <QTimer> <QUrl> <QVariant>
    <qcorotask.h> <tl/expected.hpp>
    <algorithm> <array> <chrono> <functional> <memory> <optional> <stop_token> <string> <utility>
    <variant> <vector>)
velto_add_precompiled(core STATIC OPTIMISE SIZE
    LINK Qt6::Core QCoro6::Core tl::expected
    HEADERS ${VELTO_COMMON_HEADERS})
velto_add_precompiled(hot STATIC OPTIMISE SPEED
    LINK Qt6::Core QCoro6::Core tl::expected
    HEADERS ${VELTO_COMMON_HEADERS})
if(TARGET Qt6::Quick)
    velto_add_precompiled(quick STATIC OPTIMISE SIZE
        LINK Qt6::Quick QCoro6::Core tl::expected
        HEADERS ${VELTO_COMMON_HEADERS} <QQuickItem> <QtQml/qqmlprivate.h> <QtQml/qqmlregistration.h>)
endif()
