// Conversion between formats by name, over as many functions as it takes.
import {fullRangeMatrices, matrices, methods} from './catalogue.js';
import {ZelError} from './error.js';
import {ceil, formatList, formats, functionList, plainName, saysFullRange} from './formats.js';
import {extrasOf} from './functions.js';
import {Image} from './image.js';

const RANGES = ['limited', 'full'];
const LOCATIONS = ['left', 'center', 'topleft'];  // in the order of zelvideo.h
const VIDEO = 'zelvConvert';
const BY = ['function', 'video', 'move'];
const OF_REGIONS = ['grid', 'region', 'layout', 'above'];  // images are whole here, and formats say what their grid is

/** Where only samples moved, what wasn't known before isn't known now; where they were encoded, it is. */
function madeColours(from, to, {said}, matrix) {
  if (to.model !== 'ycbcr') return {matrix: undefined, range: undefined};
  const range = RANGES[said[3]];
  if (from.model === 'ycbcr') return {matrix, range};
  const name = matrices[said[1]];
  return {matrix: name, range: range ?? (fullRangeMatrices.includes(name) ? 'full' : 'limited')};
}

const pairOf = value => Array.isArray(value) ? value : [value, value];

export class Converter {
  #heap;
  #core;
  #load;
  #functions;
  #ways = new Map();
  #plans = new Map();

  constructor(heap, core, load, functions) {
    this.#heap = heap;
    this.#core = core;
    this.#load = load;
    this.#functions = functions;
  }

  unknown(kind, word, names) {
    const end = this.#heap.withText(word, text => this.#heap.withText(names.join('\n'),
      lines => this.#heap.text(this.#core.suggest(text, lines) >>> 0)));
    return new ZelError(`no ${kind} is named '${word}'${end}`, {function: 'convert', argument: kind});
  }

  form(name) {
    const found = Object.hasOwn(formats, plainName(String(name))) && formats[plainName(name)];
    if (!found) throw this.unknown('format', name, Object.keys(formats));
    return found;
  }

  #chosen(kind, value, names) {
    return pairOf(value).map(word => {
      const number = names.indexOf(word);
      if (number < 0) throw this.unknown(kind, word, names);
      return number;
    });
  }

  /** As numbers of zelvideo.h, -1 where nothing is said. A range that is no pair speaks of luma and chroma, and else of gray. */
  #ranges(source, target, given) {
    const said = given === undefined ? ['', ''] : pairOf(given);
    const names = [source, target];
    said.forEach((range, i) => {
      if (saysFullRange(names[i]) && range === 'limited')
        throw new ZelError(`${names[i]} is full range by its name; ${plainName(names[i])} leaves it open`,
          {function: 'convert', argument: 'range'});
    });
    const [fromChroma, toChroma] = names.map(name => this.form(name).model === 'ycbcr');
    let [first, last] = said;
    if (!Array.isArray(given)) {
      if (toChroma && !fromChroma) first = '';
      if (fromChroma && !toChroma) last = '';
    }
    first = saysFullRange(source) ? 'full' : first;
    last = saysFullRange(target) ? 'full' : last;
    last ||= fromChroma && toChroma ? first : '';
    return [first, last].map(range => range ? this.#chosen('range', range, RANGES)[0] : -1);
  }

  /** The way and what it was asked for; both are kept. */
  way(source, target, {matrix = '601', range, location = 'left', method = '', dither = false} = {}) {
    const wish = dither ? 'dither' : method;
    const key = JSON.stringify([source, target, matrix, range, location, wish]);
    if (!this.#ways.has(key)) this.#ways.set(key, this.#find(source, target, matrix, range, location, wish));
    return this.#ways.get(key);
  }

  #find(source, target, matrix, range, location, method) {
    const [from, to] = [this.form(source), this.form(target)];
    if (method) this.#chosen('method', method, methods);
    const said = [...this.#chosen('matrix', matrix, matrices), ...this.#ranges(source, target, range),
      ...this.#chosen('location', location, LOCATIONS)];
    const {scratch} = this.#heap;
    this.#heap.words.set(said, scratch / 4);
    const found = this.#heap.withText(method, text => this.#core.findWay(from.number, to.number, scratch, text)) >>> 0;
    if (!found)
      throw new ZelError(`no functions lead from ${source} to ${target}${method ? ` by ${method}` : ''} with the matrix ${matrix}`
        + `${range === undefined ? '' : ` and the range ${range}`}`, {function: 'convert', argument: 'target'});
    const {words} = this.#heap;
    const [count, width, height] = words.subarray(found / 4, found / 4 + 3);
    const steps = Array.from({length: count}, (_, i) => this.#step(found + 12 + 16 * i));
    return {steps, site: {width, height}, said, method};
  }

  #step(address) {
    const [by, number, source, target] = this.#heap.words.subarray(address / 4, address / 4 + 4);
    const f = BY[by] === 'function' ? functionList[number] : undefined;
    return {
      by: BY[by], f, function: f?.name ?? (BY[by] === 'video' ? VIDEO : undefined), source: formatList[source], target: formatList[target],
      module: f?.module ?? (BY[by] === 'video' ? 'video' : 'core'),
      isMovedByVideo: BY[by] === 'move' && Boolean(this.#core.isMovedByVideo(source, target)),  // where that is loaded
    };
  }

  #sayAgain(said) {
    this.#heap.words.set(said, this.#heap.scratch / 4);
    return this.#heap.scratch;
  }

  /** The address of the plan of a step by libzelvideo, which is kept. */
  #plan(step, {said, method}, video) {
    const key = JSON.stringify([step.source.name, step.target.name, said, method]);
    if (!this.#plans.has(key)) {
      const sides = this.#core.describe(step.source.number, step.target.number, this.#sayAgain(said)) >>> 0;
      const plan = this.#heap.allocate(this.#core.planBytes());
      const options = this.#heap.scratch + 64;
      this.#heap.withText(method, text => this.#core.videoOptions(text, options));
      const status = sides ? video.zelvMakePlan(plan.address, sides, sides + this.#core.formatBytes(), options) : -5;
      if (status !== 0) {
        this.#heap.free(plan);
        throw new ZelError(`zelvMakePlan refuses ${step.source.name} to ${step.target.name}`, {function: 'convert', status});
      }
      this.#plans.set(key, plan.address);
    }
    return this.#plans.get(key);
  }

  /** Pointers and steps of both sides, in the scratch memory, in the order of the formats' own planes. */
  #lay(source, target) {
    const {words, scratch} = this.#heap;
    const at = {fromPlanes: scratch, fromSteps: scratch + 16, toPlanes: scratch + 32, toSteps: scratch + 48, size: scratch + 64};
    for (const [image, planes, steps] of [[source, at.fromPlanes, at.fromSteps], [target, at.toPlanes, at.toSteps]])
      image.planes.forEach((plane, i) => {
        words[planes / 4 + i] = plane.offset;
        words[steps / 4 + i] = plane.step;
      });
    words.set([source.width, source.height], at.size / 4);
    return at;
  }

  #run(step, way, source, target, extras) {
    const video = step.by === 'video' || step.isMovedByVideo ? this.#load('video', step.by === 'video' && VIDEO) : undefined;
    if (step.by === 'function') {
      this.#functions[step.function](source, target, extras);
      this.#finishAlpha(step, source, target);
    } else if (video) {
      const plan = this.#plan(step, way, video);
      const at = this.#lay(source, target);
      const status = video.zelvConvert(plan, at.fromPlanes, at.fromSteps, at.toPlanes, at.toSteps, at.size);
      if (status !== 0) throw new ZelError(`refuses the images: status ${status}`, {function: VIDEO, status});
    } else {
      const at = this.#lay(source, target);
      this.#core.rearrange(step.source.number, at.fromPlanes, step.target.number, at.toPlanes, source.width, source.height);
    }
  }

  /** Some functions leave alpha alone, or at 0. */
  #finishAlpha(step, source, target) {
    if (step.f.alpha === 'written' || !step.target.hasAlpha) return;
    const isKept = step.source.hasAlpha && step.source.element === step.target.element;
    const place = image => {
      const {channels} = image.form.planes[image.form.alphaPlane];
      return {plane: image.planes[image.form.alphaPlane], channels: channels.length, at: channels.indexOf('A')};
    };
    const to = place(target);
    const from = isKept ? place(source) : undefined;
    for (let y = 0; y < to.plane.rows; ++y) {
      const written = to.plane.row(y), read = from?.plane.row(y);
      for (let i = to.at, j = from?.at; i < written.length; i += to.channels, j += from?.channels)
        written[i] = read ? read[j] : step.target.opaque;
    }
  }

  /** Each of the further arguments goes to the last function that takes it. */
  #shared(way, extras) {
    const shares = way.steps.map(() => ({}));
    for (const [name, value] of Object.entries(extras)) {
      const last = way.steps.findLastIndex(step => step.f && !OF_REGIONS.includes(name) && name in extrasOf(step.f));
      if (last < 0) {
        const called = way.steps.map(step => step.function).filter(Boolean).join(', ');
        throw new ZelError(`is no argument: ${called || 'a move of samples'} takes none`, {function: 'convert', argument: name});
      }
      shares[last][name] = value;
    }
    return shares;
  }

  convert(image, target, options = {}) {
    if (!(image instanceof Image)) 
      throw new ZelError('must be an image, as zelcc.image makes one', {function: 'convert', argument: 'image'});
    image.check({function: 'convert', argument: 'image'});
    const {matrix = image.matrix, range = image.range, location, method, dither, out, ...extras} = options;
    const way = this.way(image.format, target, {matrix, range, location, method, dither});
    const form = this.form(target);
    if (out !== undefined) {
      if (!(out instanceof Image)) throw new ZelError('must be an image', {function: 'convert', argument: 'out'});
      out.check({function: 'convert', argument: 'out'});
      if (out.form !== form || out.width !== image.width || out.height !== image.height)
        throw new ZelError(`must be of ${form.name}, ${image.width} x ${image.height}, not ${out.format}, ${out.width} x ${out.height}`,
          {function: 'convert', argument: 'out'});
    }
    const shares = this.#shared(way, extras);
    for (const step of way.steps) if (step.module !== 'core') this.#load(step.module, step.function);
    const width = ceil(image.width, way.site.width) * way.site.width;
    const height = ceil(image.height, way.site.height) * way.site.height;
    const isWhole = width === image.width && height === image.height;
    const made = [];
    const make = (...size) => {
      made.push(Image.make(this.#heap, ...size));
      return made.at(-1);
    };
    let result;
    try {
      let current = isWhole ? image : this.#widened(image, make(image.form, width, height));
      const into = out ?? Image.make(this.#heap, form, image.width, image.height);
      if (!out) result = into;
      way.steps.forEach((step, i) => {
        const isLast = i === way.steps.length - 1;
        const next = isLast && isWhole ? into : make(isLast ? form : step.target, width, height);
        // What is behind the last pixel of a unit of several is none, and stays 0.
        if (next !== out && next.form.site.width > 1 || next.form.element === '1u') next.bytes.fill(0);
        this.#run(step, way, current, next, shares[i]);
        current = next;
      });
      if (current !== into) this.#copy(current, into);
      Object.assign(into, madeColours(image.form, form, way, pairOf(matrix)[1]));
      return into;
    } catch (error) {
      result?.free();
      throw error;
    } finally {
      for (const one of made) one.free();
    }
  }

  /** The rows of a larger or equal image of the same format, as far as the other has them. */
  #copy(from, to) {
    to.planes.forEach((plane, i) => {
      for (let y = 0; y < plane.rows; ++y) {
        const row = plane.row(y);
        row.set(from.planes[i].row(y).subarray(0, row.length));
      }
    });
  }

  /** With the last column and row repeated up to the size. */
  #widened(image, wide) {
    wide.planes.forEach((plane, i) => {
      const given = image.planes[i];
      const unit = image.form.planes[i].bytes / image.form.array.BYTES_PER_ELEMENT;
      for (let y = 0; y < plane.rows; ++y) {
        const row = plane.row(y), read = given.row(Math.min(y, given.rows - 1));
        row.set(read);
        for (let x = read.length; x < row.length; ++x) row[x] = row[x - unit];
      }
    });
    return wide;
  }
}
