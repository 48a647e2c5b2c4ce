// What is measured, in Node and in a page alike: frames of 1080p to RGBA and back, on one thread.
import {plainDecode, plainEncode} from './plain.js';

const WIDTH = 1920, HEIGHT = 1080;
const ROUNDS = 150, LEAST_MS = 4, WARM_MS = 400;

const pause = () => new Promise(done => setTimeout(done, 2));

function noise(length) {
  let state = 0x2545f491;
  return Uint8Array.from({length}, (_, i) => {
    state ^= state << 13, state ^= state >>> 17, state ^= state << 5;
    return (i >> 3 & 127) + (state >>> 28) + 40;
  });
}

/** The least time of a call of each, in ms, all in turn, of rounds long enough for the clock, once compilers are done, which work in
 * the pauses. */
async function times(all, now) {
  for (const run of all) for (const begin = now(); now() - begin < WARM_MS; await pause()) run();
  const least = all.map(() => Infinity);
  for (let round = 0; round < ROUNDS; ++round)
    for (const [i, run] of all.entries()) {
      const begin = now();
      let calls = 0, spent = 0;
      do run(), ++calls, spent = now() - begin; while (spent < LEAST_MS);
      least[i] = Math.min(least[i], spent / calls);
      await pause();
    }
  return least;
}

function ours(zelcc, from, to, colours) {
  const source = zelcc.image(from, WIDTH, HEIGHT), out = zelcc.image(to, WIDTH, HEIGHT);
  source.set(noise(source.bytes.length));
  return {run: () => zelcc.convert(source, to, {...colours, out}), bytes: () => out.bytes, way: zelcc.way(from, to, colours).map(s => s.function)};
}

function plain(from, to) {
  const bytes = format => new Uint8Array(WIDTH * HEIGHT * (format === 'rgba' ? 4 : 1.5));
  const source = noise(bytes(from).length), out = bytes(to);
  return {run: to === 'rgba' ? () => plainDecode(from, WIDTH, HEIGHT, source, out) : () => plainEncode(to, WIDTH, HEIGHT, source, out), bytes: () => out};
}

const CODES = {'nv12 rgba': 'COLOR_YUV2RGBA_NV12', 'yuv420p rgba': 'COLOR_YUV2RGBA_I420', 'rgba yuv420p': 'COLOR_RGBA2YUV_I420'};

function byOpenCV(cv, from, to) {
  const code = cv?.[CODES[`${from} ${to}`]];
  if (code === undefined) return undefined;
  const mat = format => new cv.Mat(format === 'rgba' ? HEIGHT : HEIGHT * 3 / 2, WIDTH, format === 'rgba' ? cv.CV_8UC4 : cv.CV_8UC1);
  const source = mat(from), out = mat(to);
  source.data.set(noise(source.data.length));
  return {run: () => cv.cvtColor(source, out, code), bytes: () => out.data};
}

function difference(a, b) {
  if (a.length !== b.length) throw new Error(`${a.length} bytes and ${b.length}`);
  let most = 0;
  for (let i = 0; i < a.length; ++i) most = Math.max(most, Math.abs(a[i] - b[i]));
  return most;
}

/** Times in ms of each conversion by all that are there. All must do the same but for rounding. */
export async function measure(zelcc, cv, now = () => performance.now()) {
  const rows = [];
  for (const [from, to] of [['nv12', 'rgba'], ['yuv420p', 'rgba'], ['rgba', 'nv12'], ['rgba', 'yuv420p']]) {
    const all = {zelcc: ours(zelcc, from, to, {}), video: ours(zelcc, from, to, {matrix: '2020'}), plain: plain(from, to), opencv: byOpenCV(cv, from, to)};
    const row = {from, to, way: all.zelcc.way.join(', ')};
    const there = Object.entries(all).filter(([, one]) => one);
    const measured = await times(there.map(([, one]) => one.run), now);
    there.forEach(([name, one], i) => {
      row[name] = measured[i];
      if (name !== 'video') row[`${name}Difference`] = difference(one.bytes(), all.zelcc.bytes());
    });
    rows.push(row);
  }
  return rows;
}
