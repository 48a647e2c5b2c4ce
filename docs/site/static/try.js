// The page "Try it": a picture through a chain of formats and back to RGBA, by the package for JavaScript that lies beside this script. No
// module, which browsers don't take from a disk, so that it can say so.
(() => {
const PACKAGE = './zelcc/index.js';
const SIDE = 720;  // of the pictures, at most
const METHODS = ['', 'filter', 'dither'];
const at = id => document.getElementById(`try-${id}`);
const status = at('status'), canvas = at('canvas');
const context = canvas.getContext('2d', {willReadFrequently: true});

let zelcc;
let source;      // ImageData
let result;      // ImageData, or null where the chain is refused
let images = []; // of the chain, the first is the source
let pixel = {x: 0, y: 0};

// What the reader chooses is in the address, so that it can be passed on.
const CHOICES = {to: 'nv12', then: '', matrix: '601', range: '', method: '', view: 'slider'};
const chosen = name => at(name).value;

function readAddress() {
  const given = new URLSearchParams(location.hash.slice(1));
  for (const [name, usual] of Object.entries(CHOICES)) {
    const value = given.get(name) ?? usual;
    at(name).value = [...at(name).options].some(option => option.value === value) ? value : usual;
  }
}

function writeAddress() {
  const said = Object.entries(CHOICES).filter(([name, usual]) => chosen(name) !== usual).map(([name]) => [name, chosen(name)]);
  history.replaceState(null, '', `#${new URLSearchParams(said)}`);
}

function fill(name, options) {
  at(name).replaceChildren(...options.map(([value, text]) => new Option(text ?? value, value)));
}

// The picture that the page has itself: hues, a ramp of gray, fine lines and text.
function ownPicture() {
  const own = new OffscreenCanvas(480, 320), c = own.getContext('2d');
  const hues = c.createLinearGradient(0, 0, 480, 0);
  for (let i = 0; i <= 12; ++i) hues.addColorStop(i / 12, `hsl(${30 * i} 100% 50%)`);
  c.fillStyle = hues;
  c.fillRect(0, 0, 480, 200);
  const light = c.createLinearGradient(0, 0, 0, 200);
  light.addColorStop(0, '#fff');
  light.addColorStop(0.5, '#fff0');
  light.addColorStop(0.5, '#0000');
  light.addColorStop(1, '#000');
  c.fillStyle = light;
  c.fillRect(0, 0, 480, 200);
  const gray = c.createLinearGradient(0, 0, 480, 0);
  gray.addColorStop(0, '#000');
  gray.addColorStop(1, '#fff');
  c.fillStyle = gray;
  c.fillRect(0, 200, 480, 40);
  for (let x = 0; x < 240; x += 2) {
    c.fillStyle = x % 4 ? '#e02020' : '#2040e0';
    c.fillRect(x, 240, 2, 80);
  }
  c.fillStyle = '#f0c020';
  c.fillRect(240, 240, 240, 80);
  c.fillStyle = '#202080';
  c.font = '28px sans-serif';
  c.fillText('4:2:0 or 4:4:4?', 250, 292);
  return c.getImageData(0, 0, 480, 320);
}

async function pictureOf(file) {
  const bitmap = await createImageBitmap(file);
  const scale = Math.min(1, SIDE / Math.max(bitmap.width, bitmap.height));
  const scaled = new OffscreenCanvas(Math.max(1, Math.round(bitmap.width * scale)), Math.max(1, Math.round(bitmap.height * scale)));
  scaled.getContext('2d').drawImage(bitmap, 0, 0, scaled.width, scaled.height);
  return scaled.getContext('2d').getImageData(0, 0, scaled.width, scaled.height);
}

function options() {
  const found = {matrix: chosen('matrix')};
  if (chosen('range')) found.range = chosen('range');
  if (chosen('method')) found.method = chosen('method');
  return found;
}

const chain = () => ['rgba', chosen('to'), chosen('then'), 'rgba'].filter((name, i, all) => name && name !== all[i - 1]);

// Each step of the chain with what it is converted by: not every step has the method.
function steps() {
  const names = chain(), {method, ...rest} = options();
  return names.slice(1).map((to, i) => {
    const step = {from: names[i], to, options: options()};
    try {
      if (method) zelcc.way(step.from, to, step.options);
    } catch {
      step.options = rest;
    }
    return step;
  });
}

function run() {
  for (const image of images) image.free();
  images = [];
  result = null;
  writeAddress();
  const names = chain(), all = steps();
  try {
    images.push(zelcc.from(source));
    const begin = performance.now();
    for (const {to, options} of all) images.push(zelcc.convert(images.at(-1), to, options));
    const taken = performance.now() - begin;
    const {data, width, height} = images.at(-1).toImageData();
    result = new ImageData(new Uint8ClampedArray(data), width, height);
    at('figures').textContent = `${names.join(' → ')}: ${quality()}, ${taken.toFixed(1)} ms for ${width} x ${height} pixels.`;
  } catch (error) {
    at('figures').textContent = error.message;
  }
  showCalls(all);
  draw();
}

function quality() {
  let sum = 0;
  for (let i = 0; i < source.data.length; ++i) if (i % 4 !== 3) sum += (source.data[i] - result.data[i]) ** 2;
  const mean = sum / (source.data.length / 4 * 3);
  return mean === 0 ? 'every byte as before' : `PSNR ${(10 * Math.log10(255 ** 2 / mean)).toFixed(1)} dB`;
}

// The program reduces the source first, unless one function dithers.
function isDitherOfProgram(from, to, options) {
  const way = zelcc.way(from, to, options);
  return way.length === 1 || (zelcc.formats[from].model === 'ycbcr' && way.at(-1).function?.includes('Dither_'));
}

function showCalls(all) {
  const calls = [], python = [], shell = [];
  all.forEach(({from, to, options}, i) => {
    try {
      for (const step of zelcc.way(from, to, options))
        calls.push(`${step.function ?? '(samples are moved)'}  /* ${step.source} to ${step.target} */`);
    } catch (error) {
      calls.push(`/* ${error.message} */`);
    }
    const said = Object.entries(options);
    python.push(`image = zelcc.convert(image, "${from}", "${to}"${said.map(([name, value]) => `, ${name}="${value}"`).join('')})`);
    const input = i ? `--from ${from} --size ${source.width}x${source.height} step${i}.raw` : 'picture.png';
    const output = i + 1 < all.length ? `step${i + 1}.raw` : 'result.png';
    const words = said.map(([name, value]) => name !== 'method' ? ` --${name} ${value}` : value === 'filter' ? ' --filter' : ' --dither bayer');
    if (options.method === 'dither' && !isDitherOfProgram(from, to, options)) shell.push('# the program dithers this step in another way:');
    shell.push(`zelcc convert ${input} ${output} --to ${to}${words.join('')}`);
  });
  at('c').textContent = calls.join('\n');
  at('python').textContent = python.join('\n');
  at('shell').textContent = shell.join('\n');
}

function difference() {
  const made = new ImageData(source.width, source.height);
  for (let i = 0; i < made.data.length; ++i)
    made.data[i] = i % 4 === 3 ? 255 : 8 * Math.abs(source.data[i] - result.data[i]);
  return made;
}

// Samples lie in parts of a word, or in groups as those of v210.
const isPacked = ({form}) => form.planes.some(({bytes, channels}) => bytes !== channels.length * form.array.BYTES_PER_ELEMENT);
const UNPACKED = {rgb: 'rgb24', gray: 'gray', ycbcr: 'yuv444p10le'};

// Each channel of each plane as an image in gray.
function drawPlanes(image) {
  if (isPacked(image)) {
    const unpacked = zelcc.convert(image, UNPACKED[image.form.model], {matrix: chosen('matrix')});
    drawPlanes(unpacked);
    unpacked.free();
    return;
  }
  const form = zelcc.formats[image.format];
  const tiles = image.planes.flatMap((plane, p) => plane.channels.map((channel, k) => {
    const {width} = form.planes[p], count = plane.channels.length, data = plane.data;
    const across = Math.ceil(image.width / width), tile = new ImageData(across, plane.rows);
    const top = data instanceof Float32Array || data instanceof Float64Array ? 1 : 2 ** form.bits - 1;
    const shift = data.BYTES_PER_ELEMENT === 2 && Math.max(...data.subarray(0, 4096)) > top ? 16 - form.bits : 0;
    for (let y = 0; y < plane.rows; ++y)
      for (let x = 0; x < across; ++x) {
        const value = Number(data[y * plane.stride + x * count + k]) / 2 ** shift / top * 255;
        tile.data.set([value, value, value, 255], 4 * (y * across + x));
      }
    return {channel, tile};
  }));
  canvas.width = source.width;
  canvas.height = tiles.reduce((sum, {tile}) => sum + tile.height + 4, 0);
  let y = 0;
  for (const {tile} of tiles) {
    context.putImageData(tile, 0, y);
    y += tile.height + 4;
  }
}

function draw() {
  const view = result ? chosen('view') : 'source';
  at('slide').hidden = view !== 'slider';
  if (view === 'planes') {
    drawPlanes(images[1]);
  } else {
    canvas.width = source.width;
    canvas.height = source.height;
    context.putImageData(view === 'difference' ? difference() : source, 0, 0);
    const x = Math.round(source.width * at('slider').value / 100);
    if (view === 'slider') context.putImageData(result, 0, 0, x, 0, source.width - x, source.height);
  }
  showPixel();
}

function showPixel() {
  const x = Math.min(Math.max(pixel.x, 0), source.width - 1), y = Math.min(Math.max(pixel.y, 0), source.height - 1);
  pixel = {x, y};
  const bytes = ({data, width}) => [...data.subarray(4 * (y * width + x), 4 * (y * width + x) + 4)].join(' ');
  const lines = [`pixel ${x}, ${y}`, `source  ${bytes(source)}`];
  for (const image of result ? images.slice(1, -1) : []) {
    const planes = image.planes.map((plane, p) => {
      const {width, height, bytes} = image.form.planes[p], count = plane.channels.length;
      if (isPacked(image)) {
        const group = Math.min(bytes, 16), begin = plane.offset + Math.floor(y / height) * plane.step + Math.floor(x / width * bytes / group) * group;
        return `bytes ${[...image.view(Uint8Array, begin, group)].map(byte => byte.toString(16).padStart(2, '0')).join(' ')}`;
      }
      const first = Math.floor(y / height) * plane.stride + Math.floor(x / width) * count;
      return plane.channels.map((channel, k) => `${channel} ${plane.data[first + k]}`).join(', ');
    });
    lines.push(`${image.format.padEnd(7)} ${planes.join(' | ')}`);
  }
  if (result) lines.push(`result  ${bytes(result)}`);
  at('pixel').textContent = lines.join('\n');
}

function listen() {
  at('file').addEventListener('change', async () => take(at('file').files[0]));
  for (const name of ['to', 'then', 'matrix', 'range', 'method']) at(name).addEventListener('change', run);
  at('view').addEventListener('change', () => {
    writeAddress();
    draw();
  });
  at('slider').addEventListener('input', draw);
  addEventListener('hashchange', () => {
    readAddress();
    run();
  });
  canvas.addEventListener('pointermove', event => {
    const box = canvas.getBoundingClientRect();
    pixel = {x: Math.floor((event.clientX - box.left) / box.width * canvas.width), y: Math.floor((event.clientY - box.top) / box.height * canvas.height)};
    showPixel();
  });
  at('stage').addEventListener('keydown', event => {
    const move = {ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1]}[event.key];
    if (!move) return;
    event.preventDefault();
    const far = event.shiftKey ? 10 : 1;
    pixel = {x: pixel.x + far * move[0], y: pixel.y + far * move[1]};
    showPixel();
  });
  at('stage').addEventListener('dragover', event => event.preventDefault());
  at('stage').addEventListener('drop', event => {
    event.preventDefault();
    take(event.dataTransfer.files[0]);
  });
}

async function take(file) {
  if (!file) return;
  try {
    source = await pictureOf(file);
    run();
  } catch {
    at('figures').textContent = `The browser doesn't know ${file.name} as a picture.`;
  }
}

async function start() {
  if (location.protocol === 'file:') {
    status.textContent = 'Browsers load modules from a server alone: python3 -m http.server in the folder of this site is one.';
    return;
  }
  try {
    const {load} = await import(PACKAGE);
    zelcc = await load({warn: () => {}});
  } catch (error) {
    status.textContent = `The package for JavaScript isn't part of this site: docs/site/build takes it where it is built. (${error.message})`;
    return;
  }
  const names = Object.values(zelcc.formats).filter(({name, model}) => model !== 'mosaic' && name !== 'rgba' && leads(name));
  fill('to', names.map(({name, title}) => [name, `${name}: ${title}`]));
  fill('then', [['', 'nothing else'], ...names.map(({name}) => [name])]);
  fill('matrix', ['601', '709', '2020', '240m', 'fcc', 'ycgco', '709-full', 'yuv'].map(name => [name]));
  fill('range', [['', 'of the functions'], ['limited'], ['full']]);
  fill('method', METHODS.map(name => [name, name || 'plain']));
  readAddress();
  source = ownPicture();
  for (const id of ['stage', 'hint', 'calls']) at(id).hidden = false;
  document.getElementById('try').hidden = false;
  status.textContent = '';
  listen();
  run();
}

function leads(name) {
  try {
    zelcc.way('rgba', name);
    zelcc.way(name, 'rgba');
    return true;
  } catch {
    return false;
  }
}

start();
})();
