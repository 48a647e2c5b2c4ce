// node.mjs PACKAGE [OPENCV]: times in Node, as JSON.
import {createRequire} from 'node:module';
import {pathToFileURL} from 'node:url';
import {resolve} from 'node:path';
import {measure} from './cases.js';

const [folder, opencv] = process.argv.slice(2);
const {load} = await import(pathToFileURL(resolve(folder, 'index.js')));
const zelcc = await load({modules: ['decode', 'encode', 'chroma', 'video']});
let cv;
if (opencv) {
  cv = createRequire(import.meta.url)(resolve(opencv));
  cv = cv instanceof Promise ? await cv : cv;
  if (!cv.Mat) await new Promise(done => { cv.onRuntimeInitialized = done; });
}
console.log(JSON.stringify({program: `Node ${process.versions.node}`, rows: await measure(zelcc, cv)}, null, 1));
process.exit();
