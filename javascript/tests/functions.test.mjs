// Every function, by its name on images of the package, gives what the library gives where it is called directly.
import assert from 'node:assert/strict';
import {readFileSync} from 'node:fs';
import {env} from 'node:process';
import test from 'node:test';
import {load} from './package.mjs';

const warnings = [];
const zelcc = await load({warn: warning => warnings.push(warning)});
const lines = readFileSync(env.ZELCC_EXPECTED, 'utf8').trim().split('\n').map(line => line.split(' '));
const MATRIX = [0.75, 0.5, -0.25, 3.5, -0.125, 1.25, 0.375, -7, 0.25, 0.5, 0.125, 0.25, 0.5, 0.25, 0, 1];
const EXTRAS = {levels: 5, noise: 20, grid: 'gbrg', matrix: MATRIX, coeffs: MATRIX};

function fill(image) {
  let state = 12345;
  const next = () => (state = Math.imul(state, 1664525) + 1013904223 >>> 0) >>> 16;
  const floats = {'32f': Float32Array, '64f': Float64Array}[zelcc.formats[image.format].element];
  const {bytes} = image;
  if (floats) new floats(bytes.buffer, bytes.byteOffset, bytes.length / floats.BYTES_PER_ELEMENT).forEach((_, i, all) => { all[i] = next() % 1024 / 1024; });
  else bytes.forEach((_, i) => { bytes[i] = next(); });
}

const sumOf = bytes => bytes.reduce((sum, byte) => Math.imul(sum ^ byte, 0x01000193) >>> 0, 0x811c9dc5);

test('the list has all functions', () => {
  assert.deepEqual([...new Set(lines.map(([name]) => name))].sort(), Object.keys(zelcc.functions).sort());
});

test('all functions give the bytes and statuses of the library', () => {
  for (const [name, width, height, status, sum] of lines) {
    const called = zelcc.functions[name];
    const [{source, target}] = called.conversions;
    const image = zelcc.image(source, Number(width), Number(height));
    fill(image);
    const extras = Object.fromEntries(Object.entries(called.extras).filter(([extra]) => extra in EXTRAS)
      .map(([extra, count]) => [extra, count > 1 ? MATRIX.slice(0, count) : EXTRAS[extra]]));
    warnings.length = 0;
    const made = called(image, null, extras);
    assert.equal(made.format, target, name);
    assert.equal(warnings[0]?.status ?? 0, Number(status), `${name} ${width} x ${height}: status`);
    assert.equal(sumOf(made.bytes), Number(sum), `${name} ${width} x ${height}`);
    image.free();
    made.free();
  }
});

/** The image in the middle of a larger one, and what the larger one had. */
function framed(image) {
  const large = zelcc.image(image.format, image.width + 96, image.height + 16);
  large.bytes.fill(0xa5);
  const inner = large.crop(48, 8, image.width, image.height);
  inner.set(joined(image));
  return {large, inner, before: large.bytes.slice()};
}

const joined = image => Uint8Array.from(image.planes.flatMap(plane =>
  Array.from({length: plane.rows}, (_, y) => plane.row(y)).flatMap(row => [...new Uint8Array(row.buffer, row.byteOffset, row.byteLength)])));

test('parts of larger images convert as images of their own, and nothing beside them changes', () => {
  let checked = 0;
  for (const [name, called] of Object.entries(zelcc.functions))
    for (const [width, height] of [[20, 8], [26, 6], [7, 5], [1, 1]]) {
      const [{source}] = called.conversions;
      const image = zelcc.image(source, width, height);
      fill(image);
      const extras = Object.fromEntries(Object.entries(called.extras).filter(([extra]) => extra in EXTRAS)
        .map(([extra, count]) => [extra, count > 1 ? MATRIX.slice(0, count) : EXTRAS[extra]]));
      const from = framed(image);
      let whole;
      try {
        whole = called(image, null, extras);
      } catch {
        assert.throws(() => called(from.inner, null, extras), name);
        assert.deepEqual(from.large.bytes, from.before, name);
        continue;
      }
      const isInPlace = whole === image;
      const out = isInPlace ? from : framed(zelcc.image(whole.format, width, height));
      try {
        called(from.inner, isInPlace ? null : out.inner, extras);
      } catch (error) {
        assert.match(error.message, /takes no step/, name);
        continue;
      }
      assert.deepEqual(joined(out.inner), joined(whole), `${name} ${width} x ${height}`);
      out.inner.set(joined(zelcc.image(whole.format, width, height)));
      const empty = framed(zelcc.image(whole.format, width, height));
      assert.deepEqual(out.large.bytes, empty.large.bytes, `${name} ${width} x ${height}: beside the image`);
      for (const one of [image, whole, from.large, out.large, empty.large]) one.free();
      ++checked;
    }
  assert.ok(checked > Object.keys(zelcc.functions).length * 2, `${checked} calls`);
});
