#!/usr/bin/python3
"""Writes the outlines of examples/data from files that Debian packages ship.

The results are committed: run this only to change them. Needs, on Debian 12:

    apt-get install python3-geopandas python3-skimage python3-fonttools fonts-dejavu-core

Run as `/usr/bin/python3 scripts/make_example_data.py` from anywhere. Every file is written beside
its place and renamed, so that an interrupted run leaves the old one.
"""
import math
import os
import pathlib
import shutil
import warnings

import geopandas
import numpy
import shapely
import skimage
from fontTools.pens.recordingPen import DecomposingRecordingPen
from fontTools.ttLib import TTFont
from scipy import ndimage
from shapely.geometry import LineString, MultiPolygon, Polygon
from shapely.ops import linemerge
from skimage import data, filters, measure, segmentation

DATA = pathlib.Path(__file__).resolve().parent.parent / "examples" / "data"

COUNTRIES = ["South Africa", "Lesotho", "Italy", "Norway", "Japan", "New Zealand", "United Kingdom",
             "Greece", "Indonesia", "Chile", "Brazil", "Croatia", "Vietnam", "Iceland", "India"]
BORDERS = [("Argentina", "Chile"), ("Kazakhstan", "Russia"), ("India", "Bangladesh"),
           ("Spain", "Portugal")]
FONTS = {"DejaVuSans": "BSgR&%8@iÅ§©Жé", "DejaVuSerif": "aQ8&fß"}
FONT_FOLDER = pathlib.Path("/usr/share/fonts/truetype/dejavu")
FLATTENING_TOLERANCE = 1.0  # font units, of which 2048 make an em


def write(name, text):
    beside = DATA / (name + ".new")
    beside.write_text(text, encoding="utf-8")
    os.replace(beside, DATA / name)


def number(value, decimals):
    if decimals is None:
        return repr(float(value)).removesuffix(".0")
    return f"{value:.{decimals}f}".rstrip("0").rstrip(".") or "0"


def points_text(points, decimals):
    """`x y, x y`, without points that rounding made equal to the one before."""
    texts = [f"{number(x, decimals)} {number(y, decimals)}" for x, y in points]
    return ", ".join(t for i, t in enumerate(texts) if i == 0 or t != texts[i - 1])


def polygon_text(polygon, decimals):
    rings = [polygon.exterior, *polygon.interiors]
    return "(" + ",\n  ".join(f"({points_text(r.coords, decimals)})" for r in rings) + ")"


def wkt(name, geometry, decimals=None):
    if isinstance(geometry, LineString):
        return f"# {name}\nLINESTRING ({points_text(geometry.coords, decimals)})\n"
    if isinstance(geometry, Polygon):
        return f"# {name}\nPOLYGON {polygon_text(geometry, decimals)}\n"
    polygons = ",\n ".join(polygon_text(p, decimals) for p in geometry.geoms)
    return f"# {name}\nMULTIPOLYGON ({polygons})\n"


def check_valid(name, text):
    body = text.split("\n", 1)[1]
    if not shapely.wkt.loads(body).is_valid:
        raise SystemExit(f"{name}: the polygon crosses itself as written")
    return text


def read_dataset(name):
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")
        return geopandas.read_file(geopandas.datasets.get_path(name))


def make_countries():
    world = read_dataset("naturalearth_lowres").set_index("name")
    write("countries.wkt", "".join(
        check_valid(name, wkt(name, world.geometry[name])) for name in COUNTRIES))
    lines = []
    for a, b in BORDERS:
        shared = world.geometry[a].boundary.intersection(world.geometry[b].boundary)
        parts = [g for g in getattr(shared, "geoms", [shared]) if isinstance(g, LineString)]
        merged = linemerge(parts)
        longest = max(getattr(merged, "geoms", [merged]), key=lambda line: line.length)
        lines.append(wkt(f"{a} - {b}", longest))
    write("borders.wkt", "".join(lines))


def make_manhattan():
    boroughs = read_dataset("nybb").set_index("BoroName")
    parts = [p for p in boroughs.geometry["Manhattan"].geoms if len(p.exterior.coords) > 12]
    write("manhattan.wkt", check_valid("Manhattan", wkt("Manhattan", MultiPolygon(parts), 2)))


def flatten_quadratic(start, control, end):
    """Points after `start`; a chord is never farther than the tolerance from its arc."""
    bend = math.hypot(start[0] - 2 * control[0] + end[0], start[1] - 2 * control[1] + end[1])
    count = max(1, math.ceil(math.sqrt(bend / (4 * FLATTENING_TOLERANCE))))
    for i in range(1, count):
        t = i / count
        yield tuple((1 - t) ** 2 * start[k] + 2 * t * (1 - t) * control[k] + t * t * end[k]
                    for k in (0, 1))
    yield end


def glyph_rings(font, character):
    glyphs = font.getGlyphSet()
    pen = DecomposingRecordingPen(glyphs)
    glyphs[font.getBestCmap()[ord(character)]].draw(pen)
    rings = []
    for operation, arguments in pen.value:
        if operation == "moveTo":
            rings.append([arguments[0]])
        elif operation == "lineTo":
            rings[-1].append(arguments[0])
        elif operation == "qCurveTo":
            controls, end = arguments[:-1], arguments[-1]
            for i, control in enumerate(controls):
                last = i + 1 == len(controls)
                middle = end if last else tuple((control[k] + controls[i + 1][k]) / 2
                                                for k in (0, 1))
                rings[-1].extend(flatten_quadratic(rings[-1][-1], control, middle))
    return rings


def glyph_geometry(rings):
    """TrueType draws ink clockwise and holes counter-clockwise; a hole belongs to the smallest ink
    around it."""
    polygons = [Polygon(r) for r in rings]
    ink = [p for p in polygons if not p.exterior.is_ccw]
    holes = [[] for _ in ink]
    for hole in (p for p in polygons if p.exterior.is_ccw):
        around = [i for i, p in enumerate(ink) if p.contains(hole)]
        holes[min(around, key=lambda i: ink[i].area)].append(hole.exterior)
    made = [Polygon(p.exterior, h) for p, h in zip(ink, holes)]
    return made[0] if len(made) == 1 else MultiPolygon(made)


def make_glyphs():
    texts = []
    for font_name, characters in FONTS.items():
        with TTFont(FONT_FOLDER / (font_name + ".ttf")) as font:
            for character in characters:
                name = f"{font_name} {character}"
                geometry = glyph_geometry(glyph_rings(font, character))
                texts.append(check_valid(name, wkt(name, geometry, 3)))
    write("glyphs.wkt", "".join(texts))


def csv(name, contour):
    """find_contours gives (row, column); a closed one repeats its first point at the end."""
    lines = [f"{number(column, 3)},{number(row, 3)}" for row, column in contour]
    kept = [t for i, t in enumerate(lines) if i == 0 or t != lines[i - 1]]
    return f"# {name}\n" + "\n".join(kept) + "\n"


def make_horse():
    ink = numpy.pad(1.0 - data.horse().astype(float), 1)
    contours = [c - 1 for c in measure.find_contours(ink, 0.5)]
    contours.sort(key=len, reverse=True)
    names = ["horse"] + [f"horse gap {i}" for i in range(1, len(contours))]
    write("horse.csv", "x,y\n" + "\n".join(map(csv, names, contours)))


def make_coins():
    photograph = data.coins()
    markers = numpy.zeros(photograph.shape, dtype=int)
    markers[photograph < 30] = 1
    markers[photograph > 150] = 2
    flooded = segmentation.watershed(filters.sobel(photograph), markers)
    coins, count = ndimage.label(ndimage.binary_fill_holes(flooded == 2))
    blocks = []
    for label in range(1, count + 1):
        mask = coins == label
        if mask.sum() < 500:  # specks of bright background
            continue
        smooth = ndimage.gaussian_filter(mask.astype(float), 1.0)
        contour = max(measure.find_contours(smooth, 0.5), key=len)
        blocks.append(csv(f"coin {len(blocks) + 1}", contour))
    write("coins.csv", "x,y\n" + "\n".join(blocks))
    folder = pathlib.Path(data.__file__).parent
    shutil.copyfile(folder / "coins.png", DATA / "coins.png.new")
    os.replace(DATA / "coins.png.new", DATA / "coins.png")


if __name__ == "__main__":
    DATA.mkdir(parents=True, exist_ok=True)
    for make in (make_countries, make_manhattan, make_glyphs, make_horse, make_coins):
        make()
    print(f"written with skimage {skimage.__version__}, geopandas {geopandas.__version__}")
