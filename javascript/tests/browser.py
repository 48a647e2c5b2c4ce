#!/usr/bin/python3 -B
"""browser.py PACKAGE [BENCH]: the package in Chromium, as a page loads it from a server: ImageData, canvas and VideoFrame in and out, with
the bytes that it gives in Node, and what a page loads. With the folder of the benchmark, its times as JSON instead; a third argument is
opencv.js."""

import json
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tests" / "browser"))
import chromium  # noqa: E402

package, *others = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])
chromium.need("the package in a browser")

PAGE = "<!doctype html><meta charset=utf-8><title>zelcc</title>"
# What a page does; each is an entry of what is found.
CHECK = """
const {load, ZelError} = await import('/package/index.js');
const zelcc = await load({modules: ['decode', 'encode', 'chroma', 'video']});
const loaded = performance.getEntriesByType('resource').map(entry => new URL(entry.name).pathname.split('/').pop()).filter(name => /\\.(js|wasm)$/.test(name)).sort();
const found = {loaded};
const width = 64, height = 48;
const picture = zelcc.image('rgba', width, height);
picture.bytes.forEach((_, i, bytes) => { bytes[i] = i % 4 === 3 ? 255 : i * 7 % 256; });
const same = (a, b) => a.length === b.length && a.every((byte, i) => byte === b[i]);

const canvas = document.createElement('canvas');
[canvas.width, canvas.height] = [width, height];
picture.draw(canvas);
found.canvas = same(zelcc.from(canvas).bytes, picture.bytes);
found.imageData = same(zelcc.from(picture.toImageData()).bytes, picture.bytes);
found.isMemory = picture.toImageData().data.buffer === zelcc.memory.buffer;

for (const format of ['nv12', 'yuv420p', 'yuv444p', 'rgba', 'bgra']) {
  const image = zelcc.convert(picture, format, {matrix: '709', range: format.startsWith('yuv') || format === 'nv12' ? 'limited' : undefined});
  const frame = image.toVideoFrame({timestamp: 1000});
  const back = await zelcc.fromVideoFrame(frame);
  found[format] = [frame.format, frame.timestamp, back.format === format && same(back.bytes, image.bytes), back.matrix ?? null, back.range ?? null];
  frame.close();
}
// Shown by the browser, which has to know matrix and range.
const plain = zelcc.image('rgba', width, height), shown = new OffscreenCanvas(width, height).getContext('2d');
plain.planes[0].data.forEach((_, i, all) => { all[i] = [200, 40, 90, 255][i % 4]; });
found.shown = true;
for (const [format, options] of [['nv12', {}], ['yuv420p', {matrix: '709'}], ['yuvj420p', {}], ['yuv420p', {matrix: '2020', range: 'full'}]]) {
  const frame = zelcc.convert(plain, format, options).toVideoFrame();
  shown.drawImage(frame, 0, 0);
  const {data} = shown.getImageData(width / 2, height / 2, 1, 1);
  found.shown &&= [200, 40, 90].every((sample, i) => Math.abs(sample - data[i]) < 4) || `${format} ${data}`;
  frame.close();
}
const camera = new VideoFrame(canvas, {timestamp: 0});
const taken = await zelcc.fromVideoFrame(camera);
found.camera = [taken.width, taken.height, zelcc.convert(taken, 'nv12').format];
try { zelcc.convert(picture, 'lab24'); } catch (error) { found.refused = [error instanceof ZelError, error.message.includes("'colorimetric'")]; }

const others = await load();
const nv12 = others.image('nv12', width, height);
nv12.bytes.forEach((_, i, bytes) => { bytes[i] = i * 5 % 256; });
let sum = 0;
for (const [target, options] of [['rgba', {}], ['rgb24', {matrix: '2020'}], ['lab24', {}], ['rgb565le', {method: 'dither'}]])
  for (const byte of others.convert(nv12, target, options).bytes) sum = Math.imul(sum ^ byte, 0x01000193) >>> 0;
found.sum = sum;
return found;
"""
BENCH = """
const [{load}, {measure}] = await Promise.all([import('/package/index.js'), import('/bench/cases.js')]);
let cv;
if (hasOpenCV) {
  await new Promise(done => {
    const script = document.createElement('script');
    Object.assign(script, {src: '/opencv.js', onload: done});
    document.head.append(script);
  });
  cv = window.cv instanceof Promise ? await window.cv : window.cv;
  if (!cv.Mat) await new Promise(done => { cv.onRuntimeInitialized = done; });
}
return {program: navigator.userAgent.match(/Chrom\\w+\\/[0-9]+/)[0], rows: await measure(await load({modules: ['decode', 'encode', 'chroma', 'video']}), cv)};
"""
WANTED_SUM = 2949505420


class Handler(chromium.Handler):
    def translate_path(self, path):
        first, _, rest = path.lstrip("/").partition("/")
        if first == "package":
            return str(package / rest)
        if first == "bench":
            return str(others[0] / rest)
        return str(others[1]) if first == "opencv.js" else "/none"

    def do_GET(self):
        if self.path != "/":
            return super().do_GET()
        self.send_response(200)
        self.send_header("Content-Type", "text/html")
        self.end_headers()
        self.wfile.write(PAGE.encode())


def run(script):
    with chromium.served(Handler) as address, chromium.started() as browser:
        browser.set_script_timeout(100)
        browser.get(address)
        made = browser.execute_async_script(
            "const done = arguments[arguments.length - 1];"
            f"(async () => {{ {script} }})().then(done, error => done({{error: String(error.stack ?? error)}}))")
        return made, chromium.complaints(browser, ("SEVERE",))


if others:
    print(json.dumps(run(f"const hasOpenCV = {json.dumps(len(others) > 1)}; {BENCH}")[0], indent=1))
    sys.exit()
found, complaints = run(CHECK)
yuv = ["limited"]
wanted = {
    "loaded": sorted(["catalogue.js", "convert.js", "core.wasm", "error.js", "formats.js", "functions.js", "heap.js", "image.js", "index.js",
                      "decode.wasm", "encode.wasm", "chroma.wasm", "video.wasm"]),
    "canvas": True, "imageData": True, "isMemory": True, "shown": True,
    "nv12": ["NV12", 1000, True, "709", "limited"], "yuv420p": ["I420", 1000, True, "709", "limited"],
    "yuv444p": ["I444", 1000, True, "709", "limited"], "rgba": ["RGBA", 1000, True, None, None], "bgra": ["BGRA", 1000, True, None, None],
    "camera": [64, 48, "nv12"], "refused": [True, True], "sum": WANTED_SUM,
}
faults = [f"{key}: {found.get(key)} instead of {value}" for key, value in wanted.items() if found.get(key) != value]
faults += [found["error"]] if "error" in found else []
print("\n".join(faults + complaints))
sys.exit(1 if faults or complaints else 0)
