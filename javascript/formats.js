// Formats and functions as objects, made of the catalogue's rows.
import {formatRows, functionRows, modules} from './catalogue.js';

const ELEMENTS = {
  '1u': Uint8Array, '8u': Uint8Array, '8s': Int8Array, '16u': Uint16Array, '16s': Int16Array, '32s': Int32Array, '32u': Uint32Array,
  '32f': Float32Array, '64f': Float64Array,
};
// The sample of what no light passes through.
const OPAQUE = {'1u': 1, '8u': 255, '8s': 127, '16u': 65535, '16s': 32767, '32s': 2147483647, '32u': 4294967295, '32f': 1, '64f': 1};

const digits = text => [...text].map(Number);
const upTo = count => [...Array(count).keys()];

function formatOf([name, title, element, planeRows, model, bits, grid, shift, canonical, order], number) {
  const planes = planeRows.map(([channels, bytes, width = 1, height = 1]) =>
    Object.freeze({channels: Object.freeze(channels.split(' ')), bytes, width, height}));
  const alphaPlane = planes.findIndex(plane => plane.channels.includes('A'));
  return {
    name, title, element, model, bits, grid, shift, number, alphaPlane, array: ELEMENTS[element], opaque: OPAQUE[element],
    planes: Object.freeze(planes), hasAlpha: alphaPlane >= 0, canonical: canonical ?? number,
    order: order ? digits(order) : upTo(planes.length),
    site: {width: Math.max(...planes.map(p => p.width)), height: Math.max(...planes.map(p => p.height))},
  };
}

export const formatList = formatRows.map((row, number) => Object.freeze(formatOf(row, number)));
/** All formats by name. */
export const formats = Object.freeze(Object.fromEntries(formatList.map(f => [f.name, f])));

function functionOf([name, module, passed, conversions, alpha, beyond, flags]) {
  return {
    name, module: modules[module], passed: passed.split(' '), alpha: {w: 'written', k: 'kept', z: 'zero'}[alpha],
    beyond, worksInPlace: Boolean(flags & 1), needsEqualSteps: Boolean(flags & 2),
    hasSource: passed.startsWith('S'),
    conversions: conversions.map(([source, target, sourceOrder, targetOrder]) => ({
      source: formatList[source], target: formatList[target],
      sourceOrder: sourceOrder ? digits(sourceOrder) : [0], targetOrder: targetOrder ? digits(targetOrder) : [0],
    })),
  };
}

export const functionList = functionRows.map(functionOf);

/** yuvj420p is yuv420p whose range is told by the name. */
export const plainName = name => name.replace(/^yuvj/, 'yuv');
export const saysFullRange = name => name.startsWith('yuvj');

export const ceil = (pixels, site) => Math.ceil(pixels / site);
