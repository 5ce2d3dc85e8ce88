# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT

# Links files into the program: `velto_embed_media(<generated source> <file>...)`, the files named
# relative to this folder, writes a source that includes their bytes through the assembler.
set(VELTO_MEDIA_DIR ${CMAKE_CURRENT_LIST_DIR})

function(velto_embed_media generated)
    set(types png image/png jpg image/jpeg webp image/webp webm video/webm mp4 video/mp4)
    set(blobs "")
    set(entries "")
    set(paths "")
    set(number 0)
    foreach(file IN LISTS ARGN)
        set(path ${VELTO_MEDIA_DIR}/${file})
        list(APPEND paths ${path})
        string(REGEX REPLACE "^.*\\." "" extension ${file})
        list(FIND types ${extension} position)
        math(EXPR position "${position} + 1")
        list(GET types ${position} type)
        string(APPEND blobs "VELTO_BLOB(blob${number}, \"${path}\")\n")
        string(APPEND entries "        {\"${file}\", \"${type}\", "
            "bytes(blob${number}Begin, blob${number}End)},\n")
        math(EXPR number "${number} + 1")
    endforeach()
    configure_file(${VELTO_MEDIA_DIR}/mediafiles.cpp.in ${generated} @ONLY)
    set_source_files_properties(${generated} PROPERTIES OBJECT_DEPENDS "${paths}")
endfunction()
