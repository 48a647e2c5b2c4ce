/* The version query. */
#ifndef ZELCC_VERSION_H
#define ZELCC_VERSION_H

#include "zelcc/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * The version record of the selected processor class. The library owns it; it stays valid and unchanged while the library
 * is loaded, and every call returns the same pointer. It cannot fail.
 */
ZEL_API const ZelLibraryVersion* zelccGetLibVersion(void);

#ifdef __cplusplus
}
#endif

#endif
