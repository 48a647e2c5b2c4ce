// The page "Try it": a picture or a frame through a chain of formats and back, by the package for JavaScript that lies beside this script.
// No module, which browsers don't take from a disk, so that it can say so.
(() => {
const PACKAGE = './zelcc/index.js', FORMATS = './zelcc/formats.js';
const SIDE = 720;  // of the pictures, at most
const METHODS = ['', 'filter', 'dither'];
const at = id => document.getElementById(`try-${id}`);
const status = at('status'), canvas = at('canvas');
const context = canvas.getContext('2d', {willReadFrequently: true});

let zelcc, functionList;
let given;       // what is converted: a picture as ImageData, or a file of frames with the place of the first one and the bytes between
let source;      // ImageData of what is converted
let result;      // ImageData, or null where the chain is refused
let images = []; // of the chain, the first is the source
let turn = 0;    // of those that wait for a file
let pixel = {x: 0, y: 0};

// What the reader chooses is in the address, so that it can be passed on.
const CHOICES = {from: 'rgba', width: '1920', height: '1080', frame: '1', to: 'nv12', then: '', matrix: '601', range: '', method: '', view: 'slider'};
const chosen = name => at(name).value;

function readAddress() {
  const said = new URLSearchParams(location.hash.slice(1));
  for (const [name, usual] of Object.entries(CHOICES)) {
    at(name).value = said.get(name) ?? usual;
    if (!at(name).value || !at(name).checkValidity()) at(name).value = usual;  // of choices none is chosen
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

const chain = () => [chosen('from'), chosen('to'), chosen('then'), chosen('from')].filter(Boolean).filter((name, i, all) => name !== all[i - 1]);

function shownAs(image) {
  const made = image.format === 'rgba' ? image : zelcc.convert(image, 'rgba', {...options(), method: undefined});
  const {data, width, height} = made.toImageData(), shown = new ImageData(new Uint8ClampedArray(data), width, height);
  if (made !== image) made.free();
  return shown;
}

// The picture as an image of the format that is chosen, or the frame that is chosen.
async function first() {
  if (given instanceof ImageData) {
    const picture = zelcc.from(given);
    if (chosen('from') === 'rgba') return picture;
    try {
      return zelcc.convert(picture, chosen('from'), {...options(), method: undefined});
    } finally {
      picture.free();
    }
  }
  const {file, begin, between} = given, image = zelcc.image(chosen('from'), Number(chosen('width')), Number(chosen('height')));
  const bytes = image.bytes.length, count = Math.floor((file.size - begin + between) / (bytes + between));
  const number = Math.min(Number(chosen('frame')), count), at = begin + (number - 1) * (bytes + between);
  try {
    if (!count) throw Error(`${file.name} has ${file.size - begin} bytes, and a frame of ${image.format} of this size ${bytes}.`);
    image.set(new Uint8Array(await file.slice(at, at + bytes).arrayBuffer()));
    image.note = `frame ${number} of ${count}, `;
    return image;
  } catch (error) {
    image.free();
    throw error;
  }
}

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

async function run() {
  const own = ++turn;
  writeAddress();
  let image;
  try {
    image = await first();
  } catch (error) {
    if (own === turn) at('figures').textContent = error.message;
    return;
  }
  if (own !== turn) {
    image.free();
    return;
  }
  for (const one of images) one.free();
  images = [image];
  source = shownAs(image);
  result = null;
  const names = chain(), all = steps();
  try {
    const begin = performance.now();
    for (const {to, options} of all) images.push(zelcc.convert(images.at(-1), to, options));
    const taken = performance.now() - begin;
    result = shownAs(images.at(-1));
    at('figures').textContent = `${names.join(' → ')}: ${image.note ?? ''}${quality()}, ${taken.toFixed(1)} ms for ${image.width} x ${image.height} pixels.`;
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
  if (mean) return `PSNR ${(10 * Math.log10(255 ** 2 / mean)).toFixed(1)} dB`;
  const before = images[0].bytes;
  return images.at(-1).bytes.every((byte, i) => byte === before[i]) ? 'every byte as before' : 'every pixel as before, though not every sample';
}

// The program reduces the source first, unless one function dithers.
function isDitherOfProgram(from, to, options) {
  const way = zelcc.way(from, to, options);
  return way.length === 1 || (zelcc.formats[from].model === 'ycbcr' && way.at(-1).function?.includes('Dither_'));
}

function showCalls(all) {
  const calls = [], refused = [], python = [], shell = [];
  all.forEach(({from, to, options}, i) => {
    try {
      calls.push(...zelcc.way(from, to, options).map(step => ({...step, options})));
    } catch (error) {
      refused.push(`/* ${error.message} */`);
    }
    const said = Object.entries(options);
    python.push(`image = zelcc.convert(image, "${from}", "${to}"${said.map(([name, value]) => `, ${name}="${value}"`).join('')})`);
    const name = i ? `step${i}.raw` : given.file ? given.file.name.replace(/[^\w.-]/g, '_') : from === 'rgba' ? 'picture.png' : `picture.${from}`;
    const input = name === 'picture.png' ? name : `--from ${from} --size ${source.width}x${source.height} ${name}`;
    const output = i + 1 < all.length ? `step${i + 1}.raw` : 'result.png';
    const words = said.map(([name, value]) => name !== 'method' ? ` --${name} ${value}` : value === 'filter' ? ' --filter' : ' --dither bayer');
    if (options.method === 'dither' && !isDitherOfProgram(from, to, options)) shell.push('# the program dithers this step in another way:');
    shell.push(`zelcc convert ${input} ${output} --to ${to}${words.join('')}`);
  });
  at('c').textContent = refused.length ? refused.join('\n') : callsOfC(calls, zelcc.formats, functionList, source);
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
    const lowest = form.element === '8s' || form.element === '16s' ? -(2 ** (form.bits - 1)) : 0;
    for (let y = 0; y < plane.rows; ++y)
      for (let x = 0; x < across; ++x) {
        const value = (data[y * plane.stride + x * count + k] / 2 ** form.shift - lowest) / top * 255;
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
    drawPlanes(images[1] ?? images[0]);
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
  const chained = result ? images.filter(({format}) => format !== 'rgba') : [];
  const column = Math.max(...chained.map(({format}) => format.length), 'source'.length) + 1;
  const lines = [`pixel ${x}, ${y}`, `${'source'.padEnd(column)} ${bytes(source)}`];
  const hex = (image, begin, count) => [...image.view(Uint8Array, begin, count)].map(byte => byte.toString(16).padStart(2, '0')).join(' ');
  for (const image of chained) {
    const planes = image.planes.map((plane, p) => {
      const {width, height, bytes} = image.form.planes[p], count = plane.channels.length;
      if (isPacked(image)) {
        const group = Math.min(bytes, 16), begin = plane.offset + Math.floor(y / height) * plane.step + Math.floor(x / width * bytes / group) * group;
        return `bytes ${hex(image, begin, group)}`;
      }
      const first = Math.floor(y / height) * plane.stride + Math.floor(x / width) * count;
      const samples = plane.channels.map((channel, k) => `${channel} ${plane.data[first + k]}`).join(', ');
      return `${samples} (bytes ${hex(image, plane.offset + first * image.form.array.BYTES_PER_ELEMENT, bytes)})`;
    });
    lines.push(`${image.format.padEnd(column)} ${planes.join(' | ')}`);
  }
  if (result) lines.push(`${'result'.padEnd(column)} ${bytes(result)}`);
  at('pixel').textContent = lines.join('\n');
}

function listen() {
  at('file').addEventListener('change', async () => take(at('file').files[0]));
  for (const name of ['from', 'width', 'height', 'frame', 'to', 'then', 'matrix', 'range', 'method']) at(name).addEventListener('change', run);
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

// Of Y4M by its header; of other frames what the name of the file tells, as that of clip_1920x1080.nv12 does.
async function framesOf(file) {
  const [head] = new TextDecoder('latin1').decode(await file.slice(0, 1024).arrayBuffer()).split('\n', 1);
  const given = {file, begin: 0, between: 0}, said = {};
  if (head.startsWith('YUV4MPEG2 ')) {
    const field = letter => head.split(' ').slice(1).find(word => word.startsWith(letter))?.slice(1);
    const [, sites, bits] = (field('C') ?? '420').match(/^(mono|\d{3})(?:\D*?p?(\d+))?/) ?? [];
    said.from = sites === 'mono' ? `gray${bits ? `${bits}le` : ''}` : `yuv${sites}p${bits && bits !== '2' ? `${bits}le` : ''}`;
    [said.width, said.height] = [field('W'), field('H')];
    said.range = head.includes(' XCOLORRANGE=FULL') ? 'full' : '';
    given.between = 'FRAME\n'.length;
    given.begin = head.length + 1 + given.between;
  } else {
    [, said.width, said.height] = file.name.match(/(\d{1,5})x(\d{1,5})/) ?? [];
    const words = file.name.toLowerCase().split(/[^a-z0-9]+/).reverse();
    said.from = words.map(word => ({yuv: 'yuv420p', i420: 'yuv420p', p010: 'p010le', rgb: 'rgb24', bgr: 'bgr24', yuy2: 'yuyv422', uyvy: 'uyvy422'}[word] ?? word))
      .find(word => [...at('from').options].some(({value}) => value === word));
  }
  for (const [name, value] of Object.entries(said)) if (value !== undefined) at(name).value = value;
  at('frame').value = 1;
  return given;
}

async function take(file) {
  if (!file) return;
  try {
    given = await pictureOf(file);
    at('from').value = CHOICES.from;
  } catch {
    given = await framesOf(file);
  }
  for (const field of document.querySelectorAll('.try-raw')) field.hidden = !given.file;
  run();
}

async function start() {
  if (location.protocol === 'file:') {
    status.textContent = 'Browsers load modules from a server alone: python3 -m http.server in the folder of this site is one.';
    return;
  }
  try {
    const [{load}, lists] = await Promise.all([import(PACKAGE), import(FORMATS)]);
    ({functionList} = lists);
    zelcc = await load({warn: () => {}});
  } catch (error) {
    status.textContent = `The package for JavaScript isn't part of this site: docs/site/build takes it where it is built. (${error.message})`;
    return;
  }
  const names = Object.values(zelcc.formats).filter(({name, model}) => model !== 'mosaic' && (name === 'rgba' || leads(name)));
  fill('from', names.map(({name, title}) => [name, `${name}: ${title}`]));
  fill('to', names.map(({name, title}) => [name, `${name}: ${title}`]));
  fill('then', [['', 'nothing else'], ...names.map(({name}) => [name])]);
  fill('matrix', ['601', '709', '2020', '240m', 'fcc', 'ycgco', '709-full', 'yuv'].map(name => [name]));
  fill('range', [['', 'of the functions'], ['limited'], ['full']]);
  fill('method', METHODS.map(name => [name, name || 'plain']));
  readAddress();
  given = ownPicture();
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
