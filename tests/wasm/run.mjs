// run.mjs PROGRAM [ARGUMENTS]: runs a program for WASI in Node and ends with its status.
import {readFile} from 'node:fs/promises';
import {argv, env, exit} from 'node:process';
import {WASI} from 'node:wasi';

const wasi = new WASI({version: 'preview1', args: argv.slice(2), env, preopens: {'/': '/'}});
const module = await WebAssembly.compile(await readFile(argv[2]));
exit(wasi.start(await WebAssembly.instantiate(module, {wasi_snapshot_preview1: wasi.wasiImport})));
