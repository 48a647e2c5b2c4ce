// The calls of C by which a chain of conversions is done, as their user would write them.
window.callsOfC = (() => {
const TYPES = {'1u': 'uint8_t', '8u': 'uint8_t', '8s': 'int8_t', '16u': 'uint16_t', '16s': 'int16_t', '32s': 'int32_t', '32u': 'uint32_t',
  '32f': 'float', '64f': 'double'};
const MATRICES = {601: 'zelvMatrix601', 709: 'zelvMatrix709', 2020: 'zelvMatrix2020', '240m': 'zelvMatrix240', fcc: 'zelvMatrixFcc',
  ycgco: 'zelvMatrixYCgCo'};
const OPTIONS = {filter: '&(ZelvOptions){.up = zelvLinear, .down = zelvSited}', dither: '&(ZelvOptions){.dither = zelvOrdered}'};
// What is passed where nothing else is said.
const USUAL = {roiSize: 'size', srcSize: 'size', vMin: '0', vMax: '1', noise: '0', dtype: 'zelDitherNone', threshold: '127', dstBitOffset: '0',
  layout: 'zelSliceTop | zelSliceMiddle | zelSliceBottom', interpolation: '0', unused1: '0', unused2: '0'};

const list = (type, items) => `(${type}[]){${items.join(', ')}}`;
const upTo = count => [...Array(count).keys()];

/** A format of a chain as variables: the planes, named after it, and what lies between their rows. */
class Variable {
  constructor(form, width, taken) {
    this.form = form;
    const word = /^[a-z]/.test(form.name) ? form.name : `image_${form.name}`;
    for (this.name = word; taken.has(this.name);) this.name = `${word}_${taken.size}`;
    taken.add(this.name);
    this.steps = form.planes.map(plane => Math.ceil(width / plane.width) * plane.bytes);
  }

  get declaration() {
    const count = this.steps.length, planes = this.form.planes.map(plane => plane.channels.join(' ')).join('; ');
    return `${TYPES[this.form.element]}* ${this.name}[${count}]; const int32_t ${this.name}Step[] = {${this.steps.join(', ')}};  // ${planes}`;
  }

  plane(i) {
    return `${this.name}[${i}]`;
  }
}

function byFunction(f, from, to) {
  const conversion = f.conversions.find(c => c.source.number === from.form.canonical && c.target.number === to.form.canonical);
  const sides = {S: [from, conversion.sourceOrder], D: [to, conversion.targetOrder]};
  const passed = f.passed.map(argument => {
    const [, side, kind, number] = argument.match(/^([SD])(step|)(\d|s|\*)$/) ?? [];
    if (!side) {
      if (argument === 'aval') return String(to.form.opaque);
      if (argument === 'levels') return to.form.array.BYTES_PER_ELEMENT === 1 ? '256' : '65536';
      return USUAL[argument] ?? `/* ${argument} */`;
    }
    const [variable, order] = sides[side], planes = order.map(i => variable.form.order[i]);
    if (number === 's') return list('const int32_t', planes.map(i => `${variable.name}Step[${i}]`));
    if (kind) return `${variable.name}Step[${planes[number]}]`;
    if (number !== '*') return variable.plane(planes[number]);
    return list(`${side === 'S' ? 'const ' : ''}${TYPES[variable.form.element]}*${side === 'S' ? ' const' : ''}`, planes.map(i => variable.plane(i)));
  });
  return [`${f.name}(${passed.join(', ')});`];
}

function byVideo(number, from, to, {matrix, range, method}) {
  const described = ({form}) => {
    const isRgb = form.model === 'rgb', [layout, components, sampling, depth, alignment] = window.zelvFormats[form.name];
    const colours = isRgb ? 'zelvMatrixRgb, zelvFull' : `${MATRICES[matrix]}, ${range === 'full' ? 'zelvFull' : 'zelvLimited'}`;
    return `&(ZelvFormat){${layout}, "${components}", ${sampling}, ${depth}, ${alignment}, ${colours}, zelvLeft, 0, 0}`;
  };
  const planes = (variable, type) => list(type, variable.steps.map((_, i) =>
    `${TYPES[variable.form.element] === 'uint8_t' ? '' : `(${type.replace(' const', '')})`}${variable.plane(i)}`));
  return [`ZelvPlan plan${number};`, `zelvMakePlan(&plan${number}, ${described(from)},`,
    `    ${described(to)}, ${OPTIONS[method] ?? 'NULL'});`,
    `zelvConvert(&plan${number}, ${planes(from, 'const uint8_t* const')}, ${from.name}Step,`,
    `    ${planes(to, 'uint8_t*')}, ${to.name}Step, size);`];
}

/** `steps` have the names of both formats, the name of the function if there is one, and the options of video. */
return (steps, formats, functionList, {width, height}) => {
  const taken = new Set(), calls = [];
  let from = steps.length && new Variable(formats[steps[0].source], width, taken);
  const variables = [from];
  steps.forEach((step, i) => {
    const to = new Variable(formats[step.target], width, taken), f = functionList.find(f => f.name === step.function);
    if (f) calls.push(...byFunction(f, from, to));
    else if (step.function) calls.push(...byVideo(i + 1, from, to, step.options));
    else calls.push(`/* ${from.name} to ${to.name}: samples are moved, by no function */`);
    variables.push(to);
    from = to;
  });
  return steps.length ? [`const ZelSize size = {${width}, ${height}};`, ...variables.map(variable => variable.declaration), '', ...calls].join('\n') : '';
};
})();
