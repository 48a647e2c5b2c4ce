// Images in the memory that all modules share.
import {ZelError} from './error.js';
import {ceil, formats} from './formats.js';

const WEB_FORMATS = {
  I420: 'yuv420p', I420A: 'yuva420p', I422: 'yuv422p', I444: 'yuv444p', NV12: 'nv12', RGBA: 'rgba', RGBX: 'rgb0', BGRA: 'bgra',
  BGRX: 'bgr0',
  I420P10: 'yuv420p10le', I420P12: 'yuv420p12le', I422P10: 'yuv422p10le', I422P12: 'yuv422p12le', I444P10: 'yuv444p10le',
  I444P12: 'yuv444p12le',
};
export const webFormat = name => WEB_FORMATS[name];
const webName = name => Object.keys(WEB_FORMATS).find(key => WEB_FORMATS[key] === name);

// A view doesn't keep alive the image whose memory it shows, unless something ties them.
const ties = new WeakMap();

/** One plane of an image: `data` has its samples row by row, `stride` samples from one row to the next. */
class Plane {
  #image;
  constructor(image, form, offset, step, width, height) {
    this.#image = image;
    this.channels = form.channels;
    this.step = step;
    this.rowBytes = ceil(width, form.width) * form.bytes;
    this.rows = ceil(height, form.height);
    this.offset = offset;
  }
  get stride() {
    return this.step / this.#image.form.array.BYTES_PER_ELEMENT;
  }
  get bytes() {
    return (this.rows - 1) * this.step + this.rowBytes;
  }
  get data() {
    return this.#image.view(this.#image.form.array, this.offset, this.bytes);
  }
  row(y) {
    return this.#image.view(this.#image.form.array, this.offset + y * this.step, this.rowBytes);
  }
}

export class Image {
  #heap;
  #block;
  constructor(heap, block, form, width, height, planes) {
    this.#heap = heap;
    this.#block = block;
    this.form = form;
    this.width = width;
    this.height = height;
    this.planes = Object.freeze(planes.map(({form: own, offset, step}) => new Plane(this, own, offset, step, width, height)));
    /** What its luma and chroma mean, where it is known: what `convert` takes if nothing else is said. */
    this.matrix = undefined;
    this.range = undefined;
  }

  static make(heap, form, width, height, room = 0) {
    for (const [name, value] of Object.entries({width, height}))
      if (!Number.isInteger(value) || value < 1 || value > 0x7fffffff)
        throw new ZelError(`must be a whole number of pixels from 1 on, not ${value}`, {function: 'image', argument: name});
    let bytes = 0;
    const planes = form.planes.map(own => {
      const plane = {form: own, offset: bytes, step: ceil(width + room, own.width) * own.bytes};
      bytes += plane.step * ceil(height, own.height);
      return plane;
    });
    const block = heap.allocate(bytes);
    for (const plane of planes) plane.offset += block.address;
    const image = new Image(heap, block, form, width, height, planes);
    heap.watch(image, block);
    return image;
  }

  get format() {
    return this.form.name;
  }
  get isFreed() {
    return this.#block.isFreed;
  }

  /** A typed array over the memory. It is of no use once memory has grown: take a new one after each call that makes images. */
  view(array, offset, bytes) {
    this.check();
    const made = new array(this.#heap.memory.buffer, offset, bytes / array.BYTES_PER_ELEMENT);
    ties.set(made, this);
    return made;
  }

  check(about) {
    if (this.#block.isFreed) throw new ZelError(`the image (${this.format}, ${this.width} x ${this.height}) was freed`, about);
  }

  /** All planes as bytes, in the order of a file and without gaps; not of a crop. */
  get bytes() {
    const first = this.planes[0];
    const last = this.planes[this.planes.length - 1];
    const bytes = this.planes.reduce((sum, plane) => sum + plane.rowBytes * plane.rows, 0);
    if (last.offset + last.bytes - first.offset !== bytes)
      throw new ZelError('the rows of the image don\'t follow each other, as those of a crop', {argument: 'bytes'});
    return this.view(Uint8Array, first.offset, bytes);
  }

  /** What VideoFrame.copyTo and the constructor of VideoFrame call layout, for `bytes`. */
  get layout() {
    return this.planes.map(plane => ({offset: plane.offset - this.planes[0].offset, stride: plane.step}));
  }

  /** Copies samples in, in the order of a file: of as many bytes as the image has. */
  set(data) {
    const given = data instanceof ArrayBuffer ? new Uint8Array(data) : new Uint8Array(data.buffer, data.byteOffset, data.byteLength);
    const bytes = this.planes.reduce((sum, plane) => sum + plane.rowBytes * plane.rows, 0);
    if (given.length !== bytes)
      throw new ZelError(`has ${given.length} bytes, but ${this.format} of ${this.width} x ${this.height} has ${bytes}`,
        {function: 'set', argument: 'data'});
    let at = 0;
    for (const plane of this.planes)
      for (let y = 0; y < plane.rows; ++y, at += plane.rowBytes)
        this.view(Uint8Array, plane.offset + y * plane.step, plane.rowBytes).set(given.subarray(at, at + plane.rowBytes));
    return this;
  }

  /** A part of the image, in the same memory. It begins with a whole site of chroma. */
  crop(x, y, width, height) {
    this.check({function: 'crop'});
    const {site} = this.form;
    const about = {function: 'crop'};
    if (![x, y, width, height].every(Number.isInteger) || x < 0 || y < 0 || width < 1 || height < 1 || x + width > this.width
        || y + height > this.height)
      throw new ZelError(`${width} x ${height} at ${x}, ${y} doesn't lie inside ${this.width} x ${this.height}`, about);
    if (x % site.width || y % site.height)
      throw new ZelError(`must begin at multiples of ${site.width} x ${site.height}, as ${this.format} has its sites`, about);
    const planes = this.planes.map((plane, i) => {
      const form = this.form.planes[i];
      return {form, step: plane.step, offset: plane.offset + y / form.height * plane.step + x / form.width * form.bytes};
    });
    return this.#sibling(this.form, width, height, planes);
  }

  /** The same memory as an image of another format that lies in memory alike. */
  as(name) {
    this.check({function: 'as'});
    const form = formats[name];
    const isAlike = form && form.element === this.form.element && form.planes.length === this.planes.length && form.planes.every(
      (plane, i) => ['bytes', 'width', 'height'].every(key => plane[key] === this.form.planes[i][key]));
    if (!isAlike) throw new ZelError(`${name} doesn't lie in memory as ${this.format} does`, {function: 'as', argument: 'format'});
    return this.#sibling(form, this.width, this.height, this.planes.map(({offset, step}, i) => ({form: form.planes[i], offset, step})));
  }

  #sibling(form, width, height, planes) {
    const made = new Image(this.#heap, this.#block, form, width, height, planes);
    made.matrix = this.matrix;
    made.range = this.range;
    ties.set(made, this);
    return made;
  }

  /** Gives the memory back, also that of its crops. It is done by itself, but late, when an image is no longer reachable. */
  free() {
    this.#heap.free(this.#block);
  }

  /** An ImageData over the memory of an image of rgba. */
  toImageData() {
    if (this.format !== 'rgba')
      throw new ZelError(`must be of rgba, not ${this.format}; convert it first`, {function: 'toImageData', argument: 'image'});
    this.check();
    const data = new ImageData(new Uint8ClampedArray(this.bytes.buffer, this.planes[0].offset, this.bytes.length), this.width, this.height);
    ties.set(data, this);
    ties.set(data.data, this);
    return data;
  }

  /** Shows an image of rgba on a canvas, or on a 2D context of one. */
  draw(canvas, x = 0, y = 0) {
    (canvas.getContext ? canvas.getContext('2d') : canvas).putImageData(this.toImageData(), x, y);
    return this;
  }

  /** A VideoFrame, which has a copy; `init` as of its constructor, such as {timestamp}. */
  toVideoFrame(init = {}) {
    const format = webName(this.format);
    if (!format)
      throw new ZelError(`no VideoFrame is of ${this.format}; convert it first`, {function: 'toVideoFrame', argument: 'image'});
    return new VideoFrame(this.bytes, {
      format, codedWidth: this.width, codedHeight: this.height, layout: this.layout, timestamp: 0, ...colourSpaceOf(this), ...init,
    });
  }
}
if (Symbol.dispose) Image.prototype[Symbol.dispose] = Image.prototype.free;

const WEB_MATRICES = {rgb: undefined, bt709: '709', bt470bg: '601', smpte170m: '601', 'bt2020-ncl': '2020'};

/** What a VideoFrame says of its colours. */
export function coloursOf({matrix, fullRange} = {}) {
  return {matrix: WEB_MATRICES[matrix], range: fullRange == null ? undefined : fullRange ? 'full' : 'limited'};
}

function colourSpaceOf({matrix, range, form}) {
  const name = {709: 'bt709', 601: 'smpte170m', 2020: 'bt2020-ncl'}[matrix];
  return form.model === 'ycbcr' && name && range ? {colorSpace: {matrix: name, fullRange: range === 'full'}} : {};
}
