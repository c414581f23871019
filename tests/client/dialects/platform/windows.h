/* As much of the platform's header as the client libraries' interface uses, for a compiler whose own is not at hand. */
#ifndef TESSLO_DIALECTS_WINDOWS_H
#define TESSLO_DIALECTS_WINDOWS_H

#ifndef _WIN64
#error The platform has 64 bits.
#endif

typedef unsigned char BYTE, BOOLEAN;
typedef unsigned int UINT;
typedef struct HWND__* HWND;

#endif
