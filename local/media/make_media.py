#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""Draws the service's media files anew. Needs rsvg-convert, ImageMagick and ffmpeg."""

import math
import pathlib
import subprocess
import tempfile

HERE = pathlib.Path(__file__).parent
MONTHS = ["Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"]
BOATS = [212, 198, 241, 268, 305, 342, 371, 388, 329, 287, 244, 226]
CARGO = [61, 58, 66, 72, 85, 92, 101, 97, 90, 79, 70, 64]
FONT = "font-family='DejaVu Sans, sans-serif'"


def render(svg, target, width, height):
    subprocess.run(["rsvg-convert", "-w", str(width), "-h", str(height), "-o", str(target)],
                   input=svg.encode(), check=True)


def chart():
    left, top, width, height = 90, 130, 1060, 470
    out = [f"<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 1240 700' {FONT}>",
           "<defs><linearGradient id='bar' x1='0' y1='0' x2='0' y2='1'>"
           "<stop offset='0' stop-color='#4f8df0'/><stop offset='1' stop-color='#2f63c4'/>"
           "</linearGradient></defs>",
           "<rect width='1240' height='700' fill='#ffffff'/>",
           "<text x='90' y='62' font-size='30' font-weight='bold' fill='#1c2025'>Arrivals</text>",
           "<text x='90' y='94' font-size='18' fill='#5d6570'>Boats (bars) and cargo in "
           "kilotons (line), by month</text>"]
    for value in range(0, 401, 100):
        y = top + height * (1 - value / 400)
        out.append(f"<line x1='{left}' x2='{left + width}' y1='{y}' y2='{y}' stroke='#e3e6eb'/>"
                   f"<text x='{left - 14}' y='{y + 6}' font-size='16' text-anchor='end' "
                   f"fill='#5d6570'>{value}</text>")
    step = width / 12
    points = []
    for index, month in enumerate(MONTHS):
        x = left + step * (index + 0.5)
        tall = height * BOATS[index] / 400
        out.append(f"<rect x='{x - 28}' y='{top + height - tall}' width='56' height='{tall}' "
                   f"rx='8' fill='url(#bar)'/>"
                   f"<text x='{x}' y='{top + height + 32}' font-size='17' text-anchor='middle' "
                   f"fill='#5d6570'>{month}</text>")
        points.append((x, top + height * (1 - CARGO[index] / 115)))
    path = " ".join(f"{x:.1f},{y:.1f}" for x, y in points)
    out.append(f"<polyline points='{path}' fill='none' stroke='#f2994a' stroke-width='5' "
               "stroke-linejoin='round' stroke-linecap='round'/>")
    out += [f"<circle cx='{x:.1f}' cy='{y:.1f}' r='7' fill='#fff' stroke='#f2994a' "
            "stroke-width='4'/>" for x, y in points]
    out.append("</svg>")
    return "".join(out)


def wave(base, amplitude, length, phase, width=960, height=540, step=12):
    points = [f"{x},{base + amplitude * math.sin(2 * math.pi * x / length + phase):.1f}"
              for x in range(0, width + step, step)]
    return f"M{' L'.join(points)} L{width + step},{height} L0,{height} Z"


def harbour(time=0.0, tide=0.0):
    """A dusk scene; `time` moves the water, `tide` in 0..1 lifts it."""
    level = 372 - 46 * tide
    turn = 2 * math.pi * time
    bob = 5 * math.sin(turn * 2)
    lamps = "".join(f"<circle cx='{x}' cy='{y}' r='3' fill='#ffd98a'/>"
                    for x, y in [(92, 300), (150, 286), (214, 306), (266, 290), (318, 310)])
    houses = "".join(
        f"<path d='M{x},{y} l26,-24 l26,24 v90 h-52 Z' fill='{colour}'/>"
        for x, y, colour in [(66, 290, "#3a3157"), (124, 276, "#332b4e"), (188, 296, "#40365f"),
                             (240, 280, "#352d52"), (292, 300, "#3c3359")])
    boat = (f"<g transform='translate(610 {level - 16 + bob:.1f}) "
            f"rotate({2.5 * math.sin(turn * 2 + 1):.2f})'>"
            "<path d='M-70,0 H78 L54,34 H-48 Z' fill='#20182f'/>"
            "<path d='M0,-6 V-150' stroke='#20182f' stroke-width='5'/>"
            "<path d='M6,-146 Q86,-70 60,-14 H6 Z' fill='#f6e7d2'/>"
            "<path d='M-6,-128 Q-58,-60 -46,-14 H-6 Z' fill='#e9cfae'/></g>")
    beam = 20 * math.sin(turn)
    return f"""<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 960 540'>
<defs><linearGradient id='sky' x1='0' y1='0' x2='0' y2='1'>
<stop offset='0' stop-color='#27264f'/><stop offset='.45' stop-color='#7a4a78'/>
<stop offset='.72' stop-color='#e98a63'/><stop offset='1' stop-color='#ffd08a'/></linearGradient>
<linearGradient id='sea' x1='0' y1='0' x2='0' y2='1'><stop offset='0' stop-color='#4b3f72'/>
<stop offset='1' stop-color='#17163a'/></linearGradient>
<linearGradient id='beam'><stop offset='.25' stop-color='#ffe9a8' stop-opacity='0'/>
<stop offset='1' stop-color='#ffe9a8' stop-opacity='.5'/></linearGradient></defs>
<rect width='960' height='540' fill='url(#sky)'/>
<circle cx='700' cy='330' r='62' fill='#ffe3ad'/>
<path d='M0,340 Q160,250 330,318 T960,350 V540 H0 Z' fill='#4a3560'/>{houses}{lamps}
<path d='M800,372 q30,-46 70,-44 q56,-2 90,30 v40 h-160 Z' fill='#2f2748'/>
<path d='M862,334 l10,-116 h20 l10,116 Z' fill='#f4ece2'/>
<path d='M866,286 h32 l2,22 h-36 Z' fill='#c8513f'/><rect x='868' y='196' width='28' height='24'
 fill='#ffe9a8'/><path d='M864,198 l18,-20 l18,20 Z' fill='#20182f'/>
<path d='M868,208 L-40,{150 + 3 * beam:.1f} L-40,{270 + 3 * beam:.1f} Z' fill='url(#beam)'/>
<path d='{wave(level, 5, 240, turn * 2)}' fill='url(#sea)'/>
<path d='{wave(level + 22, 6, 190, -turn * 2 + 1)}' fill='#2c2858' opacity='.75'/>{boat}
<path d='{wave(level + 58, 8, 260, turn * 4 + 2)}' fill='#1d1b45' opacity='.85'/>
<path d='{wave(level + 104, 9, 320, -turn * 2)}' fill='#131233'/></svg>"""


def clip(target, seconds=6, rate=24, width=640, height=360):
    with tempfile.TemporaryDirectory() as folder:
        for frame in range(seconds * rate):
            part = frame / (seconds * rate)
            tide = 0.5 - 0.5 * math.cos(2 * math.pi * part)
            render(harbour(part, tide), f"{folder}/{frame:04}.png", width, height)
        subprocess.run(["ffmpeg", "-y", "-loglevel", "error", "-framerate", str(rate), "-i",
                        f"{folder}/%04d.png", "-c:v", "libvpx-vp9", "-pix_fmt", "yuv420p",
                        "-b:v", "0", "-crf", "40", "-row-mt", "1", "-fflags", "+bitexact",
                        "-flags:v", "+bitexact", str(target)], check=True)


def main():
    for folder in ["charts", "pictures", "clips"]:
        (HERE / folder).mkdir(exist_ok=True)
    render(chart(), HERE / "charts/arrivals.png", 1240, 700)
    with tempfile.TemporaryDirectory() as folder:
        render(harbour(0.1, 0.3), f"{folder}/harbour.png", 1600, 900)
        subprocess.run(["convert", f"{folder}/harbour.png", "-strip", "-quality", "86",
                        str(HERE / "pictures/harbour.jpg")], check=True)
    clip(HERE / "clips/tide.webm")


if __name__ == "__main__":
    main()
