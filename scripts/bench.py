#!/usr/bin/env python3
"""Times whole processes and prints the table of scripts/bench.sh.

    bench.py RUNS BUILD_DIR PRODUCT_DIR [PART...]

The commands take turns, so that a slow moment of the machine falls on all of them; the medians are compared within
this one run only. Parts are pages, pictures, volumes, mosaics, summaries, maps and loop; without any, all.
"""
import os
import statistics
import struct
import subprocess
import sys
import time
import zlib

runs = max(7, int(sys.argv[1]))
build = os.path.abspath(sys.argv[2])
products = os.path.abspath(sys.argv[3])
program = os.path.join(build, "src", "scopeview")
bare = os.path.join(build, "bench", "bare")
bare_picture = os.path.join(build, "bench", "barePicture")
config = os.path.join(build, "etc")

PRODUCTS = [
    ("radial16", "16-level radial, 360 x 230"),
    ("radial256", "256-level radial, 720 x 1840"),
    ("raster", "raster, 464 x 464"),
    ("profile", "wind profile"),
]
DEVICES = [("meta", "-de meta,/dev/null"), ("ps", "-de ps,/dev/null,color"), ("hpgl", "-de hpgl,/dev/null")]
OTHER = "lc:40:-97:33:45,35.3,-97.3,91,61,.11,.11"
OTHER_PROFILE = "xy,256,-256,91,61,8,8"


def once(command):
    """Seconds and kilobytes of one run."""
    done = subprocess.run([bare, "spawn", *command], cwd=products, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        sys.exit(f"bench: status {done.returncode} from {' '.join(command)}")
    took, memory = done.stdout.split()
    return float(took), int(memory)


def measure(commands):
    """Median seconds and largest memory by name."""
    results = {name: [] for name in commands}
    for command in commands.values():
        once(command)
    for _ in range(runs):
        for name, command in commands.items():
            results[name].append(once(command))
    return {
        name: (statistics.median(t for t, _ in list_), max(m for _, m in list_)) for name, list_ in results.items()
    }


def polygons(file, args, kind="nids"):
    """Polygons that a product gives, counted in its metafile."""
    out = os.path.join(products, "count.meta")
    subprocess.run([program, "-in", kind, file, "-df", config, "-de", f"meta,{out}", *args], check=True,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    with open(out) as records:
        return sum(line.startswith("F ") for line in records)


def dump_pixels(file, args, kind="nids"):
    """Draws a product and leaves its pixels for the floors. Returns width and height."""
    out = os.path.join(products, "picture.png")
    subprocess.run([program, "-in", kind, file, "-df", config, "-de", "raster", "-ou", f"png:{out}", *args],
                   check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    with open(out, "rb") as picture:
        data = picture.read()
    width, height = struct.unpack(">II", data[16:24])
    packed = b""
    at = 8
    while at < len(data):
        size, kind = struct.unpack(">I4s", data[at:at + 8])
        packed += data[at + 8:at + 8 + size] if kind == b"IDAT" else b""
        at += size + 12
    # The rows have filter 0: a byte, and the pixels as they are.
    rows = zlib.decompress(packed)
    step = width * 3 + 1
    rgb = b"".join(rows[y * step + 1:(y + 1) * step] for y in range(height))
    colors = {}
    index = bytes(colors.setdefault(rgb[i:i + 3], len(colors)) & 255 for i in range(0, len(rgb), 3))
    for name, pixels in (("picture.rgb", rgb), ("picture.ind", index)):
        with open(os.path.join(products, name), "wb") as dump:
            dump.write(pixels)
    return width, height


def pictures(empty):
    """Product to image file, off screen and on a display."""
    print(f"\n{'picture':30} {'file':5} {'look':6} {'read':>7} {'write':>7} {'raster':>8} {'/floor':>7} {'window':>8}"
          f" {'/floor':>7} {'MB':>6}")
    display = os.environ.get("DISPLAY")
    for name, what in PRODUCTS:
        file = os.path.join(products, name + ".nids")
        for look, args in (("bare", ["-dr", "plot,data", "-pa", "nobord"]), ("full", ["-dr", "plot,data,text"])):
            width, height = dump_pixels(file, args)
            for kind, pixels in (("png", "picture.rgb"), ("gif", "picture.ind")):
                draw = [program, "-in", "nids", file, "-df", config, "-ou", f"{kind}:/dev/null", *args]
                commands = {
                    "read": [bare, "read", file],
                    "write": [bare_picture, kind, os.path.join(products, pixels), str(width), str(height)],
                    "raster": [*draw, "-de", "raster"],
                }
                if display:
                    commands["window"] = draw
                got = measure(commands)
                floor = got["write"][0] + got["read"][0] - empty
                line = (f"{what:30} {kind:5} {look:6} {got['read'][0] * 1e3:7.2f} {got['write'][0] * 1e3:7.2f} "
                        f"{got['raster'][0] * 1e3:8.2f} {got['raster'][0] / floor:7.2f}")
                if display:
                    line += f" {got['window'][0] * 1e3:8.2f} {got['window'][0] / floor:7.2f}"
                else:
                    line += f" {'-':>8} {'-':>7}"
                print(f"{line} {got['raster'][1] / 1024:6.1f}")
    print("\nwrite: the same pixels with libpng or giflib; floor: read + write - empty; bare: data alone, full: with"
          "\nlabels, border and bar; window: on the display of Xvfb.")


def volumes(empty):
    """Cuts of a Level II volume: beside the decompression of its records up to the end of the cut."""
    print(f"\n{'cut of a volume':30} {'device':6} {'polygons':>8} {'unzip':>7} {'write':>7} {'own':>8} {'/floor':>7}"
          f" {'/unzip':>7} {'reproj':>8} {'/own':>6} {'MB':>6}")
    file = os.path.join(products, "volume.lev2")
    records = 6  # of each cut
    # The record behind a cut tells that it has ended.
    for cut, ends, what, more in (("ref1", 1, "first of 6, 720 x 1832", []), ("vel2", 2, "second, velocity", []),
                                  ("ref6", 6, "last", []), ("ref1", 6, "first, the whole walked", ["-me", "+out4"])):
        draw = [program, "-in", "lev2z", "-va", cut, file, "-df", config, *more, "-dr", "plot,data,text"]
        count = polygons(file, draw[7:] + draw[3:5], "lev2z")
        width, height = dump_pixels(file, draw[7:] + draw[3:5], "lev2z")
        for device, args in (*DEVICES[:2], ("png", "-de raster -ou png:/dev/null")):
            write = [bare, "print", str(count), device]
            if device == "png":
                write = [bare_picture, "png", os.path.join(products, "picture.rgb"), str(width), str(height)]
            got = measure({
                "unzip": [bare, "chain", file, str(min(ends * records + 1, 6 * records))],
                "write": write,
                "own": [*draw, *args.split()],
                "reproj": [*draw, *args.split(), "-pd", OTHER],
            })
            unzip, writing, own, reproj = (got[k][0] for k in ("unzip", "write", "own", "reproj"))
            floor = unzip + writing - empty
            print(f"{what:30} {device:6} {count:8d} {unzip * 1e3:7.2f} {writing * 1e3:7.2f} {own * 1e3:8.2f} "
                  f"{own / floor:7.2f} {own / unzip:7.2f} {reproj * 1e3:8.2f} {reproj / own:6.2f} "
                  f"{got['own'][1] / 1024:6.1f}")
    print("\nunzip: bare bzip2 of the records up to the end of the cut; write: a bare loop that prints as many"
          "\npolygons, or the same pixels with libpng; floor: unzip + write - empty; whole walked: by a message level"
          "\nthat has lines for every radial.")


def mosaics(_empty):
    """A mosaic of 5120 by 5760 to a picture of 640 by 512: beside reading its bytes and decoding their runs."""
    file = os.path.join(products, "mosaic.kav")
    draw = [program, "-in", "kav", file, "-df", config, "-de", "raster", "-ou", "png:/dev/null", "-ge", "640x512",
            "-dr", "plot,data,text"]
    got = measure({"read": [bare, "read", file], "decode": [bare, "mosaic", file], "us": draw,
                   "own": [*draw, "-pd", "ll,39,-96,67,51,1,1"]})
    read, decode, us, own = (got[k][0] * 1e3 for k in ("read", "decode", "us", "own"))
    print(f"\nmosaic of 5120 x 5760, {os.path.getsize(file) / 1e6:.1f} MB: read {read:.2f}, decoded {decode:.2f}, on "
          f"the U.S. map {us:.2f} = 1.5 x decoded {us - 1.5 * decode:+.2f}, on its own projection {own:.2f} = 1.5 x "
          f"decoded {own - 1.5 * decode:+.2f} ms, {got['us'][1] / 1024:.1f} MB")


def summaries(_empty):
    """A summary of coded messages, 452 by 356, to a picture: with 150 stations and what they have, and without."""
    files = {name: os.path.join(products, name + ".rcm") for name in ("bare", "stations")}
    draw = [program, "-in", "rcm", "-df", config, "-de", "raster", "-ou", "png:/dev/null", "-dr", "plot,data,text",
            "-va", "stat,etop,tvs,storm"]
    commands = {name: [*draw, file] for name, file in files.items()}
    got = measure({"read": [bare, "read", files["stations"]], **commands})
    read, without, stations = (got[k][0] * 1e3 for k in ("read", "bare", "stations"))
    print(f"\nsummary of 452 x 356: read {read:.2f}, picture {without:.2f}, with 150 stations {stations:.2f} = "
          f"{stations / without:.2f} x, {got['stations'][1] / 1024:.1f} MB")


def maps(_empty):
    """The sample product with the default map and without, by scale of the view."""
    sample = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "data", "sample.nids")
    views = [("national", ["-pd", "us"]), ("regional", ["-pd", "lc:40:-97:33:45,35.3,-97.3,91,61,.15,.15"]),
             ("local", ["-pd", "lc:40:-97:33:45,35.3,-97.3,91,61,.05,.05"])]
    print(f"\n{'map':10} {'without':>9} {'with':>9} {'+ms':>7} {'+MB':>6}")
    for name, view in views:
        draw = [program, "-in", "nids", sample, "-df", config, "-de", "ps,/dev/null,color", *view]
        got = measure({"without": [*draw, "-dr", "plot,data,text"], "with": draw})
        (bare_time, bare_memory), (time_taken, memory) = got["without"], got["with"]
        print(f"{name:10} {bare_time * 1e3:9.2f} {time_taken * 1e3:9.2f} {(time_taken - bare_time) * 1e3:7.2f} "
              f"{(memory - bare_memory) / 1024:6.1f}")


def loop(_empty):
    """A loop of 24 frames in a window: when the first one shows, and what it takes."""
    if not os.environ.get("DISPLAY"):
        return
    frames = 24
    with open(os.path.join(products, "radial16.nids"), "rb") as product:
        data = product.read()
    for i in range(frames):
        with open(os.path.join(products, f"loop_20250430_{i // 12:02d}{i % 12 * 5:02d}.nids"), "wb") as file:
            file.write(data)
    with open(os.path.join(products, "loop.cnv"), "w") as convention:
        convention.write(f"nids {products}/loop_%Y%m%d_%h%n.nids - nids min=5\n")
    command = ["stdbuf", "-oL", program, "-in", "nids", "-nc", os.path.join(products, "loop.cnv"), "-df", config,
               "-cu", "#202504300155", "-pa", f"nf={frames},linc=5"]
    start = time.perf_counter()
    run = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    drawn = []
    for line in run.stdout:
        if line.startswith("Plotting for"):
            drawn.append(time.perf_counter() - start)
            if len(drawn) == frames:
                break
    time.sleep(1)
    with open(f"/proc/{run.pid}/status") as status:
        memory = next(int(line.split()[1]) for line in status if line.startswith("VmHWM"))
    run.kill()
    run.wait()
    # A frame shows when the next one is begun.
    print(f"\nloop of {frames} frames in a window: first frame after {drawn[1] * 1e3:.0f} ms, all after "
          f"{drawn[-1] * 1e3:.0f} ms, {memory / 1024:.1f} MB (scripts/bench.sh --parts: time to show a frame)")


def pages(empty):
    """Product to page, on its own domain, reprojected and with a map."""
    head = f"{'product':30} {'device':6} {'polygons':>8} {'read':>7} {'print':>7} {'own':>8} {'/floor':>7}"
    print(f"{head} {'reproj':>8} {'/own':>6} {'+map':>6} {'MB':>6}")
    for name, what in PRODUCTS:
        file = os.path.join(products, name + ".nids")
        other = OTHER_PROFILE if name == "profile" else OTHER
        count = polygons(file, [])
        for device, args in DEVICES:
            mapped = [program, "-in", "nids", file, "-df", config, *args.split()]
            draw = [*mapped, "-dr", "plot,data,text"]
            got = measure({
                "read": [bare, "read", file],
                "print": [bare, "print", str(count), device],
                "own": draw,
                "reproj": [*draw, "-pd", other],
                "map": mapped,
            })
            read, bare_print, own, reproj, with_map = (got[k][0] for k in ("read", "print", "own", "reproj", "map"))
            floor = bare_print + read - empty
            print(f"{what:30} {device:6} {count:8d} {read * 1e3:7.2f} {bare_print * 1e3:7.2f} {own * 1e3:8.2f} "
                  f"{own / floor:7.2f} {reproj * 1e3:8.2f} {reproj / own:6.2f} {(with_map - own) * 1e3:6.2f} "
                  f"{got['map'][1] / 1024:6.1f}")
    print("\nread: reading and bare decompression; print: a bare loop that prints as many polygons with"
          "\nstd::to_chars; floor: read + print - empty; reproj: the same product on a Lambert map; +map: what the"
          "\ndefault map adds to own; MB: with it.")

def main():
    base = measure({"empty": [bare, "empty"], "help": [program, "-h", "-df", config]})
    empty = base["empty"][0]
    print(f"medians of {runs} runs each; ms, and ratios within this run\n")
    print(f"empty process            {empty * 1e3:8.2f}")
    print(f"scopeview -h             {base['help'][0] * 1e3:8.2f}   {base['help'][0] / empty:5.2f} x empty\n")
    parts = {"pages": pages, "pictures": pictures, "volumes": volumes, "mosaics": mosaics, "summaries": summaries,
             "maps": maps, "loop": loop}
    for part in sys.argv[4:] or parts:
        parts[part](empty)


main()
