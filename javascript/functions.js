// The functions by their C names, on images.
import {statuses} from './catalogue.js';
import {ZelError} from './error.js';
import {Image} from './image.js';

// Where arguments lie in the scratch memory.
const PLANES = {S: 0, D: 16};
const STEPS = {S: 32, D: 48};
const SIZE = 64, REGION = 72, NUMBERS = 96;
const GRIDS = ['bggr', 'rggb', 'gbrg', 'grbg'];
const ALL_SLICES = 21, LOOKING_UP = [4, 16];
const ROOM = 2;  // pixels
// Of the temporary memory of a mosaic.
const TEMPORARY_ROWS = 30, TEMPORARY_PIXELS = 6;

const isAlike = (a, b) => a.element === b.element && a.planes.length === b.planes.length
  && a.planes.every((plane, i) => ['bytes', 'width', 'height'].every(key => plane[key] === b.planes[i][key]));

function overlap(a, b) {
  const [first, last] = a.offset <= b.offset ? [a, b] : [b, a];
  if (first.offset + first.bytes <= last.offset) return false;
  if (first.step !== last.step) return true;
  const column = (last.offset - first.offset) % first.step;  // side by side in the same rows
  return column < first.rowBytes || column + last.rowBytes > first.step;
}

const EXTRAS = ['aval', 'matrix', 'coeffs', 'vMin', 'vMax', 'noise', 'dtype', 'levels', 'threshold', 'dstBitOffset', 'layout', 'grid'];
const MORE = {layout: ['above', 1], grid: ['region', 4]};

/** What a function takes beside images, and of how many numbers each is. */
export function extrasOf(f) {
  const given = f.passed.map(passed => passed.split(':')).filter(([name]) => EXTRAS.includes(name));
  const extras = Object.fromEntries(given.map(([name, kind]) => [name, kind ? parseInt(kind, 10) : 1]));
  for (const [name, [more, count]] of Object.entries(MORE)) if (name in extras) extras[more] = count;
  return extras;
}

const GOES_BEYOND = {
  nothing: () => false,
  pair: ({width, height}) => width > 1 && height > 1 && (width >> 1) % 4 === 2,
  corner: ({width, height}) => width % 2 === 1 && height % 2 === 1,
  notAWord: ({width}) => width === 1,
};

/** The planes in the order of the function. */
const planesOf = (image, order) => order.map(i => {
  const at = image.form.order[i];
  const {offset, step, rowBytes, rows, bytes} = image.planes[at];
  return {offset, step, rowBytes, rows, bytes, siteHeight: image.form.planes[at].height};
});

function copyRows(heap, from, to, rowBytes) {
  const bytes = new Uint8Array(heap.memory.buffer);
  for (let y = 0, at = from.offset; y < from.rows; ++y, at += from.step) bytes.copyWithin(to.offset + y * to.step, at, at + rowBytes);
}

/** One call, with what it has made on the way. */
class Call {
  #made = [];

  constructor(f, heap, extras) {
    this.f = f;
    this.heap = heap;
    this.extras = extras;
  }

  refuse(argument, text, about = {}) {
    throw new ZelError(text, {function: this.f.name, argument, ...about});
  }

  whole(name, lowest, highest, otherwise) {
    const value = this.extras[name] ?? otherwise;
    if (!Number.isInteger(value) || value < lowest || value > highest)
      this.refuse(name, `must be a whole number from ${lowest} to ${highest}, not ${value}`);
    return value;
  }

  word(name, otherwise) {
    return this.whole(name, -(2 ** 31), 2 ** 31 - 1, otherwise);
  }

  real(name, otherwise) {
    const value = this.extras[name] ?? otherwise;
    if (typeof value !== 'number') this.refuse(name, `must be a number, not ${value}`);
    return value;
  }

  takes(extra) {
    return this.f.passed.includes(extra);
  }

  checkExtras(known) {
    const there = Object.keys(known).length ? `are ${Object.keys(known).join(', ')}` : 'is none';
    for (const name of Object.keys(this.extras))
      if (!(name in known)) this.refuse(name, `is no argument; there ${there} beside images`);
  }

  checkImage(argument, image) {
    if (!(image instanceof Image)) this.refuse(argument, `must be an image, as zelcc.image makes one, not ${image}`);
    image.check({function: this.f.name, argument});
  }

  conversionOf(image, side, argument, all) {
    const found = all.find(c => c[side].number === image.form.canonical);
    if (found) return found;
    const names = [...new Set(all.map(c => c[side].name))];
    const alike = isAlike(image.form, all[0][side]) ? `; image.as('${names[0]}') takes it for one` : '';
    return this.refuse(argument, `must be of ${names.join(' or ')}, not ${image.format}${alike}`);
  }

  make(form, size, room) {
    const image = Image.make(this.heap, form, size.width, size.height, room);
    this.#made.push(image);
    return image;
  }

  /** Frees what was made, but for one image. */
  end(kept) {
    for (const one of this.#made) if (one !== kept) one.free();
    if (this.temporary) this.heap.free(this.temporary);
  }

  /** Sets both images, the size and what part of them it is. */
  take(source, out) {
    const {f} = this;
    this.checkImage('source', source);
    const conversions = f.conversions.filter(c => c[f.hasSource ? 'source' : 'target'].number === source.form.canonical);
    if (!conversions.length) this.conversionOf(source, f.hasSource ? 'source' : 'target', 'source', f.conversions);
    this.size = {width: source.width, height: source.height};
    this.region = this.takes('grid') ? this.#regionOf(source) : undefined;
    this.bitOffset = this.takes('dstBitOffset') ? this.word('dstBitOffset', 0) : 0;
    const written = this.region ?? {width: source.width + Math.max(this.bitOffset, 0) % 8, height: source.height};
    if (f.beyond === 'notAWord' && source.width === 1)
      this.refuse('source', 'must be 2 or more pixels wide, for one alone doesn\'t become a word');
    this.source = source;
    this.target = f.hasSource ? out : source;
    [this.conversion] = conversions;
    if (this.target == null) {
      this.target = this.make(this.conversion.target, written);
      this.target.bytes.fill(0);
    } else if (f.hasSource) {
      this.checkImage('out', out);
      this.conversion = this.conversionOf(out, 'target', 'out', conversions);
      if (out.width !== written.width || out.height !== written.height)
        this.refuse('out', `must be of ${written.width} x ${written.height}, not ${out.width} x ${out.height}`);
    }
    this.read = f.hasSource ? planesOf(source, this.conversion.sourceOrder) : [];
    this.stored = planesOf(this.target, this.conversion.targetOrder);
    this.#checkMemory();
    this.above = this.takes('layout') ? this.#aboveOf() : 0;
  }

  #regionOf(source) {
    const [x, y, width, height] = this.extras.region ?? [0, 0, source.width, source.height];
    const isInside = [x, y, width, height].every(Number.isInteger) && x >= 0 && y >= 0 && width >= 1 && height >= 1
      && x + width <= source.width && y + height <= source.height;
    if (!isInside) this.refuse('region', 'must be x, y, width and height inside the image');
    return {x, y, width, height};
  }

  /** Rows above a slice, which those in the middle and below look at. */
  #aboveOf() {
    const above = this.whole('above', 0, this.size.height, 0);
    if (above % 2) this.refuse('above', 'must be even');
    if (LOOKING_UP.includes(this.extras.layout) && above < 4)
      this.refuse('above', 'must be 4 or more, for such a slice looks at the rows above it');
    return above;
  }

  #checkMemory() {
    const {f, read, stored} = this;
    const of = f.hasSource ? 'out' : 'source';
    for (const [i, plane] of stored.entries())
      for (const other of stored.slice(i + 1)) if (overlap(plane, other)) this.refuse(of, 'shares memory between its planes');
    const isSame = f.worksInPlace && read.every((plane, i) => plane.offset === stored[i]?.offset && plane.step === stored[i].step);
    if (!isSame && read.some(a => stored.some(b => overlap(a, b))))
      this.refuse('out', `shares memory with source${f.worksInPlace ? ' without being the same image' : ''}`);
    for (const [side, planes, argument] of [['S', read, 'source'], ['D', stored, of]]) {
      const takes = name => f.passed.some(passed => passed.startsWith(side + name));
      if (takes('*') && takes('step0') && planes.some(plane => plane.step !== planes[0].step))
        this.refuse(argument, 'must have planes of one step');
      if (!takes('step') && planes.some(plane => plane.step !== plane.rowBytes && plane.rows > 1))
        this.refuse(argument, 'must have rows that follow each other, for the function takes no step');
    }
    if (f.needsEqualSteps && stored[1].step !== stored[2].step && this.size.height > 1)
      this.refuse('out', 'must have both planes of chroma with one step');
  }

  /** A copy with room behind its rows, for a function that goes beyond the region. */
  #roomy(form, planes, order) {
    const laid = planesOf(this.make(form, this.size, ROOM), order);
    planes.forEach((plane, i) => copyRows(this.heap, plane, laid[i], plane.rowBytes));
    return laid;
  }

  #lay(side, planes) {
    const {words, scratch} = this.heap;
    planes.forEach((plane, i) => {
      words[(scratch + PLANES[side]) / 4 + i] = plane.offset + this.above / plane.siteHeight * plane.step;
      words[(scratch + STEPS[side]) / 4 + i] = plane.step;
    });
  }

  /** Calls by the function's own arguments; its status. */
  run(entry) {
    const part = {width: this.size.width, height: this.size.height - this.above};
    const isBeyond = GOES_BEYOND[this.f.beyond](part);
    const {read, stored, region, conversion} = this;
    const used = isBeyond ? this.#roomy(conversion.target, stored, conversion.targetOrder) : stored;
    const looked = isBeyond ? this.#roomy(conversion.source, read, conversion.sourceOrder) : read;
    if (this.takes('pTmp')) {
      this.temporaryStep = (region.width + TEMPORARY_PIXELS) * this.source.form.array.BYTES_PER_ELEMENT;
      this.temporary = this.heap.allocate(this.temporaryStep * TEMPORARY_ROWS);
    }
    this.#lay('S', looked);
    this.#lay('D', used);
    const {words, scratch} = this.heap;
    words.set([part.width, part.height], (scratch + SIZE) / 4);
    if (region) words.set([region.x, region.y, region.width, region.height], (scratch + REGION) / 4);
    const status = entry(...this.f.passed.map(passed => this.#value(passed)));
    if (isBeyond && status >= 0) used.forEach((plane, i) => copyRows(this.heap, plane, stored[i], stored[i].rowBytes));
    return status;
  }

  #value(passed) {
    const {words, scratch} = this.heap;
    const [name, kind] = passed.split(':');
    if (kind) return this.#numbers(name, kind);
    if (name in VALUES) return VALUES[name](this, scratch);
    const side = name[0];
    if (name === `${side}*`) return scratch + PLANES[side];
    if (name === `${side}steps`) return scratch + STEPS[side];
    const isStep = name.startsWith('step', 1);
    return words[(scratch + (isStep ? STEPS : PLANES)[side]) / 4 + Number(name.slice(isStep ? 5 : 1))];
  }

  #numbers(name, kind) {
    const count = parseInt(kind, 10);
    if (this.extras[name] === undefined) this.refuse(name, 'must be given');
    const numbers = Array.from(this.extras[name]).flat();
    if (numbers.length !== count || !numbers.every(n => typeof n === 'number')) this.refuse(name, `must have ${count} numbers`);
    const array = kind.endsWith('d') ? Float64Array : Float32Array;
    new array(this.heap.memory.buffer, this.heap.scratch + NUMBERS, count).set(numbers);
    return this.heap.scratch + NUMBERS;
  }

  alpha() {
    const {element, opaque} = this.target.form;
    return element === '32f' ? this.real('aval', opaque) : this.whole('aval', element === '16s' ? -32768 : 0, opaque, opaque);
  }

  grid() {
    const given = this.extras.grid ?? this.source.form.grid;
    if (typeof given !== 'string') return this.word('grid', this.source.form.grid);
    if (!GRIDS.includes(given)) this.refuse('grid', `must be one of ${GRIDS.join(', ')}, or their number`);
    return GRIDS.indexOf(given);
  }

  /** Throws for an error; the warning of a status that is one. */
  report(status) {
    if (status === 0) return undefined;
    const [statusName, meaning] = statuses[status] ?? ['a status without a name', ''];
    if (status > 0) return new ZelError(`${statusName}: ${meaning}`, {function: this.f.name, status, statusName});
    const argument = {
      zelStsStepErr: this.f.hasSource ? 'out' : 'source', zelStsBadArgErr: this.takes('grid') ? 'grid' : 'source', zelStsRangeErr: 'vMax',
      zelStsDitherLevelsErr: 'levels', zelStsNoiseValErr: 'noise', zelStsDitherTypeErr: 'dtype',
      zelStsSizeErr: this.bitOffset < 0 ? 'dstBitOffset' : 'source',
    }[statusName] ?? 'source';
    return this.refuse(argument, `${statusName} (${status}): ${meaning}`, {status, statusName});
  }
}

// What is passed for the arguments that are neither planes nor steps.
const VALUES = {
  roiSize: (call, scratch) => scratch + SIZE, srcSize: (call, scratch) => scratch + SIZE, srcRoi: (call, scratch) => scratch + REGION,
  aval: call => call.alpha(), vMin: call => call.real('vMin', 0), vMax: call => call.real('vMax', 1),
  noise: call => call.word('noise', 0), dtype: call => call.word('dtype', 0),
  levels: call => call.word('levels', call.target.form.array.BYTES_PER_ELEMENT === 1 ? 256 : 65536),
  threshold: call => call.whole('threshold', 0, 255, 127), dstBitOffset: call => call.bitOffset,
  layout: call => call.word('layout', ALL_SLICES), grid: call => call.grid(),
  pTmp: call => call.temporary.address, tmpStep: call => call.temporaryStep, interpolation: () => 0, unused1: () => 0, unused2: () => 0,
};

/** A function of the package: it takes images and what else the C function is told, and returns the destination. */
export function caller(f, heap, exportsOf, warn) {
  const known = Object.freeze(extrasOf(f));
  const called = (source, out, extras = {}) => {
    const call = new Call(f, heap, extras);
    const entry = exportsOf(f.module, f.name)[f.name];
    let result;
    try {
      call.checkExtras(known);
      call.take(source, out);
      const warning = call.report(call.run(entry));
      result = call.target;
      if (warning) warn(warning);
      return result;
    } finally {
      call.end(result);
    }
  };
  Object.defineProperty(called, 'name', {value: f.name});
  called.conversions = Object.freeze(f.conversions.map(c => Object.freeze({source: c.source.name, target: c.target.name})));
  called.extras = known;
  return Object.freeze(called);
}
