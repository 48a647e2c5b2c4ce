import {constants, modules as moduleNames, urls, version} from './catalogue.js';
import {Converter} from './convert.js';
import {ZelError} from './error.js';
import {formats, functionList} from './formats.js';
import {caller} from './functions.js';
import {Heap} from './heap.js';
import {Image, coloursOf, webFormat} from './image.js';

export {Image, ZelError, constants, formats, version};

const MODULE_BYTES = 131072;  // of each and the core, and four times as much for the stacks before them
const FIRST_BYTES = (moduleNames.length + 5) * MODULE_BYTES;

const FILES = 'node:fs/promises';  // no literal, for bundlers would look for it in pages

/** What is given for a module is a URL, a Response, bytes or a WebAssembly.Module. */
async function compile(given) {
  let source = await given;
  if (source instanceof WebAssembly.Module) return source;
  if (source instanceof URL && source.protocol === 'file:') source = await (await import(/* webpackIgnore: true */ /* @vite-ignore */ FILES)).readFile(source);
  if (typeof source === 'string' || source instanceof URL) source = await fetch(source);
  if (typeof Response === 'undefined' || !(source instanceof Response)) return WebAssembly.compile(source);
  if (!source.ok) throw new ZelError(`${source.url} can't be loaded: ${source.status} ${source.statusText}`, {function: 'load'});
  return WebAssembly.compile(await source.arrayBuffer());
}

class Zelcc {
  #heap;
  #core;
  #exports = {};
  #pending = {};
  #locate;
  #converter;

  constructor(heap, locate, warn) {
    this.#heap = heap;
    this.#locate = locate;
    this.version = version;
    this.formats = formats;
    this.constants = constants;
    const exportsOf = (module, asker) => this.#exportsOf(module, asker);
    this.functions = Object.freeze(Object.fromEntries(functionList.map(f => [f.name, caller(f, heap, exportsOf, warn)])));
  }

  static async start(heap, locate, warn, modules) {
    const zelcc = new Zelcc(heap, locate, warn);
    zelcc.#core = zelcc.#instance('core', {});
    await zelcc.load(...modules);
    const core = await zelcc.#core;
    heap.start(core);
    zelcc.#converter = new Converter(heap, core, (module, asker) => zelcc.#exportsOf(module, asker), zelcc.functions);
    return zelcc;
  }

  async #instance(name, functions) {
    const module = await compile(this.#locate?.(`${name}.wasm`) ?? urls[name]());
    const {exports} = await WebAssembly.instantiate(module, {env: {memory: this.#heap.memory, ...await functions}});
    exports._initialize?.();
    return exports;
  }

  /** What isn't loaded is refused where somebody asks who needs it. */
  #exportsOf(module, asker) {
    const found = this.#exports[module];
    if (!found && asker) throw new ZelError(`the module '${module}' isn't loaded; load it by await zelcc.load('${module}')`, {function: asker});
    return found;
  }

  /** Loads modules that aren't yet there. */
  async load(...names) {
    await Promise.all(names.map(async name => {
      if (!moduleNames.includes(name))
        throw new ZelError(`no module is named '${name}'; there are ${moduleNames.join(', ')}`, {function: 'load', argument: 'modules'});
      this.#pending[name] ??= this.#instance(name, this.#core);
      this.#exports[name] = await this.#pending[name];
    }));
  }

  /** Loads what a conversion needs. */
  async prepare(source, target, options) {
    const modules = this.way(source, target, options).map(step => step.module).filter(name => name !== 'core');
    await this.load(...modules);
  }

  image(format, width, height, data) {
    const form = this.#converter.form(format);
    const image = Image.make(this.#heap, form, width, height);
    if (format.startsWith('yuvj')) image.range = 'full';
    if (data === undefined) {
      image.bytes.fill(0);
      return image;
    }
    try {
      return image.set(data);
    } catch (error) {
      image.free();
      throw error;
    }
  }

  convert(image, target, options) {
    return this.#converter.convert(image, target, options);
  }

  way(source, target, options) {
    const {steps} = this.#converter.way(source, target, options);
    return steps.map(step => ({function: step.function, source: step.source.name, target: step.target.name, module: step.module}));
  }

  /** Of an ImageData, or of the pixels of a canvas or a 2D context of one. */
  from(source) {
    const context = source.getContext ? source.getContext('2d') : source;
    const {data, width, height} = context.getImageData ? context.getImageData(0, 0, context.canvas.width, context.canvas.height) : source;
    return this.image('rgba', width, height, data);
  }

  /** Of a VideoFrame, whose planes are copied once, with its matrix and range. */
  async fromVideoFrame(frame) {
    const format = webFormat(frame.format);
    if (!format)
      throw new ZelError(`no format stands for the VideoFrame's ${frame.format}`, {function: 'fromVideoFrame', argument: 'frame'});
    const {width, height} = frame.visibleRect;
    const image = Image.make(this.#heap, formats[format], width, height);
    try {
      let bytes;
      do {  // The memory may grow while the browser copies, and then is another one.
        bytes = image.bytes;
        await frame.copyTo(bytes, {layout: image.layout}).catch(error => {
          if (bytes.length) throw error;
        });
      } while (!bytes.length);
    } catch (error) {
      image.free();
      throw error;
    }
    if (image.form.model === 'ycbcr') Object.assign(image, coloursOf(frame.colorSpace ?? {}));
    return image;
  }

  get memory() {
    return this.#heap.memory;
  }
}

/** The package with its modules: all of them, or those that are named. */
export async function load({modules = moduleNames, locate, warn = error => console.warn(error.message)} = {}) {
  return Zelcc.start(new Heap(FIRST_BYTES), locate, warn, modules);
}
