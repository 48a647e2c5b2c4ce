// What a page loads, compressed by Brotli as servers do it.
import assert from 'node:assert/strict';
import {readFileSync, readdirSync} from 'node:fs';
import test from 'node:test';
import {brotliCompressSync} from 'node:zlib';
import {folder} from './package.mjs';

const sizes = Object.fromEntries(readdirSync(folder).filter(name => /\.(js|wasm)$/.test(name))
  .map(name => [name, brotliCompressSync(readFileSync(new URL(name, folder))).length]));
const total = test => Object.entries(sizes).filter(([name]) => test(name)).reduce((sum, [, size]) => sum + size, 0);

test('a page that converts luma and chroma loads little, and one that converts all not much', () => {
  assert.ok(total(name => ['core.wasm', 'lumachroma.wasm'].includes(name)) < 50000, JSON.stringify(sizes));
  assert.ok(total(name => name.endsWith('.js')) < 22000, JSON.stringify(sizes));
  assert.ok(total(() => true) < 300000, JSON.stringify(sizes));
});
