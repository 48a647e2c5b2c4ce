// The memory of all modules, and what of it is given to images.
import {ZelError} from './error.js';

const PAGE = 65536;
const SCRATCH = 4096;

export class Heap {
  #core;
  #registry = new FinalizationRegistry(address => this.#core.release(address));
  #words;

  constructor(bytes) {
    this.memory = new WebAssembly.Memory({initial: Math.ceil(bytes / PAGE)});
  }

  /** Once the core is there, of which this is a part. */
  start(core) {
    this.#core = core;
    /** Where arguments of a call lie that are no numbers. */
    this.scratch = this.allocate(SCRATCH).address;
  }

  /** The memory as 32-bit words, as it is now. */
  get words() {
    if (this.#words?.buffer !== this.memory.buffer) this.#words = new Int32Array(this.memory.buffer);
    return this.#words;
  }

  allocate(bytes) {
    const address = bytes < 2 ** 32 ? this.#core.allocate(Math.max(bytes, 1)) >>> 0 : 0;
    if (!address) throw new ZelError(`there is no memory for ${bytes} bytes`, {status: -9, statusName: 'zelStsMemAllocErr'});
    return {address, isFreed: false};
  }

  /** Frees the block when its owner is gone. */
  watch(owner, block) {
    this.#registry.register(owner, block.address, block);
  }

  free(block) {
    if (block.isFreed) return;
    block.isFreed = true;
    this.#registry.unregister(block);
    this.#core.release(block.address);
  }

  text(address) {
    const bytes = new Uint8Array(this.memory.buffer, address);
    return new TextDecoder().decode(bytes.slice(0, bytes.indexOf(0)));
  }

  /** Calls with the address of the text, which ends with a zero. */
  withText(text, use) {
    const bytes = new TextEncoder().encode(`${text}\0`);
    const block = this.allocate(bytes.length);
    try {
      new Uint8Array(this.memory.buffer, block.address, bytes.length).set(bytes);
      return use(block.address);
    } finally {
      this.free(block);
    }
  }
}
