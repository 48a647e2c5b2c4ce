// The functions by their C names, on images.
import {statuses} from './catalogue.js';
import {ZelError} from './error.js';
import {Image} from './image.js';

// Where arguments lie in the scratch memory.
const PLANES = {S: 0, D: 16};
const STEPS = {S: 32, D: 48};
const SIZE = 64, REGION = 72, NUMBERS = 96;
const GRIDS = ['bggr', 'rggb', 'gbrg', 'grbg'];
const ALL_SLICES = 21;
const WARNINGS_FROM = 1;
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

class Call {
  constructor(f, heap) {
    this.f = f;
    this.heap = heap;
  }

  refuse(argument, text, about = {}) {
    throw new ZelError(text, {function: this.f.name, argument, ...about});
  }

  image(argument, image) {
    if (!(image instanceof Image)) this.refuse(argument, `must be an image, as zelcc.image makes one, not ${image === null ? 'null' : typeof image}`);
    image.check({function: this.f.name, argument});
    return image;
  }

  number(extras, name, lowest, highest, otherwise) {
    const value = extras[name] ?? otherwise;
    if (typeof value !== 'number' || !Number.isInteger(value) || value < lowest || value > highest)
      this.refuse(name, `must be a whole number from ${lowest} to ${highest}, not ${value}`);
    return value;
  }

  real(extras, name, otherwise) {
    const value = extras[name] ?? otherwise;
    if (typeof value !== 'number') this.refuse(name, `must be a number, not ${value}`);
    return value;
  }
}

function chosen(call, image, side, argument) {
  const {conversions} = call.f;
  const found = conversions.find(c => c[side].number === image.form.canonical);
  if (found) return found;
  const wanted = conversions.map(c => c[side].name).filter((name, i, all) => all.indexOf(name) === i).join(' or ');
  const alike = isAlike(image.form, conversions[0][side]) ? `; image.as("${conversions[0][side].name}") takes it for one` : '';
  return call.refuse(argument, `must be of ${wanted}, not ${image.format}${alike}`);
}

/** Sets the planes and steps of one side. */
function lay(call, side, planes, down = 0) {
  const {words, scratch} = call.heap;
  planes.forEach((plane, i) => {
    words[(scratch + PLANES[side]) / 4 + i] = plane.offset + down / plane.siteHeight * plane.step;
    words[(scratch + STEPS[side]) / 4 + i] = plane.step;
  });
}

/** The planes as numbers, which copies may stand in for. */
const sides = (image, order) => order.map(i => {
  const at = image.form.order[i];
  const {offset, step, rowBytes, rows, bytes} = image.planes[at];
  return {offset, step, rowBytes, rows, bytes, siteHeight: image.form.planes[at].height};
});

function checkSteps(call, side, planes, argument) {
  const {passed} = call.f;
  const takes = name => passed.some(p => p.startsWith(side + name));
  if (takes('*') && takes('step0') && planes.some(plane => plane.step !== planes[0].step))
    call.refuse(argument, 'must have planes of one step');
  if (!takes('step') && planes.some(plane => plane.step !== plane.rowBytes && plane.rows > 1))
    call.refuse(argument, 'must have rows that follow each other, for the function takes no step');
}

function checkOverlap(call, source, target) {
  for (const [i, plane] of target.entries())
    for (const other of target.slice(i + 1)) if (overlap(plane, other)) call.refuse('out', 'shares memory between its planes');
  const isSame = call.f.worksInPlace && source.every((plane, i) => plane.offset === target[i]?.offset && plane.step === target[i].step);
  if (!isSame && source.some(a => target.some(b => overlap(a, b))))
    call.refuse('out', call.f.worksInPlace ? 'shares memory with source without being the same image' : 'shares memory with source');
}

function alphaOf(call, extras, target) {
  const isSigned = target.element === '16s';
  const value = extras.aval ?? target.opaque;
  return target.element === '32f' ? call.real({aval: value}, 'aval')
    : call.number({aval: value}, 'aval', isSigned ? -32768 : 0, target.opaque);
}

function gridOf(call, extras, source) {
  const given = extras.grid ?? source.grid;
  if (typeof given === 'string' && !GRIDS.includes(given)) call.refuse('grid', `must be one of ${GRIDS.join(', ')}, or their number`);
  return typeof given === 'string' ? GRIDS.indexOf(given) : call.number({grid: given}, 'grid', -(2 ** 31), 2 ** 31 - 1);
}

function regionOf(call, extras, source) {
  const [x, y, width, height] = extras.region ?? [0, 0, source.width, source.height];
  const isInside = [x, y, width, height].every(Number.isInteger) && x >= 0 && y >= 0 && width >= 1 && height >= 1
    && x + width <= source.width && y + height <= source.height;
  if (!isInside) call.refuse('region', 'must be x, y, width and height inside the image');
  return {x, y, width, height};
}

/** Writes numbers to the scratch memory in the type that the function takes. */
function coefficients(call, extras, name, kind) {
  const count = parseInt(kind, 10);
  if (extras[name] === undefined) call.refuse(name, 'must be given');
  const numbers = Array.from(extras[name]).flat();
  if (numbers.length !== count || !numbers.every(n => typeof n === 'number')) call.refuse(name, `must have ${count} numbers`);
  const array = kind.endsWith('d') ? Float64Array : Float32Array;
  new array(call.heap.memory.buffer, call.heap.scratch + NUMBERS, count).set(numbers);
  return call.heap.scratch + NUMBERS;
}

const GOES_BEYOND = {
  '': () => false,
  pair: ({width, height}) => width > 1 && height > 1 && (width >> 1) % 4 === 2,
  corner: ({width, height}) => width % 2 === 1 && height % 2 === 1,
  notAWord: ({width}) => width === 1,
};

function copyRows(heap, from, to) {
  const bytes = new Uint8Array(heap.memory.buffer);
  for (let y = 0; y < from.rows; ++y)
    bytes.copyWithin(to.offset + y * to.step, from.offset + y * from.step, from.offset + y * from.step + from.rowBytes);
}

/** A function of the package: it takes images and what else the C function is told, and returns the destination. */
export function caller(f, heap, exportsOf, warn) {
  const extrasOfAll = Object.freeze(extrasOf(f));
  const known = Object.keys(extrasOfAll);
  const called = (source, out, extras = {}) => {
    const call = new Call(f, heap);
    const entry = exportsOf(f.module, f.name)[f.name];
    for (const name of Object.keys(extras)) if (!known.includes(name)) call.refuse(name, `is no argument; ${known.length ? `there are ${known.join(', ')}` : 'there is none beside images'}`);
    call.image('source', source);
    const conversion = chosen(call, source, f.hasSource ? 'source' : 'target', 'source');
    const size = {width: source.width, height: source.height};
    const made = [];
    try {
      let target = f.hasSource ? out : source;
      let region;
      if (known.includes('grid')) region = regionOf(call, extras, source);
      const bitOffset = known.includes('dstBitOffset') ? call.number(extras, 'dstBitOffset', -(2 ** 31), 2 ** 31 - 1, 0) : 0;
      const written = region ?? {width: size.width + Math.max(bitOffset, 0) % 8, height: size.height};
      if (f.beyond === 'notAWord' && size.width === 1)
        call.refuse('source', 'must be 2 or more pixels wide, for one alone doesn\'t become a word');
      let kind = conversion;
      if (target == null) {
        target = Image.make(heap, conversion.target, written.width, written.height);
        target.bytes.fill(0);
        made.push(target);
      } else if (f.hasSource) {
        call.image('out', target);
        kind = f.conversions.find(c => c.source === conversion.source && c.target.number === target.form.canonical)
          ?? chosen(call, target, 'target', 'out');
        if (kind.source !== conversion.source) call.refuse('out', `must be of ${conversion.target.name}, not ${target.format}`);
        if (target.width !== written.width || target.height !== written.height)
          call.refuse('out', `must be of ${written.width} x ${written.height}, not ${target.width} x ${target.height}`);
      }
      let read = f.hasSource ? sides(source, kind.sourceOrder) : [];
      let stored = sides(target, kind.targetOrder);
      checkOverlap(call, read, stored);
      checkSteps(call, 'S', read, 'source');
      checkSteps(call, 'D', stored, f.hasSource ? 'out' : 'source');
      if (f.needsEqualSteps && stored[1].step !== stored[2].step && size.height > 1)
        call.refuse('out', 'must have both planes of chroma with one step');
      let above = 0;
      if (known.includes('above')) {
        above = call.number(extras, 'above', 0, size.height, 0);
        if (above % 2) call.refuse('above', 'must be even');
        if ([4, 16].includes(extras.layout) && above < 4)
          call.refuse('above', 'must be 4 or more, for such a slice looks at the rows above it');
      }
      const part = {width: size.width, height: size.height - above};
      const isRoomy = GOES_BEYOND[f.beyond](part);
      const roomy = (form, planes, order) => {
        const copy = Image.make(heap, form, size.width, size.height, 2);
        made.push(copy);
        const laid = sides(copy, order);
        planes.forEach((plane, i) => copyRows(heap, plane, laid[i]));
        return laid;
      };
      const own = stored;
      if (isRoomy) {
        read = roomy(kind.source, read, kind.sourceOrder);
        stored = roomy(kind.target, stored, kind.targetOrder);
      }
      let temporary, temporaryStep = 0;
      if (f.passed.includes('pTmp')) {
        temporaryStep = (region.width + TEMPORARY_PIXELS) * source.form.array.BYTES_PER_ELEMENT;
        temporary = heap.allocate(temporaryStep * TEMPORARY_ROWS);
        made.push({free: () => heap.free(temporary)});
      }
      lay(call, 'S', read, above);
      lay(call, 'D', stored, above);
      const {words, scratch} = heap;
      words.set([part.width, part.height], (scratch + SIZE) / 4);
      if (region) words.set([region.x, region.y, region.width, region.height], (scratch + REGION) / 4);
      const highest = target.form.array.BYTES_PER_ELEMENT === 1 ? 256 : 65536;
      const any = [-(2 ** 31), 2 ** 31 - 1];
      const values = {
        roiSize: () => scratch + SIZE, srcSize: () => scratch + SIZE, srcRoi: () => scratch + REGION,
        aval: () => alphaOf(call, extras, target.form),
        vMin: () => call.real(extras, 'vMin', 0), vMax: () => call.real(extras, 'vMax', 1),
        noise: () => call.number(extras, 'noise', ...any, 0), dtype: () => call.number(extras, 'dtype', ...any, 0),
        levels: () => call.number(extras, 'levels', ...any, highest), threshold: () => call.number(extras, 'threshold', 0, 255, 127),
        dstBitOffset: () => bitOffset, layout: () => call.number(extras, 'layout', ...any, ALL_SLICES),
        grid: () => gridOf(call, extras, source.form), interpolation: () => 0, unused1: () => 0, unused2: () => 0,
        pTmp: () => temporary.address, tmpStep: () => temporaryStep,
      };
      const passed_ = f.passed.map(passed => {
        const [name, kindOfNumbers] = passed.split(':');
        if (kindOfNumbers) return coefficients(call, extras, name, kindOfNumbers);
        const side = {S: 'S', D: 'D'}[name[0]];
        if (!side) return values[name]();
        if (name === `${side}*`) return scratch + PLANES[side];
        if (name === `${side}steps`) return scratch + STEPS[side];
        const isStep = name.startsWith('step', 1);
        return words[(scratch + (isStep ? STEPS : PLANES)[side]) / 4 + Number(name.slice(isStep ? 5 : 1))];
      });
      const status = entry(...passed_);
      if (status < 0) refuseStatus(call, status, read, bitOffset);
      if (isRoomy) stored.forEach((plane, i) => copyRows(heap, {...plane, rowBytes: own[i].rowBytes}, own[i]));
      if (made[0] === target) made.shift();
      if (status >= WARNINGS_FROM) {
        const [statusName, meaning] = statuses[status] ?? ['a status without a name', ''];
        warn(new ZelError(`${statusName}: ${meaning}`, {function: f.name, status, statusName}));
      }
      return target;
    } finally {
      for (const one of made) one.free();
    }
  };
  Object.defineProperty(called, 'name', {value: f.name});
  called.conversions = Object.freeze(f.conversions.map(c => Object.freeze({source: c.source.name, target: c.target.name})));
  called.extras = extrasOfAll;
  return Object.freeze(called);
}

function refuseStatus(call, status, read, bitOffset) {
  const [statusName, meaning] = statuses[status] ?? ['a status without a name', ''];
  const {f} = call;
  const argument = {
    zelStsStepErr: f.hasSource && read[0]?.step > 0 ? 'out' : 'source', zelStsBadArgErr: f.passed.includes('grid') ? 'grid' : 'source',
    zelStsRangeErr: 'vMax', zelStsDitherLevelsErr: 'levels', zelStsNoiseValErr: 'noise', zelStsDitherTypeErr: 'dtype',
    zelStsSizeErr: bitOffset < 0 ? 'dstBitOffset' : 'source',
  }[statusName] ?? 'source';
  call.refuse(argument, `${statusName} (${status}): ${meaning}`, {status, statusName});
}
