// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

// Takes the shapes of the icon vocabulary from the icon font, while the program is built:
//
//     velto_outlines FONT HEADER
//
// Neither the font nor what reads fonts is then needed for a shape when the program runs.

#include "controls/symboltable.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <initializer_list>
#include <vector>

namespace
{

using velto::controls::symboltable::Entry;

// FreeType tells 64ths of a pixel; a quarter of that fits into 16 bits for the whole square.
constexpr unsigned pixels = 512;
constexpr int unit = 4;
constexpr int emSize = pixels * 64 / unit;

struct Writer
{
    std::ofstream &out;
    FT_Pos ascent = 0;
    std::size_t count = 0;

    void write(int segment, std::initializer_list<const FT_Vector *> points)
    {
        out << segment << ',';
        for (const FT_Vector *point : points)
            out << point->x / unit << ',' << (ascent - point->y) / unit << ',';
        out << '\n';
        count += 1 + 2 * points.size();
    }
};

int move(const FT_Vector *to, void *writer)
{
    static_cast<Writer *>(writer)->write(0, {to});
    return 0;
}

int line(const FT_Vector *to, void *writer)
{
    static_cast<Writer *>(writer)->write(1, {to});
    return 0;
}

int curve(const FT_Vector *control, const FT_Vector *to, void *writer)
{
    static_cast<Writer *>(writer)->write(2, {control, to});
    return 0;
}

// TrueType has none.
int cubic(const FT_Vector *, const FT_Vector *, const FT_Vector *, void *)
{
    return 1;
}

[[noreturn]] void fail(const char *what, unsigned glyph = 0)
{
    std::fprintf(stderr, "velto_outlines: %s (%x)\n", what, glyph);
    std::exit(EXIT_FAILURE);
}

void writeGlyph(FT_Face face, const Entry &entry, Writer &writer)
{
    const FT_UInt glyph = FT_Get_Char_Index(face, entry.glyph);
    if (glyph == 0)
        fail("the font lacks a glyph of the table", entry.glyph);
    const FT_Outline_Funcs functions{move, line, curve, cubic, 0, 0};
    if (FT_Load_Glyph(face, glyph, FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP) != 0 ||
        FT_Outline_Decompose(&face->glyph->outline, &functions, &writer) != 0)
        fail("a glyph of the table has no shape", entry.glyph);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3)
        fail("a font and a header have to be named");
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    if (FT_Init_FreeType(&library) != 0 || FT_New_Face(library, argv[1], 0, &face) != 0 ||
        FT_Set_Pixel_Sizes(face, pixels, pixels) != 0)
        fail("the font cannot be read");
    std::ofstream out(argv[2]);
    out << "#pragma once\n\n#include <array>\n#include <cstdint>\n\n"
           "namespace velto::controls::symboloutlines\n{\n\n"
           "inline constexpr double emSize = "
        << emSize << ";\n\nenum class Segment : std::int16_t { Move, Line, Curve };\n\n"
        << "inline constexpr auto segments = std::to_array<std::int16_t>({\n";
    Writer writer{out, face->size->metrics.ascender};
    std::vector<std::size_t> ends;
    for (const Entry &entry : velto::controls::symboltable::table) {
        writeGlyph(face, entry, writer);
        ends.push_back(writer.count);
    }
    out << "});\n\n/// Where in `segments` the shape of an entry of the table ends.\n"
           "inline constexpr auto ends = std::to_array<std::uint32_t>({\n";
    for (const std::size_t end : ends)
        out << end << ",\n";
    out << "});\n\n} // namespace velto::controls::symboloutlines\n";
    out.close();
    if (!out)
        fail("the header cannot be written");
    FT_Done_FreeType(library);
}
