/* The few declarations of the Gestalt manager that the library uses, for hosts without the framework. */
#ifndef CORESERVICES_DECLARATIONS_H
#define CORESERVICES_DECLARATIONS_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef uint32_t OSType;
typedef int16_t OSErr;
#if defined(__LP64__)
typedef int SInt32;
#else
typedef long SInt32;
#endif

enum { noErr = 0 };
enum {
    gestaltProcClkSpeed = 0x70636C6B,    /* pclk */
    gestaltSysArchitecture = 0x73797361, /* sysa */
    gestaltNativeCPUtype = 0x63707574    /* cput */
};

OSErr Gestalt(OSType selector, SInt32* response);

#ifdef __cplusplus
}
#endif

#endif
