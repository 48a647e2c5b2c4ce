/*
 * zelCC: image colour-conversion primitives with results defined to the last bit.
 *
 * Every conversion takes buffers by pointer, the distance between rows in bytes (the step) and a size in pixels, and
 * returns a status. There is no state: any number of threads may convert at once into disjoint destinations.
 */
#ifndef ZELCC_H
#define ZELCC_H

#include "zelcc/chroma.h"
#include "zelcc/colorimetric.h"
#include "zelcc/hls.h"
#include "zelcc/intensity.h"
#include "zelcc/lab.h"
#include "zelcc/lifting.h"
#include "zelcc/lumachroma.h"
#include "zelcc/packed_destinations.h"
#include "zelcc/packed_sources.h"
#include "zelcc/rawsensor.h"
#include "zelcc/reducebits.h"
#include "zelcc/types.h"
#include "zelcc/version.h"
#include "zelcc/yuv.h"

#endif
