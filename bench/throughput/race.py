#!/usr/bin/env python3
"""Sequences through tintwell-host and through FFmpeg, in turn: time, processor time and size.

    bench/throughput/race.py [--host build/release/tintwell-host] [--rounds 3] [--frames 16] [--more]

The look is examples/golden-hour.cube with tetrahedral interpolation in both, the input a photograph
(scripts/fetch-samples) of 1920 x 1080. Each row is the best of the rounds; a ratio below 1 is ours
being quicker or smaller. --more adds 3840 x 2160 and other formats, the share of grading, and what a
frame in flight costs. Ends with 1 when a row of the table is slower or larger than FFmpeg's.
"""
import argparse
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
LOOK = ROOT / "examples/golden-hour.cube"
LUT = f"lut3d={LOOK}:interp=tetrahedral"

# Name, input, output, options of ours, filters of FFmpeg's before the look, its output options.
TABLE = [
    ("PNG, 8 bits", "png", "png", [], "", []),
    ("EXR, zip, float", "png", "exr", ["--depth", "float"], "format=gbrpf32,",
     ["-c:v", "exr", "-compression", "zip16"]),
    # FFmpeg's best quality, 47.3 dB of PSNR against the graded picture; ours at 92 has 48.4 dB.
    ("JPEG, 4:4:4", "jpg", "jpg", ["--compression", "92"], "",
     ["-pix_fmt", "yuvj444p", "-q:v", "1", "-qmin", "1"]),
]
MORE = [
    ("PNG, 16 bits", "png", "png", ["--depth", "float"], "format=gbrp16,", ["-pix_fmt", "rgb48be"]),
    ("TIFF, float / 16 bits", "png", "tif", ["--depth", "float"], "format=gbrp16,",
     ["-pix_fmt", "rgb48le", "-compression_algo", "deflate"]),
    ("DPX, 16 / 10 bits", "png", "dpx", ["--depth", "float"], "format=gbrp10,",
     ["-pix_fmt", "gbrp10be"]),
]


def measure(command):
    """Seconds, processor seconds and peak MiB of a command."""
    start = time.monotonic()
    child = subprocess.Popen(command, stdin=subprocess.DEVNULL)
    _, status, usage = os.wait4(child.pid, 0)
    if status:
        sys.exit(f"failed: {' '.join(map(str, command))}")
    return time.monotonic() - start, usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024


def make_input(folder, size, frames):
    """The photograph as in.0001.png and so on, and as JPEG."""
    for extension, options in (("png", []), ("jpg", ["-q:v", "2", "-pix_fmt", "yuvj444p"])):
        first = folder / f"in.0001.{extension}"
        subprocess.run(["ffmpeg", "-v", "error", "-y", "-i", ROOT / "build/samples/photo.jpg", "-vf",
                        f"scale={size}", *options, "-frames:v", "1", "-update", "1", first],
                       check=True)
        for frame in range(2, frames + 1):
            shutil.copy(first, folder / f"in.{frame:04}.{extension}")


def ours(host, folder, row, extra=()):
    _, source, target, options, _, _ = row
    return [host, "--home", folder / "home", "render", folder / f"in.%04d.{source}",
            folder / f"ours.%04d.{target}", "--lut", LOOK, *options, *extra]


def theirs(folder, row):
    _, source, target, _, before, options = row
    return ["ffmpeg", "-v", "error", "-y", "-i", folder / f"in.%04d.{source}", "-vf", before + LUT,
            *options, folder / f"theirs.%04d.{target}"]


def race(host, folder, row, rounds):
    """Best seconds and processor seconds of both, and the sizes of their first files."""
    best = {"ours": [9e9, 9e9], "theirs": [9e9, 9e9]}
    for _ in range(rounds):
        for name, command in (("ours", ours(host, folder, row)), ("theirs", theirs(folder, row))):
            seconds, processor, _ = measure(command)
            best[name] = [min(best[name][0], seconds), min(best[name][1], processor)]
    size = {name: (folder / f"{name}.0001.{row[2]}").stat().st_size for name in best}
    for name in best:
        for file in folder.glob(f"{name}.*"):
            file.unlink()
    return best["ours"], best["theirs"], size["ours"], size["theirs"]


def run_rows(host, folder, rows, arguments, title):
    print(f"{title}, {arguments.frames} frames      ours s / cpu s   FFmpeg s / cpu s"
          "   ratio   cpu ratio   size ratio")
    good = True
    for row in rows:
        mine, other, size, other_size = race(host, folder, row, arguments.rounds)
        ratios = (mine[0] / other[0], mine[1] / other[1], size / other_size)
        good = good and ratios[0] <= 1.0 and ratios[2] <= 1.0
        print(f"{row[0]:<24}{mine[0]:>16.2f} / {mine[1]:.2f}{other[0]:>12.2f} / {other[1]:.2f}"
              f"{ratios[0]:>13.2f}{ratios[1]:>11.2f}{ratios[2]:>12.2f}", flush=True)
    return good


def show_memory(host, folder, row):
    """Peak memory for a short and the whole sequence, and for more frames in flight."""
    for frames, threads in (("1-4", 2), ("1-16", 2), ("1-16", 1), ("1-16", 4)):
        extra = ["--frames", frames, "--threads", str(threads)]
        _, _, peak = measure(ours(host, folder, row, extra))
        print(f"{row[0]}: frames {frames}, {threads} in flight: peak {peak:.0f} MiB", flush=True)


def identity_cube(path, size=33):
    lines = [f"LUT_3D_SIZE {size}"]
    steps = [f"{step / (size - 1):.9g}" for step in range(size)]
    lines += [f"{r} {g} {b}" for b in steps for g in steps for r in steps]
    path.write_text("\n".join(lines) + "\n")
    return path


def show_share(host, folder):
    """What grading costs of a frame. The look changes nothing, so that packing costs the same as of
    the same job without a look, which passes frames on."""
    row = TABLE[0]
    without = [part for part in ours(host, folder, row) if part not in ("--lut", LOOK)]
    with_look = [*without, "--lut", identity_cube(folder / "identity.cube")]
    times = {"with": [], "without": []}
    for _ in range(3):
        times["with"].append(measure(with_look)[1])
        times["without"].append(measure(without)[1])
    share = 1 - min(times["without"]) / min(times["with"])
    print(f"share of grading, {row[0]}: {100 * share:.0f} % of the processor time", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--host", default=ROOT / "build/release/tintwell-host", type=pathlib.Path)
    parser.add_argument("--rounds", default=3, type=int)
    parser.add_argument("--frames", default=16, type=int)
    parser.add_argument("--more", action="store_true")
    arguments = parser.parse_args()
    host = arguments.host.resolve()
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        make_input(folder, "1920:1080", arguments.frames)
        good = run_rows(host, folder, TABLE, arguments, "1920 x 1080")
        if arguments.more:
            run_rows(host, folder, MORE, arguments, "1920 x 1080")
            show_share(host, folder)
            show_memory(host, folder, TABLE[0])
            show_memory(host, folder, TABLE[1])
            make_input(folder, "3840:2160", arguments.frames)
            run_rows(host, folder, TABLE, arguments, "3840 x 2160")
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
