"""pipelines.py: real pipelines through zelconvert, which are quiet and leave nothing behind, to files that FFmpeg reads back."""

import os
import re
import shutil
import subprocess
import sys
import tempfile

WIDTH, HEIGHT, FRAMES = 320, 240, 5
SIZE = f"width={WIDTH},height={HEIGHT}"


def launch(pipeline, **environment):
    """Warnings of any category are failures, and so is an object that is left at the end."""
    traced = dict(os.environ, GST_DEBUG="2,GST_TRACER:7", GST_TRACERS="leaks", GST_DEBUG_NO_COLOR="1", **environment)
    run = subprocess.run(["gst-launch-1.0", "-q", *pipeline.split()], env=traced, capture_output=True, text=True)
    loud = re.findall(r"^.*(?: WARN | ERROR |GST_TRACER :0:: object-alive|CRITICAL|WARNING).*$", run.stderr, re.MULTILINE)
    if run.returncode or loud:
        sys.exit(f"{pipeline}\n" + "\n".join(loud or [run.stderr]))


def decoded(path, form):
    command = ["ffmpeg", "-nostdin", "-v", "error", "-i", path, "-f", "rawvideo", "-sws_flags", "accurate_rnd+full_chroma_int",
               "-pix_fmt", form, "-"]
    return subprocess.run(command, check=True, capture_output=True).stdout


def difference(one, other):
    """The mean one, of a byte."""
    if len(one) != len(other) or not one:
        sys.exit(f"{len(one)} bytes and {len(other)}")
    return sum(abs(a - b) for a, b in zip(one, other)) / len(one)


if not shutil.which("gst-launch-1.0") or not shutil.which("ffmpeg"):
    print("Skipped: pipelines need gst-launch-1.0 and ffmpeg")
    sys.exit(77)
subprocess.run(["gst-inspect-1.0", "zelconvert"], check=True, capture_output=True)  # which brings the registry up to date
with tempfile.TemporaryDirectory() as folder:
    source = f"videotestsrc num-buffers={FRAMES} pattern=smpte75 ! video/x-raw,{SIZE},framerate=25/1,format="
    for form in ("NV12", "YUY2", "v210", "AYUV"):
        # What goes through the element to PNG is what FFmpeg makes of the same frame.
        png, raw = f"{folder}/{form}.png", f"{folder}/{form}.y4m"
        launch(f"{source}{form},colorimetry=bt601 ! zelconvert n-threads=2 ! video/x-raw,format=RGB ! pngenc snapshot=true ! filesink location={png}")
        launch(f"{source}RGB ! zelconvert ! video/x-raw,format={form} ! fakesink")
        launch(f"videotestsrc num-buffers=1 pattern=smpte75 ! video/x-raw,{SIZE},format=RGB ! filesink location={raw}")
        with open(raw, "rb") as file:
            off = difference(decoded(png, "rgb24"), file.read())
        print(f"{form} to PNG: {off:.3f}")
        if off > 2:  # chroma of the bars' edges
            sys.exit(f"{form} to PNG is off by {off}")
    # RGB through the element to H.264, decoded by FFmpeg.
    h264 = f"{folder}/film.mkv"
    launch(f"{source}RGB ! zelconvert chroma-filter=linear ! x264enc quantizer=1 pass=quant ! matroskamux ! filesink location={h264}")
    frame = WIDTH * HEIGHT * 3
    film = decoded(h264, "rgb24")
    with open(raw, "rb") as file:
        off = difference(film[:frame], file.read())
    print(f"{len(film) // frame} frames through H.264: {off:.3f}")
    if len(film) != FRAMES * frame or off > 2:
        sys.exit(f"H.264 is off by {off}")
    # From a decoder, whose caps name a matrix and range without primaries, and from a mosaic.
    launch(f"{source}I420 ! jpegenc ! jpegdec ! zelconvert ! video/x-raw,format=BGRx ! fakesink")
    launch(f"videotestsrc num-buffers={FRAMES} ! video/x-bayer,{SIZE},format=grbg ! zelconvert demosaic=ahd ! video/x-raw,format=RGB ! fakesink")
