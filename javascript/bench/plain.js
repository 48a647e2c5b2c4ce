// The same conversions as plain JavaScript, as one would write it for speed: tables of products, whole pixels stored as words.
const ramp = (scale, from) => Int32Array.from({length: 256}, (_, i) => Math.round(scale * (i - from) * 65536));
const LUMA = ramp(255 / 219, 16).map(y => y + 32768);
const RED = ramp(1.596027, 128), GREEN_BLUE = ramp(-0.391762, 128), GREEN_RED = ramp(-0.812968, 128), BLUE = ramp(2.017232, 128);
const CUT = Uint8ClampedArray.from({length: 1024}, (_, i) => i - 384);

function decode(width, height, y, cb, cr, chromaStep, pairs, out) {
  const words = new Uint32Array(out.buffer, out.byteOffset, width * height);
  for (let row = 0; row < height; row += 2) {
    let top = row * width, bottom = top + width, chroma = (row >> 1) * chromaStep;
    for (let x = 0; x < width; x += 2, top += 2, bottom += 2, chroma += pairs) {
      const u = cb[chroma], v = cr[chroma];
      const r = RED[v], g = GREEN_BLUE[u] + GREEN_RED[v], b = BLUE[u];
      let l = LUMA[y[top]];
      words[top] = CUT[(l + r >> 16) + 384] | CUT[(l + g >> 16) + 384] << 8 | CUT[(l + b >> 16) + 384] << 16 | 0xff000000;
      l = LUMA[y[top + 1]];
      words[top + 1] = CUT[(l + r >> 16) + 384] | CUT[(l + g >> 16) + 384] << 8 | CUT[(l + b >> 16) + 384] << 16 | 0xff000000;
      l = LUMA[y[bottom]];
      words[bottom] = CUT[(l + r >> 16) + 384] | CUT[(l + g >> 16) + 384] << 8 | CUT[(l + b >> 16) + 384] << 16 | 0xff000000;
      l = LUMA[y[bottom + 1]];
      words[bottom + 1] = CUT[(l + r >> 16) + 384] | CUT[(l + g >> 16) + 384] << 8 | CUT[(l + b >> 16) + 384] << 16 | 0xff000000;
    }
  }
}

function encode(width, height, rgba, y, cb, cr, chromaStep, pairs) {
  const words = new Uint32Array(rgba.buffer, rgba.byteOffset, width * height);
  const luma = (r, g, b) => (16829 * r + 33039 * g + 6416 * b + 1081344) >> 16;
  for (let row = 0; row < height; row += 2) {
    let top = row * width, bottom = top + width, chroma = (row >> 1) * chromaStep;
    for (let x = 0; x < width; x += 2, top += 2, bottom += 2, chroma += pairs) {
      const p = words[top], q = words[top + 1], s = words[bottom], t = words[bottom + 1];
      const pr = p & 255, pg = p >> 8 & 255, pb = p >> 16 & 255, qr = q & 255, qg = q >> 8 & 255, qb = q >> 16 & 255;
      const sr = s & 255, sg = s >> 8 & 255, sb = s >> 16 & 255, tr = t & 255, tg = t >> 8 & 255, tb = t >> 16 & 255;
      y[top] = luma(pr, pg, pb);
      y[top + 1] = luma(qr, qg, qb);
      y[bottom] = luma(sr, sg, sb);
      y[bottom + 1] = luma(tr, tg, tb);
      const r = pr + qr + sr + tr, g = pg + qg + sg + tg, b = pb + qb + sb + tb;
      cb[chroma] = (-9714 * r - 19070 * g + 28784 * b + 33685504) >> 18;
      cr[chroma] = (28784 * r - 24103 * g - 4681 * b + 33685504) >> 18;
    }
  }
}

/** Of a frame in one array, planes after planes. */
function planesOf(format, width, height, bytes) {
  const area = width * height;
  const y = bytes.subarray(0, area);
  if (format === 'nv12') return [y, bytes.subarray(area), bytes.subarray(area + 1), width, 2];
  return [y, bytes.subarray(area, area * 5 / 4), bytes.subarray(area * 5 / 4), width / 2, 1];
}

export function plainDecode(format, width, height, bytes, out) {
  decode(width, height, ...planesOf(format, width, height, bytes), out);
}

export function plainEncode(format, width, height, rgba, bytes) {
  encode(width, height, rgba, ...planesOf(format, width, height, bytes));
}
