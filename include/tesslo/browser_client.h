/*
 * How TessloClientDllBrowser.dll is set up: by environment variables of the processes that load it, read by the first
 * Plug. Without any the virtual monitors are shown at http://127.0.0.1:7600/ to programs of this machine alone.
 */
#ifndef TESSLO_BROWSER_CLIENT_H
#define TESSLO_BROWSER_CLIENT_H

/** The port, 1 to 65535. */
#define TESSLO_BROWSER_PORT L"TESSLO_BROWSER_PORT"
#define TESSLO_BROWSER_DEFAULT_PORT 7600

/**
 * The address to listen on, as a number; 0.0.0.0 for all. Any but 127.0.0.1 and ::1 needs a token: without one the
 * library says so on the debugger's channel and stays with this machine.
 */
#define TESSLO_BROWSER_ADDRESS L"TESSLO_BROWSER_ADDRESS"

/** What the page's address begins with: http://ADDRESS:PORT/TOKEN/. 16 to 64 letters, digits, "-" and "_". */
#define TESSLO_BROWSER_TOKEN L"TESSLO_BROWSER_TOKEN"

#endif
