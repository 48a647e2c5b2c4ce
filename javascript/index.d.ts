/// <reference lib="dom" />
/// <reference lib="esnext.disposable" />
import type {Constants, Elements, FullRangeName, Functions, Matrix, Method, ModuleName} from './catalogue.js';

export type {Called, Constants, Elements, FullRangeName, Functions, Grid, Matrix, Method, ModuleName, Numbers} from './catalogue.js';

export type FormatName = keyof Elements;
export type Range = 'limited' | 'full';
export type Location = 'left' | 'center' | 'topleft';

interface Arrays {
  '1u': Uint8Array;
  '8u': Uint8Array;
  '8s': Int8Array;
  '16u': Uint16Array;
  '16s': Int16Array;
  '32s': Int32Array;
  '32u': Uint32Array;
  '32f': Float32Array;
  '64f': Float64Array;
}
export type Samples<F extends FormatName> = Arrays[Elements[F]];
/** The format that a name stands for: yuvj420p is yuv420p whose range is told by the name. */
export type Plain<N extends FormatName | FullRangeName> = N extends FormatName ? N : N extends `yuvj${infer Sites}` ? `yuv${Sites}` & FormatName : never;

/** What the package refuses. */
export class ZelError extends Error {
  /** The function of the package or of the library that refused. */
  readonly function?: string;
  /** Its argument that this is about. */
  readonly argument?: string;
  /** The status of the library, where it was called. */
  readonly status?: number;
  readonly statusName?: string;
}

export interface PlaneForm {
  readonly channels: readonly string[];
  /** Of a unit of samples that lie side by side, which serves width x height pixels. */
  readonly bytes: number;
  readonly width: number;
  readonly height: number;
}

export interface Format {
  readonly name: FormatName;
  readonly title: string;
  readonly element: keyof Arrays;
  readonly planes: readonly PlaneForm[];
  readonly model: 'rgb' | 'ycbcr' | 'gray' | 'ycocg' | 'mosaic' | 'other';
  /** Of the narrowest channel. */
  readonly bits: number;
  /** Bits of a word below those of the sample. */
  readonly shift: number;
  readonly hasAlpha: boolean;
}

/** One plane of an image, in the memory of the modules. */
export interface Plane<F extends FormatName = FormatName> {
  readonly channels: readonly string[];
  /**
   * The samples from the first row to the end of the last, `stride` of them from one row to the next. It shows the memory itself and is
   * of no use once memory has grown: take it anew after calls that make images.
   */
  readonly data: Samples<F>;
  readonly stride: number;
  readonly rows: number;
  readonly rowBytes: number;
  /** Where it begins in the memory, in bytes. */
  readonly offset: number;
  row(y: number): Samples<F>;
}

export class Image<F extends FormatName = FormatName> {
  private constructor();
  readonly format: F;
  readonly width: number;
  readonly height: number;
  readonly planes: readonly Plane<F>[];
  /** What luma and chroma mean, where it is known: `convert` takes it if nothing else is said. */
  matrix?: Matrix;
  range?: Range;
  readonly isFreed: boolean;
  /** All planes in the order of a file, without gaps: the memory itself, as `data` of a plane. Not of a crop. */
  readonly bytes: Uint8Array;
  /** Of `bytes`, as VideoFrame.copyTo and the constructor of VideoFrame take it. */
  readonly layout: {offset: number; stride: number}[];
  /** Copies all samples in, in the order of a file. */
  set(data: ArrayBuffer | ArrayBufferView): this;
  /** A part of the image in the same memory, which begins with a whole site of chroma. */
  crop(x: number, y: number, width: number, height: number): Image<F>;
  /** The same memory as an image of a format that lies in memory alike. */
  as<G extends FormatName>(format: G): Image<G>;
  /** Gives the memory back, that of crops too. Images that can't be reached any more are freed by themselves, but late. */
  free(): void;
  [Symbol.dispose](): void;
  /** An ImageData over the memory of an image of rgba. */
  toImageData(this: Image<'rgba'>): ImageData;
  /** Shows an image of rgba on a canvas. */
  draw(this: Image<'rgba'>, canvas: HTMLCanvasElement | OffscreenCanvas | CanvasRenderingContext2D | OffscreenCanvasRenderingContext2D,
    x?: number, y?: number): this;
  /** A VideoFrame with a copy of the image. `init` is as its constructor has it. */
  toVideoFrame(init?: {timestamp?: number; duration?: number; colorSpace?: object}): VideoFrame;
}
export interface Colours {
  /** Of luma and chroma; a pair where both sides have them and differ. The image's own, or "601", if it isn't given. */
  matrix?: Matrix | readonly [Matrix, Matrix];
  /** The functions' own if it isn't given: limited, but for "709-full" and "yuv". */
  range?: Range | readonly [Range, Range];
  /** Where chroma lies, which matters where it is filtered. */
  location?: Location | readonly [Location, Location];
  /** One step of a kind: chroma by filter or of interlaced frames, gamma, linear, words by dither, a mosaic by ahd ... */
  method?: Method;
  /** The same as method: "dither". */
  dither?: boolean;
}

export interface Options<T extends FormatName = FormatName> extends Colours {
  /** The image to write, which is made if it isn't given. */
  out?: Image<T>;
  /** Further arguments go to the last function that takes them, by their C names: aval, coeffs, noise, levels, dtype ... */
  [extra: string]: unknown;
}

export interface Step {
  /** A function of the library, or zelvConvert of the video library; none where samples are moved as they are. */
  readonly function?: keyof Functions | 'zelvConvert';
  readonly source: FormatName;
  readonly target: FormatName;
  readonly module: ModuleName | 'core';
}

export interface Zelcc {
  readonly version: string;
  readonly functions: Functions;
  readonly constants: Constants;
  readonly formats: {readonly [F in FormatName]: Format};
  /** The memory of all modules. */
  readonly memory: WebAssembly.Memory;
  /** An image of zeros, or with a copy of the samples of a file. */
  image<N extends FormatName | FullRangeName>(format: N, width: number, height: number, data?: ArrayBuffer | ArrayBufferView): Image<Plain<N>>;
  /** Converts by the way over functions that loses least; `way` tells which. */
  convert<N extends FormatName | FullRangeName>(image: Image<any>, target: N, options?: Options<Plain<N>>): Image<Plain<N>>;
  way(source: FormatName | FullRangeName, target: FormatName | FullRangeName, options?: Colours): Step[];
  /** Loads modules that aren't there yet. */
  load(...modules: ModuleName[]): Promise<void>;
  /** Loads the modules of a conversion. */
  prepare(source: FormatName | FullRangeName, target: FormatName | FullRangeName, options?: Colours): Promise<void>;
  /** An image of rgba with a copy of an ImageData, or of the pixels of a canvas. */
  from(source: ImageData | HTMLCanvasElement | OffscreenCanvas | CanvasRenderingContext2D | OffscreenCanvasRenderingContext2D): Image<'rgba'>;
  /** An image with a copy of a VideoFrame, of its matrix and range too. */
  fromVideoFrame(frame: VideoFrame): Promise<Image>;
}

export type ModuleSource = string | URL | Response | BufferSource | WebAssembly.Module;

export interface LoadOptions {
  /** All of them if they aren't given. */
  modules?: readonly ModuleName[];
  /** Where a module is, such as "core.wasm"; if it tells nothing, beside the script. */
  locate?(name: string): ModuleSource | Promise<ModuleSource> | undefined;
  /** Is told of statuses that are warnings; by default the console is. */
  warn?(warning: ZelError): void;
}

export function load(options?: LoadOptions): Promise<Zelcc>;
export const version: string;
export const formats: Zelcc['formats'];
export const constants: Constants;
