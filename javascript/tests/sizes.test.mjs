// What a page loads, compressed by Brotli as servers do it, and by gzip.
import assert from 'node:assert/strict';
import {readFileSync, readdirSync} from 'node:fs';
import test from 'node:test';
import {brotliCompressSync, gzipSync} from 'node:zlib';
import {folder} from './package.mjs';

const sizes = readdirSync(folder).filter(name => /\.(js|wasm)$/.test(name)).map(name => {
  const bytes = readFileSync(new URL(name, folder));
  return {name, brotli: brotliCompressSync(bytes).length, gzip: gzipSync(bytes, {level: 9}).length};
});

function total(...modules) {
  const sum = {brotli: 0, gzip: 0};
  for (const {name, brotli, gzip} of sizes)
    if (name.endsWith('.js') || modules.includes('all') || modules.includes(name.replace('.wasm', ''))) sum.brotli += brotli, sum.gzip += gzip;
  return sum;
}

test('a page that converts luma and chroma loads little, and one that converts all not much', () => {
  for (const [modules, brotli, gzip] of [[[], 20000, 23500], [['core', 'decode'], 56000, 67500], [['core', 'encode'], 56000, 67500],
    [['core', 'decode', 'encode'], 70000, 85500], [['all'], 300000, 390000]]) {
    const found = total(...modules);
    assert.ok(found.brotli < brotli && found.gzip < gzip, `${modules}: ${JSON.stringify(found)} of ${JSON.stringify(sizes)}`);
  }
});
