// In the entries of functions: "Run it", with samples that the reader may change, by the package for JavaScript that lies beside this
// script. What stands in the fields first is the worked pixel. No module, which browsers don't take from a disk.
(() => {
const PACKAGE = './zelcc/index.js', FORMATS = './zelcc/formats.js', FUNCTIONS = './zelcc/functions.js';
// Of what a function takes beside images, where that has no default: the identity, the weights of gray, a grid.
const GIVEN = {
  matrix: count => Array.from({length: count}, (_, i) => Number(i % 5 === 0)),
  coeffs: () => [0.299, 0.587, 0.114],
  grid: () => 'rggb',
};

let loading;
const load = () => loading ??= (async () => {
  const [{load}, {functionList}, {extrasOf}] = await Promise.all([PACKAGE, FORMATS, FUNCTIONS].map(name => import(name)));
  return {zelcc: await load({warn: () => {}}), functionList, extrasOf};
})();

function element(tag, properties, ...children) {
  const made = Object.assign(document.createElement(tag), properties);
  made.append(...children);
  return made;
}

// "RGB (255, 0, 0)" is R 255, G 0, B 0; without a name the numbers are in the order of the samples.
function workedColour(entry) {
  const field = [...entry.querySelectorAll('dt')].find(dt => dt.textContent.startsWith('Worked pixel'));
  const found = field?.nextElementSibling.textContent.match(/(?:\b([A-Za-z]+)\d* )?\(([-\d., ]+)\)/);
  if (!found) return [];
  const letters = found[1]?.match(/C[a-z]|[A-Z]|[a-z]/g) ?? [], numbers = found[2].split(',').map(Number);
  return numbers.map((value, i) => ({channel: letters[i], value}));
}

function fillWith(image, colour) {
  let order = 0;
  for (const plane of image.planes) {
    const {data, channels} = plane;
    channels.forEach((channel, k) => {
      const named = colour.find(c => c.channel === channel), value = named ?? colour[order++ % Math.max(colour.length, 1)];
      for (let i = k; i < data.length; i += channels.length) data[i] = value?.value ?? 0;
    });
  }
}

// The samples of an image, a line for each plane, its rows divided.
const shown = image => image.planes.map(plane => {
  const rows = Array.from({length: plane.rows}, (_, y) => [...plane.row(y)].map(v => Number.isInteger(v) ? v : v.toPrecision(7)).join(' '));
  return `${plane.channels.join(' ')}: ${rows.join(' / ')}`;
}).join('\n');

// Whole sites of both sides, and rows that are long enough for what looks at neighbours.
function sizeOf({source, target}, extras) {
  const side = name => Math.max(source.site[name], target.site[name]);
  const least = 'grid' in extras ? 6 : 'layout' in extras ? 4 : 1;
  return [Math.max(side('width'), least), Math.max(side('height'), least)];
}

async function open(entry, name, box) {
  const {zelcc, functionList, extrasOf} = await load();
  const f = functionList.find(f => f.name === name), [conversion] = f.conversions, extras = extrasOf(f);
  const given = Object.fromEntries(Object.entries(GIVEN).filter(([key]) => key in extras).map(([key, value]) => [key, value(extras[key])]));
  const source = zelcc.image(conversion.source.name, ...sizeOf(conversion, extras));
  fillWith(source, workedColour(entry));
  const output = element('pre', {className: 'run-output'});
  output.setAttribute('role', 'status');
  const fields = source.planes.map((plane, p) => {
    const input = element('input', {value: [...plane.data].join(' '), spellcheck: false});
    input.addEventListener('input', call);
    return element('label', {}, `${conversion.source.name}, ${source.width} x ${source.height}: ${source.planes[p].channels.join(' ')} `, input);
  });

  function call() {
    fields.forEach((field, p) => {
      const numbers = field.querySelector('input').value.split(/[\s,]+/).filter(Boolean).map(Number);
      const {data} = source.planes[p];
      for (let i = 0; i < data.length; ++i) data[i] = numbers.length ? numbers[i % numbers.length] : 0;
    });
    try {
      const result = zelcc.functions[name](source, undefined, given);
      output.textContent = `${conversion.target.name}\n${shown(result)}`;
      result.free();
    } catch (error) {
      output.textContent = error.message;
    }
  }
  box.replaceChildren(...fields, output);
  call();
  fields[0]?.querySelector('input').focus();
}

if (location.protocol !== 'file:')
  for (const signature of document.querySelectorAll('dt.sig[id^="c.zeli"]')) {
    const name = signature.id.slice(2), entry = signature.nextElementSibling, box = element('div', {className: 'run'});
    const button = element('button', {type: 'button', textContent: 'Run it'});
    button.setAttribute('aria-label', `Run ${name}`);
    button.addEventListener('click', () => open(entry, name, box).catch(() => {
      box.textContent = 'The package for JavaScript isn\'t part of this site: docs/site/build takes it where it is built.';
    }));
    box.append(button);
    entry.append(box);
  }
})();
