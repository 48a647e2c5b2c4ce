// Images are the memory of the modules, and give it back.
import assert from 'node:assert/strict';
import {readFile} from 'node:fs/promises';
import test from 'node:test';
import {setTimeout} from 'node:timers/promises';
import {folder, load} from './package.mjs';

test('views show the memory that functions write, also after it has grown', async () => {
  const zelcc = await load({modules: ['decode']});
  const image = zelcc.image('nv12', 64, 64);
  image.planes[0].data.fill(235);
  image.planes[1].data.fill(128);
  const picture = zelcc.convert(image, 'rgba');
  assert.equal(picture.bytes.buffer, zelcc.memory.buffer);
  assert.ok(picture.bytes.every(byte => byte === 255));
  const before = zelcc.memory.buffer.byteLength;
  const large = zelcc.image('rgba', 4000, 4000);
  assert.ok(zelcc.memory.buffer.byteLength > before);
  assert.equal(image.planes[0].data[5], 235);
  image.planes[0].data.fill(16);
  assert.deepEqual([...zelcc.convert(image, 'rgba', {out: picture}).bytes.subarray(0, 4)], [0, 0, 0, 255]);
  large.free();
});

test('the core, which functions call for memory, leaves their stack alone', async () => {
  const zelcc = await load({modules: []});
  const stack = () => new Uint8Array(zelcc.memory.buffer, 0, 262144);
  stack().fill(0xa5);
  zelcc.image('rgba', 64, 64).free();
  zelcc.way('nv12', 'lab24');
  assert.ok(stack().every(byte => byte === 0xa5));
});

test('freed memory is used again, whatever failed in between', async () => {
  const zelcc = await load({modules: ['decode', 'encode', 'chroma', 'intensity', 'reducebits', 'video']});
  const run = () => {
    const image = zelcc.image('nv12', 640, 360), wide = zelcc.image('rgb24', 641, 361);
    zelcc.convert(image, 'rgba', {matrix: '709'}).free();
    zelcc.convert(image, 'rgba', {matrix: '2020'}).free();
    zelcc.convert(wide, 'nv12').free();
    zelcc.functions.zeliReduceBits_8u_C3R(wide, null, {levels: 4, dtype: zelcc.constants.zelDitherFS}).free();
    assert.throws(() => zelcc.functions.zeliReduceBits_8u_C3R(wide, null, {levels: 1}));
    assert.throws(() => zelcc.image('nv12', 640, 360, new Uint8Array(1)));
    image.free();
    image.free();
    wide.crop(2, 2, 16, 16).free();
    assert.throws(() => wide.bytes, /freed/);
  };
  for (let i = 0; i < 5; ++i) run();
  const bytes = zelcc.memory.buffer.byteLength;
  for (let i = 0; i < 200; ++i) run();
  assert.equal(zelcc.memory.buffer.byteLength, bytes);
});

test('images that nobody can reach are freed, and those that a view or a crop shows are not', async () => {
  const zelcc = await load({modules: []});
  const crop = zelcc.image('rgba', 16, 16).crop(4, 4, 8, 8);
  crop.planes[0].data.fill(7);
  const view = zelcc.image('gray', 64, 64).bytes;
  view.fill(9);
  let most = 0;
  for (let i = 0; i < 40; ++i) {
    for (let j = 0; j < 4; ++j) zelcc.image('rgba', 1024, 1024).bytes.fill(1);
    await setTimeout(1);
    globalThis.gc();
    await setTimeout(1);
    most = Math.max(most, zelcc.memory.buffer.byteLength);
  }
  assert.ok(most < 40 * 4 * 2 ** 22 / 2, `${most} bytes`);
  assert.ok(crop.planes[0].row(3).every(sample => sample === 7));
  if (view.length) assert.ok(view.every(sample => sample === 9));
});

test('frames are taken whole if memory grows while they are copied', async () => {
  const zelcc = await load({modules: []});
  const visibleRect = {width: 2048, height: 2048};
  const frame = value => ({
    format: 'NV12', visibleRect, colorSpace: {},
    async copyTo(bytes) {
      await setTimeout(1);
      if (!bytes.length) throw new TypeError('detached');
      bytes.fill(value);
    },
  });
  const images = await Promise.all([1, 2, 3].map(value => zelcc.fromVideoFrame(frame(value))));
  assert.ok(images.every((image, i) => image.bytes.every(byte => byte === i + 1)));
  const closed = {...frame(0), copyTo: async () => { throw new TypeError('closed'); }};
  await assert.rejects(zelcc.fromVideoFrame(closed), /closed/);
});

test('dispose frees', {skip: !Symbol.dispose}, async () => {
  const zelcc = await load({modules: []});
  const image = zelcc.image('rgba', 16, 16);
  image[Symbol.dispose]();
  assert.ok(image.isFreed);
});

test('modules come from where the caller says', async () => {
  const asked = [];
  const locate = async name => {
    asked.push(name);
    const bytes = await readFile(new URL(name, folder));
    return name === 'core.wasm' ? WebAssembly.compile(bytes) : bytes;
  };
  const zelcc = await load({modules: ['encode'], locate});
  assert.deepEqual(asked.sort(), ['core.wasm', 'encode.wasm']);
  assert.equal(zelcc.convert(zelcc.image('rgb24', 4, 4), 'nv12').bytes[0], 16);
  await assert.rejects(load({modules: [], locate: () => new URL('none.wasm', folder)}));
});
