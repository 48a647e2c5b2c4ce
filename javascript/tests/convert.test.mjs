// Conversion by name: ways, colours, sizes of any kind, and what is refused.
import assert from 'node:assert/strict';
import test from 'node:test';
import {ZelError, load} from './package.mjs';

const zelcc = await load();

function noise(format, width, height) {
  const image = zelcc.image(format, width, height);
  let state = 7;
  image.bytes.forEach((_, i, bytes) => { bytes[i] = (state = Math.imul(state, 1103515245) + 12345 >>> 0) >>> 16; });
  return image;
}

const steps = (...given) => zelcc.way(...given).map(step => step.function ?? 'move');
const flat = (format, width, height, samples) => {
  const image = zelcc.image(format, width, height);
  image.planes.forEach((plane, i) => plane.data.forEach((_, j, all) => { all[j] = samples[i][j % samples[i].length]; }));
  return image;
};
const firsts = image => image.planes.flatMap(plane => [...plane.data.slice(0, plane.channels.length)]);

test('functions are taken where they have the matrix and the range, and the video library elsewhere', () => {
  assert.deepEqual(steps('nv12', 'rgba'), ['zeliYCbCr420ToRGB_8u_P2C4R']);
  assert.deepEqual(steps('nv12', 'rgba', {matrix: '2020'}), ['zelvConvert']);
  assert.deepEqual(steps('nv12', 'rgba', {range: 'full'}), ['zelvConvert']);
  assert.deepEqual(steps('rgb24', 'bgra'), ['move']);
  assert.deepEqual(steps('rgba', 'rgba'), []);
  assert.ok(steps('yuyv422', 'lab24').length > 1);
  assert.deepEqual(steps('yuv420p', 'rgb24', {method: 'filter'}).filter(name => name.includes('Filter')).length, 1);
});

test('the video library gives the worked pixels of its header', () => {
  const worked = [
    ['rgb24', [[255, 0, 0]], 'yuv420p', {matrix: '709', range: ['full', 'limited']}, [63, 102, 240]],
    ['rgb24', [[255, 0, 0]], 'yuvj420p', {}, [76, 85, 255]],
    ['rgb24', [[16, 32, 64]], 'yuv420p10le', {matrix: '2020'}, [166, 576, 479]],
    ['yuv420p10le', [[400], [600], [450]], 'rgb24', {matrix: '2020'}, [72, 104, 145]],
    ['yuv420p10le', [[400], [600], [450]], 'yuv420p10le', {matrix: ['2020', '709']}, [407, 597, 449]],
    ['yuvj420p', [[76], [85], [255]], 'yuv420p', {range: ['full', 'limited']}, [81, 90, 240]],
  ];
  for (const [from, samples, to, colours, wanted] of worked) {
    const made = zelcc.convert(flat(from, 2, 2, samples), to, colours);
    assert.deepEqual(firsts(made).slice(0, 3), wanted, `${from} to ${to}`);
  }
});

test('a way of several steps is its functions one after the other', () => {
  const image = noise('yuyv422', 32, 8);
  const [first, ...others] = zelcc.way('yuyv422', 'lab24');
  let by = zelcc.functions[first.function](image);
  for (const step of others) by = step.function ? zelcc.functions[step.function](by) : zelcc.convert(by, step.target);
  assert.deepEqual(zelcc.convert(image, 'lab24').bytes, by.bytes);
});

test('moves are the same with and without the video library', async () => {
  const alone = await load({modules: []});
  const names = Object.values(zelcc.formats).filter(({model}) => model === 'rgb').map(({name}) => name);
  const isMove = (from, to) => {
    try {
      return String(steps(from, to)) === 'move';
    } catch {
      return false;  // for want of a way
    }
  };
  let moves = 0;
  for (const from of names)
    for (const to of names) {
      if (!isMove(from, to)) continue;
      const image = noise(from, 37, 3), copy = alone.image(from, 37, 3, image.bytes);
      const made = zelcc.convert(image, to), wanted = alone.convert(copy, to);
      assert.deepEqual(made.bytes, wanted.bytes, `${from} to ${to}`);
      for (const one of [image, copy, made, wanted]) one.free();
      ++moves;
    }
  assert.ok(moves > 100);
});

test('moves and ways back keep samples', () => {
  for (const [format, between] of [['rgba', 'bgra'], ['yuv420p', 'nv12'], ['nv12', 'nv21'], ['rgb24', 'gbrp'], ['rgb24', 'rgb48le']]) {
    const image = noise(format, 22, 6);
    assert.deepEqual(zelcc.convert(zelcc.convert(image, between), format).bytes, image.bytes, `${format} by ${between}`);
  }
});

test('samples of no channel are moved too, as by the other programs', () => {
  const [b, g, r, unused] = noise('bgr0', 18, 2).bytes;
  assert.deepEqual([...zelcc.convert(noise('bgr0', 18, 2), '0rgb').bytes.subarray(0, 4)], [unused, r, g, b]);
});

test('sizes that are none of whole sites have their last column and row repeated', () => {
  for (const [width, height] of [[1, 1], [5, 3], [7, 2], [6, 5]]) {
    const image = noise('rgb24', width, height), wide = zelcc.image('rgb24', width + width % 2, height + height % 2);
    for (let y = 0; y < wide.height; ++y) {
      const row = wide.planes[0].row(y), read = image.planes[0].row(Math.min(y, height - 1));
      for (let x = 0; x < row.length; ++x) row[x] = read[x < read.length ? x : x - 3];
    }
    const made = zelcc.convert(image, 'yuv420p'), whole = zelcc.convert(wide, 'yuv420p');
    for (const [i, plane] of made.planes.entries())
      for (let y = 0; y < plane.rows; ++y)
        assert.deepEqual(plane.row(y), whole.planes[i].row(y).slice(0, plane.rowBytes), `${width} x ${height}, plane ${i}, row ${y}`);
  }
});

test('crops and destinations are used where they lie', () => {
  const image = noise('rgba', 40, 20), crop = image.crop(8, 4, 16, 8);
  const copy = zelcc.image('rgba', 16, 8);
  for (let y = 0; y < 8; ++y) copy.planes[0].row(y).set(image.planes[0].row(y + 4).subarray(32, 96));
  const wanted = zelcc.convert(copy, 'nv12').bytes;
  assert.deepEqual(zelcc.convert(crop, 'nv12').bytes, wanted);
  const out = zelcc.image('nv12', 16, 8);
  assert.equal(zelcc.convert(crop, 'nv12', {out}), out);
  assert.deepEqual(out.bytes, wanted);
  const frame = noise('nv12', 32, 32), before = frame.bytes.slice();
  zelcc.convert(crop, 'nv12', {out: frame.crop(8, 8, 16, 8)});
  assert.deepEqual(frame.crop(8, 8, 16, 8).planes.map(plane => [...plane.row(2)]), out.planes.map(plane => [...plane.row(2)]));
  assert.deepEqual(frame.planes[0].row(7), before.subarray(7 * 32, 8 * 32));
});

test('alpha is opaque where it is new, and kept where it can be', () => {
  const alphas = image => image.bytes.filter((_, i) => i % 4 === 3);
  for (const from of ['nv12', 'yuv420p', 'yuyv422', 'rgb24', 'gray', 'rgb565le'])
    assert.ok(alphas(zelcc.convert(noise(from, 18, 4), 'rgba')).every(a => a === 255), from);
  const image = noise('rgba', 18, 4);
  assert.deepEqual(alphas(zelcc.convert(image, 'bgra')), alphas(image));
});

test('extras go to the function that takes them, and colours of an image are known', () => {
  const image = noise('rgb24', 16, 4);
  assert.deepEqual(zelcc.convert(image, 'gray', {method: 'weights', coeffs: [1, 0, 0]}).bytes, image.bytes.filter((_, i) => i % 3 === 0));
  const frame = noise('nv12', 16, 4);
  frame.matrix = '2020';
  assert.deepEqual(zelcc.convert(frame, 'rgba').bytes, zelcc.convert(zelcc.image('nv12', 16, 4, frame.bytes), 'rgba', {matrix: '2020'}).bytes);
  assert.equal(zelcc.convert(image, 'nv12', {matrix: '709'}).matrix, '709');
});

test('errors name function and argument', () => {
  const nv12 = zelcc.image('nv12', 4, 4), rgb = zelcc.image('rgb24', 4, 4), freed = zelcc.image('rgb24', 4, 4), {functions} = zelcc;
  freed.free();
  const encode = functions.zeliRGBToYCbCr420_8u_C3P3R;
  const refused = [
    [() => zelcc.image('nv13', 4, 4), undefined, 'format', /nv12/],
    [() => zelcc.image('nv12', 4.5, 4), 'image', 'width', /4.5/],
    [() => zelcc.image('nv12', 4, 4, new Uint8Array(3)), 'set', 'data', /has 24/],
    [() => zelcc.image('rgb24', 100000, 100000), undefined, undefined, /memory/],
    [() => zelcc.convert(rgb, 'nope'), 'convert', 'format', /nope/],
    [() => zelcc.convert({}, 'nv12'), 'convert', 'image', /image/],
    [() => zelcc.convert(freed, 'nv12'), 'convert', 'image', /freed/],
    [() => zelcc.convert(rgb, 'nv12', {matrix: '7'}), 'convert', 'matrix', /'7'/],
    [() => zelcc.convert(rgb, 'nv12', {range: 'wide'}), 'convert', 'range', /limited, full/],
    [() => zelcc.convert(rgb, 'yuvj420p', {range: 'limited'}), 'convert', 'range', /yuv420p leaves it open/],
    [() => zelcc.convert(rgb, 'nv12', {levels: 4}), 'convert', 'levels', /no argument/],
    [() => zelcc.convert(rgb, 'nv12', {out: rgb}), 'convert', 'out', /nv12, 4 x 4/],
    [() => zelcc.convert(rgb, 'lab24', {method: 'interlaced'}), 'convert', 'target', /interlaced/],
    [() => encode(nv12), encode.name, 'source', /rgb24, not nv12/],
    [() => encode(rgb, rgb), encode.name, 'out', /yuv420p, not rgb24/],
    [() => encode(rgb, zelcc.image('yuv420p', 6, 4)), encode.name, 'out', /4 x 4/],
    [() => encode(rgb, null, {aval: 3}), encode.name, 'aval', /no argument/],
    [() => encode(zelcc.image('rgb24', 1, 1)), encode.name, 'source', /zelStsSizeErr/, 'zelStsSizeErr'],
    [() => functions.zeliReduceBits_8u_C3R(rgb, null, {levels: 1}), 'zeliReduceBits_8u_C3R', 'levels', /-54/, 'zelStsDitherLevelsErr'],
    [() => functions.zeliReduceBits_8u_C3R(rgb, rgb), 'zeliReduceBits_8u_C3R', 'out', /shares memory/],
    [() => functions.zeliColorTwist32f_8u_C3R(rgb, null, {matrix: [1]}), 'zeliColorTwist32f_8u_C3R', 'matrix', /12 numbers/],
  ];
  for (const [call, name, argument, text, statusName] of refused)
    assert.throws(call, error => {
      assert.ok(error instanceof ZelError, String(error.stack));
      assert.match(error.message, text);
      assert.equal(error.argument, argument, error.message);
      if (name) assert.equal(error.function, name);
      assert.equal(error.statusName, statusName ?? (argument ? undefined : 'zelStsMemAllocErr'));
      return true;
    }, String(call));
});

test('a module that is not loaded is named, and can be loaded later', async () => {
  const small = await load({modules: []});
  const image = small.image('rgb24', 4, 4);
  assert.throws(() => small.convert(image, 'nv12'), /'encode'/);
  await small.prepare('rgb24', 'nv12');
  assert.equal(small.convert(image, 'nv12').bytes[0], 16);
  assert.throws(() => small.functions.zeliRGBToXYZ_8u_C3R(image), /zeliRGBToXYZ_8u_C3R: the module 'colorimetric'/);
  await assert.rejects(small.load('nonsense'), /encode/);
});
